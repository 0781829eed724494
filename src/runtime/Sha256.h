// A digest that says which content it is without giving it away.
#ifndef ZELVREG_RUNTIME_SHA256_H
#define ZELVREG_RUNTIME_SHA256_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvreg {

using Digest = std::array<std::uint8_t, 32>;

// The SHA-256 (FIPS 180-4) of bytes. Throws std::runtime_error if Windows cannot compute it.
Digest sha256(std::string_view bytes);

// 64 digits in lower case.
std::string hexadecimal(const Digest& digest);

}  // namespace zelvreg

#endif
