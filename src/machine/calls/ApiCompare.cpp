// The Windows call that compares texts as the names of keys, values and files are compared.
#include <windows.h>

#include <string_view>

#include "machine/base/CaseFold.h"
#include "machine/calls/ApiSupport.h"

namespace {

std::u16string_view textOf(LPCWSTR text, int length) {
  return length < 0 ? std::u16string_view(text)
                    : std::u16string_view(text, static_cast<std::size_t>(length));
}

}  // namespace

int CompareStringOrdinal(LPCWSTR first, int firstLength, LPCWSTR second, int secondLength,
                         BOOL ignoresCase) {
  if (first == nullptr || second == nullptr || firstLength < -1 || secondLength < -1) {
    return zelvreg::machine::failed(ERROR_INVALID_PARAMETER);
  }
  const std::u16string_view one = textOf(first, firstLength);
  const std::u16string_view other = textOf(second, secondLength);
  const int order =
      ignoresCase != FALSE ? zelvreg::machine::compareNames(one, other) : one.compare(other);
  return order < 0 ? CSTR_LESS_THAN : order > 0 ? CSTR_GREATER_THAN : CSTR_EQUAL;
}
