#include "machine/base/CaseFold.h"

#include <algorithm>
#include <array>
#include <bit>
#include <clocale>
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

std::size_t commonLength(std::u16string_view first, std::u16string_view second) {
  static_assert(std::endian::native == std::endian::little, "the first unit is the lowest");
  using Block = std::uint64_t;
  constexpr std::size_t unitsInBlock = sizeof(Block) / sizeof(char16_t);
  const std::size_t size = std::min(first.size(), second.size());
  std::size_t length = 0;
  for (; length + unitsInBlock <= size; length += unitsInBlock) {
    Block firstBlock = 0;
    Block secondBlock = 0;
    std::memcpy(&firstBlock, first.data() + length, sizeof firstBlock);
    std::memcpy(&secondBlock, second.data() + length, sizeof secondBlock);
    if (firstBlock != secondBlock) {
      const int equalBits = std::countr_zero(firstBlock ^ secondBlock);
      return length + static_cast<std::size_t>(equalBits) / (8 * sizeof(char16_t));
    }
  }
  while (length < size && first[length] == second[length]) {
    ++length;
  }
  return length;
}

int compareNames(std::u16string_view first, std::u16string_view second) {
  const std::size_t common = std::min(first.size(), second.size());
  // Most names are spelled alike, so the table is seldom needed.
  std::size_t index = commonLength(first, second);
  if (index < common) {
    const CaseTable& table = upperCaseTable();
    for (; index < common; ++index) {
      if (first[index] != second[index]) {
        const char16_t firstUpper = table[first[index]];
        const char16_t secondUpper = table[second[index]];
        if (firstUpper != secondUpper) {
          return firstUpper < secondUpper ? -1 : 1;
        }
      }
    }
  }
  if (first.size() == second.size()) {
    return 0;
  }
  return first.size() < second.size() ? -1 : 1;
}

}  // namespace zelvreg::machine
