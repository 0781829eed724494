// The registry provider of the system's management service: it reads a chosen view from a process
// of either width. On Windows the service is asked; elsewhere the same answers come from direct
// reads with the flag of the view.
#ifndef ZELVREG_REGISTRY_STD_REG_PROV_H
#define ZELVREG_REGISTRY_STD_REG_PROV_H

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "registry/Hives.h"

namespace zelvreg {

class StdRegProv {
 public:
  virtual ~StdRegProv() = default;

  // Each gives 0 or a code of the provider. Results that it has nothing for stay empty: a key
  // without subkeys or values gives no array at all. Text passes through the code page.
  virtual LONG enumKey(HiveHandle hive, const std::string& key,
                       std::optional<std::vector<std::string>>& names) = 0;
  // Named values only: the unnamed default value is not among them.
  virtual LONG enumValues(HiveHandle hive, const std::string& key,
                          std::optional<std::vector<std::string>>& names,
                          std::vector<DWORD>& types) = 0;
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

// A provider connected for one view; null when the service does not answer.
std::unique_ptr<StdRegProv> connectStdRegProv(ProviderArchitecture architecture);

// Keeps one connection for each view: connecting anew for each read costs more and tells nothing
// else. A connection that failed is tried again.
class StdRegProvPool {
 public:
  // Not owned by the caller; null when the service does not answer.
  StdRegProv* connect(ProviderArchitecture architecture);

 private:
  std::map<ProviderArchitecture, std::unique_ptr<StdRegProv>> connections;
};

}  // namespace zelvreg

#endif
