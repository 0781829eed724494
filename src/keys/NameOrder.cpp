#include "keys/NameOrder.h"

#include <windows.h>

#include "text/Wide.h"

namespace zelvreg {
namespace {

int compare(const std::u16string& first, const std::u16string& second) {
  return CompareStringOrdinal(wideText(first), static_cast<int>(first.size()), wideText(second),
                              static_cast<int>(second.size()), TRUE);
}

}  // namespace

bool NameOrder::operator()(const std::u16string& first, const std::u16string& second) const {
  return compare(first, second) == CSTR_LESS_THAN;
}

bool isSameName(const std::u16string& first, const std::u16string& second) {
  return compare(first, second) == CSTR_EQUAL;
}

}  // namespace zelvreg
