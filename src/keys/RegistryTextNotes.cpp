#include "keys/RegistryTextNotes.h"

#include <algorithm>

#include "unicode/Unicode.h"

namespace zelvreg::notes {
namespace {

std::u16string decimal(std::size_t number) { return utf16(std::to_string(number)); }

// The decimal number at the front of `text`, which is taken off it.
bool takeNumber(std::u16string_view& text, std::size_t& number) {
  constexpr std::size_t most = 1'000'000'000;
  const std::size_t digits = std::min(text.find_first_not_of(u"0123456789"), text.size());
  number = 0;
  for (const char16_t digit : text.substr(0, digits)) {
    number = std::min(number * 10 + (digit - u'0'), most);
  }
  text.remove_prefix(digits);
  return digits > 0 && number < most;
}

}  // namespace

std::u16string positionsText(const std::vector<std::size_t>& numbers) {
  std::u16string result;
  for (std::size_t first = 0; first < numbers.size();) {
    std::size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
      ++last;
    }
    result += (result.empty() ? u"" : u",") + decimal(numbers[first]);
    if (last > first) {
      result += u"-" + decimal(numbers[last]);
    }
    first = last + 1;
  }
  return result;
}

bool readPositions(std::u16string_view text, std::vector<std::size_t>& positions) {
  // More values than a key ever has.
  constexpr std::size_t most = 1'000'000;
  while (true) {
    std::size_t first = 0;
    if (!takeNumber(text, first)) {
      return false;
    }
    std::size_t last = first;
    if (text.starts_with(u'-')) {
      text.remove_prefix(1);
      if (!takeNumber(text, last)) {
        return false;
      }
    }
    const bool isRising = last >= first && (positions.empty() || first > positions.back());
    if (!isRising || last - first >= most - positions.size()) {
      return false;
    }
    for (; first <= last; ++first) {
      positions.push_back(first);
    }
    if (text.empty()) {
      return true;
    }
    if (!text.starts_with(u',')) {
      return false;
    }
    text.remove_prefix(1);
  }
}

}  // namespace zelvreg::notes
