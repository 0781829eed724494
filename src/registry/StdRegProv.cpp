#include "registry/StdRegProv.h"

namespace zelvreg {

StdRegProv* StdRegProvPool::connect(ProviderArchitecture architecture) {
  auto& connection = connections[architecture];
  if (connection == nullptr) {
    connection = connectStdRegProv(architecture);
  }
  return connection.get();
}

}  // namespace zelvreg
