// The names in the folders of this system, found without regard to case.
#ifndef ZELVREG_MACHINE_FILES_FOLDER_LISTINGS_H
#define ZELVREG_MACHINE_FILES_FOLDER_LISTINGS_H

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zelvreg::machine {

enum class NameKind : std::uint8_t { File, Folder, Link, Other };

struct ListedName {
  std::u16string upper;  // by which it is found
  std::string name;      // as the file system has it, in UTF-8 that keeps lone surrogates
  NameKind kind = NameKind::Other;
  bool hasTwin = false;  // another name in the folder differs in case alone
};

using ListedNames = std::vector<ListedName>;

// How often a folder that is listed is looked at again.
enum class Freshness : std::uint8_t {
  Exact,     // for each name
  ToTheTick  // once in each tick of the system's coarse clock, which is some milliseconds long
};

// Keeps each listing until the folder's time of change differs, or it is forgotten: a scan asks for
// hundreds of thousands of names in a few thousand folders.
class FolderListings {
 public:
  explicit FolderListings(Freshness howFresh) : freshness(howFresh) {}

  // The name in the folder as it is written, else the first that differs in case alone; null if
  // there is none. `upper` is the name's upper case. Valid until the next call.
  const ListedName* find(const std::string& folder, std::u16string_view upper,
                         std::u16string_view name);

  // All names in upper-case order as they are now; none if the folder cannot be read. Never null.
  std::shared_ptr<const ListedNames> all(const std::string& folder);

  // Whether a name that find() has not found is in no form in the folder: its names could be read,
  // and none of them is in another character set than UTF-8, which no name can be compared with but
  // one of ASCII alone.
  [[nodiscard]] bool isSurelyMissing(const std::string& folder, std::u16string_view name) const;

  // Another number whenever a folder was read, or could not be: until then all is as it was listed.
  [[nodiscard]] std::uint64_t timesRead() const { return readings; }

  // To be called after a change to the folder: two changes can carry the same time.
  void forget(const std::string& folder) {
    last = nullptr;
    listings.erase(folder);
  }

 private:
  struct Listing {
    dev_t device = 0;
    ino_t inode = 0;
    timespec changed{};
    timespec lookedAt{};
    bool readable = false;
    bool hasForeignNames = false;
    std::shared_ptr<const ListedNames> names;
  };
  using Listings = std::unordered_map<std::string, Listing>;
  Listing& current(const std::string& folder);
  [[nodiscard]] const Listing* known(const std::string& folder) const;
  [[nodiscard]] bool isLast(const std::string& folder) const {
    return last != nullptr && last->first == folder;
  }

  Freshness freshness;
  Listings listings;
  // The folder that was asked for last, which is asked for again more often than not.
  Listings::value_type* last = nullptr;
  std::uint64_t readings = 0;
};

}  // namespace zelvreg::machine

#endif
