// One way from a drive's folder down, name by name, without regard to case.
#ifndef ZELVREG_MACHINE_FILES_FOLDER_WALK_H
#define ZELVREG_MACHINE_FILES_FOLDER_WALK_H

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "machine/files/FolderListings.h"
#include "machine/files/KnownFolders.h"

namespace zelvreg::machine {

// Where a walk begins.
struct WalkRoot {
  char drive;                 // upper-case; none for a folder that is no drive
  const std::string& folder;  // of this system
};

class FolderWalk {
 public:
  // Everything given must stay as it is while the walk lives. Each name of the path has a backslash
  // in front.
  FolderWalk(FolderListings& folderListings, WalkRoot walkRoot, std::u16string_view pathNames);

  // Links are followed as long as they stay inside the drive. What a driver cannot follow is there,
  // and what lies below it counts as outside. Gives ERROR_SUCCESS if everything is
  // there, `outside` if a link leaves the drive, else what a file call answers.
  LONG go(LONG outside);
  // The same, from the deepest known folder on; folders on the way become known.
  LONG go(LONG outside, KnownFolders& known);

  // Where it has led: to what is there, or to where the last name would be.
  [[nodiscard]] std::string takeWhere() { return std::move(file); }
  [[nodiscard]] bool leadsToFolder() const { return isFolder; }

 private:
  struct Step {
    std::u16string_view name;
    std::u16string_view upper;
  };
  void begin();
  Step takeStep();
  [[nodiscard]] bool isAtEnd() const { return at == names.size(); }
  LONG goOn(LONG outside, KnownFolders* known);
  bool goUp();
  LONG missing(const Step& step);
  LONG stopAt(const std::string& link, LONG outside);
  bool follow(std::string_view target);

  FolderListings& listings;
  const char drive;
  const std::string& root;
  std::u16string_view path;
  std::u16string_view names;  // those still to be followed begin at `at`
  std::u16string upper;
  std::u16string followed;  // the names from the target of a link on
  std::size_t at = 0;
  std::string file;
  // How much of the names is left once the target of a link is reached: more belongs to that
  // target.
  std::size_t ownLeft = std::u16string::npos;
  bool isFolder = true;
  int links = 0;
};

}  // namespace zelvreg::machine

#endif
