#include "runtime/Sha256.h"

namespace zelvreg {

std::string hexadecimal(const Digest& digest) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : digest) {
    text += digits[byte >> 4U];
    text += digits[byte & 0xFU];
  }
  return text;
}

}  // namespace zelvreg
