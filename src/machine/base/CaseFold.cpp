#include "machine/base/CaseFold.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwctype>

#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::size_t unitCount = 0x10000;
using CaseTable = std::array<char16_t, unitCount>;

// Letters whose case Windows leaves alone, as it belongs to another letter too.
constexpr std::array<char16_t, 7> unchangedUnits{0x00B5, 0x0130, 0x0131, 0x017F,
                                                 0x0345, 0x1E9B, 0x1FBE};

// `first` is the first ASCII letter that changes.
CaseTable buildTable(char16_t first, wint_t (*change)(wint_t, locale_t)) {
  CaseTable table{};
  const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  for (std::size_t unit = 0; unit < unitCount; ++unit) {
    auto changed = static_cast<wint_t>(unit);
    if (unit < 0x80) {
      if (unit >= first && unit < first + 26U) {
        changed = static_cast<wint_t>(unit ^ 0x20);
      }
    } else if (unicode != nullptr && !isSurrogate(static_cast<char32_t>(unit))) {
      changed = change(static_cast<wint_t>(unit), unicode);
    }
    table[unit] = static_cast<char16_t>(changed < unitCount ? changed : unit);
  }
  for (const char16_t unit : unchangedUnits) {
    table[unit] = unit;
  }
  if (unicode != nullptr) {
    freelocale(unicode);
  }
  return table;
}

const CaseTable& upperCaseTable() {
  static const CaseTable table = buildTable(u'a', towupper_l);
  return table;
}

const CaseTable& lowerCaseTable() {
  static const CaseTable table = buildTable(u'A', towlower_l);
  return table;
}

// How many units are exactly the same at the start of both, rounded down to whole words. Neighbors
// in a list often begin alike.
std::size_t sameStart(std::u16string_view first, std::u16string_view second, std::size_t common) {
  using Word = std::uint64_t;
  constexpr std::size_t unitsInWord = sizeof(Word) / sizeof(char16_t);
  std::size_t same = 0;
  for (; same + unitsInWord <= common; same += unitsInWord) {
    Word ofFirst = 0;
    Word ofSecond = 0;
    std::memcpy(&ofFirst, first.data() + same, sizeof(Word));
    std::memcpy(&ofSecond, second.data() + same, sizeof(Word));
    if (ofFirst != ofSecond) {
      break;
    }
  }
  return same;
}

}  // namespace

char16_t upperCase(char16_t unit) { return upperCaseTable()[unit]; }

char16_t lowerCase(char16_t unit) { return lowerCaseTable()[unit]; }

std::u16string upperCase(std::u16string_view text) {
  const CaseTable& table = upperCaseTable();
  std::u16string upper(text);
  for (char16_t& unit : upper) {
    unit = table[unit];
  }
  return upper;
}

int compareNames(std::u16string_view first, std::u16string_view second) {
  const CaseTable& table = upperCaseTable();
  const std::size_t common = std::min(first.size(), second.size());
  for (std::size_t index = sameStart(first, second, common); index < common; ++index) {
    // Most names are spelled alike, so the table is seldom needed.
    if (first[index] != second[index]) {
      const char16_t firstUpper = table[first[index]];
      const char16_t secondUpper = table[second[index]];
      if (firstUpper != secondUpper) {
        return firstUpper < secondUpper ? -1 : 1;
      }
    }
  }
  if (first.size() == second.size()) {
    return 0;
  }
  return first.size() < second.size() ? -1 : 1;
}

}  // namespace zelvreg::machine
