#include "machine/hive/HiveBytes.h"

namespace zelvreg::machine {

using namespace hiveFormat;

std::u16string HiveBytes::keyNameAt(std::size_t node) const {
  const auto size = get<std::uint16_t>(node + keyNameLength);
  const std::string_view raw = text(node + keyName, size);
  std::u16string name;
  if ((get<std::uint16_t>(node + keyFlags) & narrowNameFlag) != 0) {
    for (const char letter : raw) {
      name += static_cast<unsigned char>(letter);
    }
    return name;
  }
  for (std::size_t at = 0; at + 1 < raw.size(); at += 2) {
    name += get<char16_t>(node + keyName + at);
  }
  return name;
}

}  // namespace zelvreg::machine
