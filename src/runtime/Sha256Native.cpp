#include <nettle/sha2.h>

#include "runtime/Sha256.h"

namespace zelvreg {

Digest sha256(std::string_view bytes) {
  sha256_ctx context{};
  sha256_init(&context);
  // The library takes unsigned bytes.
  sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  Digest digest{};
  sha256_digest(&context, digest.size(), digest.data());
  return digest;
}

}  // namespace zelvreg
