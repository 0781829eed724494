#include "keys/StdRegProv.h"

namespace zelvreg {

std::unique_ptr<StdRegProv> connectStdRegProv(ProviderRoad road,
                                              ProviderArchitecture architecture) {
  return road == ProviderRoad::Service ? connectService(architecture)
                                       : makeDirectProvider(architecture);
}

LONG StdRegProvPool::call(ProviderRoad road, ProviderArchitecture architecture,
                          const std::function<LONG(StdRegProv& provider)>& method) {
  auto& connection = connections[{road, architecture}];
  if (connection == nullptr) {
    connection = connects(road, architecture);
  }
  const LONG status = connection == nullptr ? providerFailed : method(*connection);
  if (status == providerFailed) {
    connection.reset();
  }
  return status;
}

}  // namespace zelvreg
