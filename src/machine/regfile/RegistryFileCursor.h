// Finds and makes the keys that a registry file names line by line. A key is sought from the one
// before, as the two mostly share their path.
#ifndef ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_CURSOR_H
#define ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_CURSOR_H

#include <string>
#include <string_view>
#include <vector>

#include "machine/registry/Registry.h"

namespace zelvreg::machine {

class RegistryFileCursor {
 public:
  explicit RegistryFileCursor(Registry& target) : registry(target) {}

  // The key of a path that begins with a root's long name; made if it is missing. Throws
  // MachineError ("what is wrong; what is expected") for a path that no key can have.
  RegistryKey& open(std::u16string_view path);
  // Deletes a key with all below it, if it is there. Throws as `open` does.
  void erase(std::u16string_view path);

  // Whether the current user's keys stand under HKEY_CURRENT_USER rather than by the user's SID.
  [[nodiscard]] bool spellsCurrentUser() const { return sawCurrentUser || !sawUserBySid; }

 private:
  struct Step {
    std::size_t end;  // where its name ends in the path
    RegistryKey* key;
    std::size_t depth;  // of the key, which a link may have led to
  };

  void keepCommonSteps(std::u16string_view path);
  void openRoot(std::u16string_view path);
  Step stepBelow(const Step& above, std::u16string_view name, std::size_t end);
  RegistryKey& openInClassesRoot(std::u16string_view path, std::size_t rootEnd);
  static void checkName(std::u16string_view name);
  void noteUser(std::u16string_view path);

  Registry& registry;
  std::u16string lastPath;
  std::vector<Step> steps;  // of lastPath, from its root on
  bool sawCurrentUser = false;
  bool sawUserBySid = false;
};

}  // namespace zelvreg::machine

#endif
