// The registry provider reads a chosen view, whether the process has 32 or 64 bits. It has two
// roads with the same answers: direct reads with the flag of the view, and the system's management
// service, which may be broken or stop between two calls. Without a service, direct reads replace
// it.
#ifndef ZELVREG_KEYS_STD_REG_PROV_H
#define ZELVREG_KEYS_STD_REG_PROV_H

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "roots/Roots.h"

namespace zelvreg {

// The code of a call that did not reach the provider, so that it says nothing about the key.
inline constexpr LONG providerFailed = 1726;

class StdRegProv {
 public:
  virtual ~StdRegProv() = default;

  // Each returns 0, a code of the registry, or providerFailed. A key without subkeys or values
  // gives no array at all.
  virtual LONG enumKey(HiveHandle hive, const std::string& key,
                       std::optional<std::vector<std::string>>& names) = 0;
  // Named values only: the unnamed default value is not among them. `serve` is called from time to
  // time while many names are read, but not while the service works; it may use the provider.
  virtual LONG enumValues(HiveHandle hive, const std::string& key,
                          std::optional<std::vector<std::string>>& names, std::vector<DWORD>& types,
                          const std::function<void()>& serve) = 0;
  // The text of a REG_SZ or REG_EXPAND_SZ up to its first NUL, variables not expanded; the empty
  // text for any other type. An empty name reads the default value.
  virtual LONG getStringValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                              std::string& value) = 0;
  // The same with variables expanded.
  virtual LONG getExpandedStringValue(HiveHandle hive, const std::string& key,
                                      const std::string& valueName, std::string& value) = 0;
  // Refuses a key that has subkeys.
  virtual LONG deleteKey(HiveHandle hive, const std::string& key) = 0;
};

// The view that a provider works in: "__ProviderArchitecture", or the service's own default, which
// is the 32-bit view.
enum class ProviderArchitecture : int { Default = 0, Bits32 = 32, Bits64 = 64 };

enum class ProviderRoad { Direct, Service };

std::unique_ptr<StdRegProv> makeDirectProvider(ProviderArchitecture architecture);
// Null when the service does not answer.
std::unique_ptr<StdRegProv> connectService(ProviderArchitecture architecture);

// A provider by one road, for one view; null when the service does not answer.
std::unique_ptr<StdRegProv> connectStdRegProv(ProviderRoad road, ProviderArchitecture architecture);

// Keeps one connection for each road and view, since a new one for each read would cost more.
class StdRegProvPool {
 public:
  using Connect =
      std::function<std::unique_ptr<StdRegProv>(ProviderRoad road, ProviderArchitecture view)>;
  explicit StdRegProvPool(Connect connector = connectStdRegProv) : connects(std::move(connector)) {}

  // Calls the provider and returns its answer, or providerFailed if there is no provider. A
  // connection whose call has failed is dropped, and the next call makes a new one.
  LONG call(ProviderRoad road, ProviderArchitecture architecture,
            const std::function<LONG(StdRegProv& provider)>& method);

 private:
  Connect connects;
  std::map<std::pair<ProviderRoad, ProviderArchitecture>, std::unique_ptr<StdRegProv>> connections;
};

}  // namespace zelvreg

#endif
