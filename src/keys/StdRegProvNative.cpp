// There is no management service to ask: direct reads give what it would.
#include "keys/StdRegProv.h"

namespace zelvreg {

std::unique_ptr<StdRegProv> connectService(ProviderArchitecture architecture) {
  return makeDirectProvider(architecture);
}

}  // namespace zelvreg
