#include "machine/hive/NameHash.h"

#include <algorithm>
#include <cstddef>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {
namespace {

constexpr std::size_t hintLetters = 4;
constexpr unsigned bitsOfByte = 8;

}  // namespace

std::uint32_t hashOfName(std::u16string_view name) {
  constexpr std::uint32_t factor = 37;
  std::uint32_t hash = 0;
  for (const char16_t unit : name) {
    hash = hash * factor + upperCase(unit);
  }
  return hash;
}

std::uint32_t hintOfName(std::u16string_view name) {
  std::uint32_t hint = 0;
  for (std::size_t at = 0; at < std::min(name.size(), hintLetters); ++at) {
    if (name[at] > 0xFF) {
      return 0;
    }
    hint |= static_cast<std::uint32_t>(name[at]) << (bitsOfByte * at);
  }
  return hint;
}

bool mayBeHintOf(std::uint32_t hint, std::u16string_view name) {
  if (hint == 0) {
    return true;
  }
  for (std::size_t at = 0; at < std::min(name.size(), hintLetters); ++at) {
    const auto letter = static_cast<char16_t>(hint >> (bitsOfByte * at) & 0xFF);
    if (upperCase(letter) != upperCase(name[at])) {
      return false;
    }
  }
  return true;
}

}  // namespace zelvreg::machine
