// Windows file attributes where the disk itself keeps them.
#ifndef ZELVREG_MACHINE_FILES_DISK_ATTRIBUTES_H
#define ZELVREG_MACHINE_FILES_DISK_ATTRIBUTES_H

#include <windows.h>

#include <map>
#include <optional>
#include <string>

namespace zelvreg::machine {

// The extended attribute in which Linux's drivers of NTFS show a file's attributes: 32 bits in the
// byte order of this computer.
inline constexpr const char* ntfsAttribute = "system.ntfs_attrib";

// The attributes of what is at a name itself, not at the end of a link; 0 if its disk keeps none.
DWORD ntfsAttributesOf(const std::string& file);

// The attributes of the files of a mounted disk, by their paths on this system: those that were
// asked for, else those that the disk has.
class DiskAttributes {
 public:
  // Whether the disk keeps attributes at all, as its root says: else no file needs to be asked.
  explicit DiskAttributes(bool areKept) : areOnDisk(areKept) {}

  // None if the disk keeps none and none were asked for.
  [[nodiscard]] std::optional<DWORD> of(const std::string& file) const;

  void ask(const std::string& file, DWORD attributes) { asked[file] = attributes; }
  [[nodiscard]] const std::map<std::string, DWORD>& all() const { return asked; }

  // Sets those that can be set (read-only, hidden, system, archive, temporary, not indexed) and
  // forgets what was asked. A file whose disk keeps no attributes stays as it is, as does one that
  // cannot be written: Windows passes over a refused change, too.
  void write(const char* attributeName = ntfsAttribute);

 private:
  bool areOnDisk;
  std::map<std::string, DWORD> asked;
};

}  // namespace zelvreg::machine

#endif
