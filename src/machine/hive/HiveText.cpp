#include "machine/hive/HiveText.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

static_assert(std::endian::native == std::endian::little, "names are UTF-16LE");

void HiveText::copyTo(char16_t* units) const {
  if (form == Form::Narrow) {
    std::ranges::transform(bytes, units, [](std::byte byte) {
      return static_cast<char16_t>(std::to_integer<unsigned char>(byte));
    });
  } else if (!bytes.empty()) {
    std::memcpy(units, bytes.data(), bytes.size());
  }
}

std::u16string HiveText::text() const {
  std::u16string units(size(), u'\0');
  copyTo(units.data());
  return units;
}

char16_t HiveText::unitAt(std::size_t index) const {
  if (form == Form::Narrow) {
    return std::to_integer<unsigned char>(bytes[index]);
  }
  char16_t unit = 0;
  std::memcpy(&unit, bytes.data() + index * sizeof unit, sizeof unit);
  return unit;
}

bool HiveText::isSame(std::u16string_view name) const {
  if (size() != name.size()) {
    return false;
  }
  for (std::size_t index = 0; index < name.size(); ++index) {
    const char16_t unit = unitAt(index);
    // Most names are spelled alike.
    if (unit != name[index] && upperCase(unit) != upperCase(name[index])) {
      return false;
    }
  }
  return true;
}

}  // namespace zelvreg::machine
