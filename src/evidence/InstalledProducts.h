// What the registry says is installed, where a text names it by a code and not by a path.
#ifndef ZELVREG_EVIDENCE_INSTALLED_PRODUCTS_H
#define ZELVREG_EVIDENCE_INSTALLED_PRODUCTS_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/TruePlaces.h"

namespace zelvreg {

class InstalledProducts {
 public:
  // Whether the system's installer knows a product, for the computer or any user; by its code
  // "{XXXXXXXX-…}", or nothing where a text has none.
  bool isProduct(std::string_view code);

  // Whether a class, a library or an extension is registered, for the computer or for the user, for
  // programs of either view; by the list below HKEY_CLASSES_ROOT that it would be in, which is
  // empty for the root itself, and by its name.
  bool isRegistered(const std::u16string& list, const std::u16string& name);

  // Whether the service host has a group of this name.
  static bool isServiceGroup(const std::string& name);

  // Whether a component's surrogate has an application or a class with this code.
  static bool isApplication(std::string_view code);

 private:
  [[nodiscard]] bool seek(const std::u16string& packedCode);

  std::map<std::string, bool, std::less<>> products;
  const WideKey& listOf(const std::u16string& path);

  std::map<std::u16string, WideKey> lists;  // open, by their paths below HKEY_CLASSES_ROOT
  std::optional<std::vector<std::u16string>> installers;  // accounts that products are kept for
};

}  // namespace zelvreg

#endif
