// Numbers as disks hold them, the lowest byte first.
#ifndef ZELVREG_IMAGES_LITTLE_ENDIAN_H
#define ZELVREG_IMAGES_LITTLE_ENDIAN_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvreg::images {

// Widened, so that it can be counted with.
template <typename Number>
std::uint64_t littleEndian(const std::byte* bytes) {
  std::uint64_t number = 0;
  for (std::size_t index = sizeof(Number); index-- > 0;) {
    number = number << 8 | static_cast<std::uint64_t>(bytes[index]);
  }
  return number;
}

inline void appendLittleEndian(std::string& bytes, std::uint64_t number) {
  for (unsigned shift = 0; shift < 64; shift += 8) {
    bytes += static_cast<char>(number >> shift & 0xFF);
  }
}

}  // namespace zelvreg::images

#endif
