// The names in the folders of this system, found without regard to case.
#ifndef ZELVREG_MACHINE_FOLDER_LISTINGS_H
#define ZELVREG_MACHINE_FOLDER_LISTINGS_H

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelvreg::machine {

enum class NameKind : std::uint8_t { File, Folder, Link, Other };

struct ListedName {
  std::u16string upper;  // by which it is found
  std::string name;      // as the file system has it, in UTF-8
  NameKind kind = NameKind::Other;
};

// Keeps each listing until the folder's time of change differs, or it is forgotten: a scan asks for
// hundreds of thousands of names in a few thousand folders.
class FolderListings {
 public:
  // The name in the folder as it is written, else the first that differs in case alone; null if
  // there is none. `upper` is the name's upper case. Valid until the next call.
  const ListedName* find(const std::string& folder, std::u16string_view upper,
                         std::u16string_view name);

  // All names in upper-case order; none if the folder cannot be read.
  const std::vector<ListedName>& all(const std::string& folder);

  // Whether the folder could be read when it was asked for last.
  [[nodiscard]] bool isReadable(const std::string& folder) const;

  // To be called after a change to the folder: two changes can carry the same time.
  void forget(const std::string& folder) { listings.erase(folder); }

 private:
  struct Listing {
    dev_t device = 0;
    ino_t inode = 0;
    timespec changed{};
    bool readable = false;
    std::vector<ListedName> names;
  };
  Listing& current(const std::string& folder);

  std::unordered_map<std::string, Listing> listings;
};

}  // namespace zelvreg::machine

#endif
