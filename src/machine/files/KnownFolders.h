// Where folders of one drive lie, as walks through it have found them: the next path that leads
// through one of them need not begin at the root.
#ifndef ZELVREG_MACHINE_FILES_KNOWN_FOLDERS_H
#define ZELVREG_MACHINE_FILES_KNOWN_FOLDERS_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zelvreg::machine {

// Folders are named by their upper-case names, a backslash in front of each. Whoever uses an answer
// sees to it that the folder is still the one it was.
class KnownFolders {
 public:
  struct Start {
    std::size_t length = 0;               // of the names that lead to the folder
    const std::string* folder = nullptr;  // on this system; null for the root of the drive
  };

  // The deepest one above the last of these names. Valid until keep().
  [[nodiscard]] Start above(std::u16string_view upperNames);

  void keep(std::u16string_view upperNames, const std::string& folder);

 private:
  struct HashOfText : std::hash<std::u16string_view> {
    using is_transparent = void;
  };
  [[nodiscard]] Start deepest(std::u16string_view names) const;

  std::unordered_map<std::u16string, std::string, HashOfText, std::equal_to<>> folders;
  // Many files of one folder are asked for one after the other.
  std::u16string lastNames;
  Start lastStart;
};

}  // namespace zelvreg::machine

#endif
