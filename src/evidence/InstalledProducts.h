// What the registry says is installed, where a text names it by a code and not by a path.
#ifndef ZELVREG_EVIDENCE_INSTALLED_PRODUCTS_H
#define ZELVREG_EVIDENCE_INSTALLED_PRODUCTS_H

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "evidence/TruePlaces.h"

namespace zelvreg {

class InstalledProducts {
 public:
  // Whether the system's installer knows a product, for the computer or any user; by its code
  // "{XXXXXXXX-…}".
  bool isProduct(std::string_view code);

  // Whether a class or a library is registered, for the computer or for the user, for programs of
  // either view; by its key below HKEY_CLASSES_ROOT.
  bool isRegistered(const std::u16string& key);

  // Whether the service host has a group of this name.
  static bool isServiceGroup(const std::string& name);

  // Whether a component's surrogate has an application or a class with this code.
  static bool isApplication(std::string_view code);

 private:
  [[nodiscard]] bool seek(const std::u16string& packedCode);

  std::map<std::string, bool, std::less<>> products;
  std::unordered_map<std::u16string, bool> registered;
  std::optional<std::vector<std::u16string>> installers;  // accounts that products are kept for
};

}  // namespace zelvreg

#endif
