// The drives of the emulated computer: where a path of it leads in the folders of this system.
#ifndef ZELVREG_MACHINE_FILES_DRIVES_H
#define ZELVREG_MACHINE_FILES_DRIVES_H

#include <windows.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "machine/files/FileRecords.h"
#include "machine/files/FolderListings.h"
#include "machine/files/KnownFolders.h"
#include "machine/files/PathName.h"

namespace zelvreg::machine {

struct DriveSettings {
  std::map<char, std::filesystem::path> folders;  // by upper-case letter
  bool is64Bit = true;
  std::u16string windowsFolder = u"C:\\Windows";
  std::u16string programFolder;  // the program's own, for paths without a drive
  // Whether nothing is known of a drive without a folder; else there is no such drive.
  bool missingDrivesAreUnknown = false;
  // Of a disk that nobody else is expected to change while it is looked at, ToTheTick.
  Freshness freshness = Freshness::Exact;
};

// What a path leads to.
struct Place {
  LONG error = ERROR_SUCCESS;  // what opening it answers, if it is not there
  bool isFolder = false;
  bool isLent = false;  // see Drives::lend(): it can be read and nothing else
  char drive = '\0';    // none where nothing is known of it, and for what is lent
  // On this system. If the last name alone is missing (ERROR_FILE_NOT_FOUND), where it would be.
  std::string file;
  std::size_t rootSize = 0;  // how much of `file` is the drive's own folder

  [[nodiscard]] bool exists() const { return error == ERROR_SUCCESS; }
  [[nodiscard]] bool canBeMade() const { return error == ERROR_FILE_NOT_FOUND; }
  // The true path on the emulated computer, for its records; empty without a drive.
  [[nodiscard]] std::string path() const;
  // The folder on this system that `file` is in; of a drive's root, itself.
  [[nodiscard]] std::string folder() const;
};

class Drives {
 public:
  // The folders must be there.
  explicit Drives(DriveSettings settings);

  // Follows a path as the file calls of the 32-bit process do: names without regard to case, the
  // system folder redirected, links as long as they stay inside the drive.
  Place find(std::u16string_view text);

  // The same for a true path with its drive: nothing is redirected.
  Place findTrue(std::u16string_view path);

  // The true path of a file, for its records, without asking whether it is there; empty if the
  // text is no path with a drive. Not redirected.
  [[nodiscard]] std::string truePath(std::u16string_view text) const;

  // Whether it cannot be told if there is such a file: its drive was not given, it lies behind a
  // link that leaves its drive, or in a folder that may not be read, or it is a stream of a file.
  // Never so on a machine folder.
  bool isUnknown(std::u16string_view path);

  // What is asked for below `path` and not there is looked for in a folder of this system, as if it
  // were there, to be read only. `path` has a drive; a folder that does not exist lends nothing.
  void lend(std::u16string_view path, const std::filesystem::path& folder);

  // Is told of each path that a call is about to follow, as it was given; none by default.
  std::function<void(std::u16string_view path)> onFind;

  // Whether a letter, in either case, is a drive.
  [[nodiscard]] bool hasDrive(char16_t letter) const;
  // Says that a letter, in lower case, is another kind of drive than a fixed disk: DRIVE_REMOTE,
  // DRIVE_REMOVABLE.
  void setType(char16_t letter, UINT type) { types[letter] = type; }
  // What was said of the drive of a path; 0 if nothing was.
  [[nodiscard]] UINT typeOf(std::u16string_view path) const {
    const auto found = path.empty() ? types.end() : types.find(path.front() | 0x20);
    return found == types.end() ? 0 : found->second;
  }

  // The names in a folder that find() gave, in upper-case order.
  std::shared_ptr<const ListedNames> namesIn(const Place& folder) {
    return listings.all(folder.file);
  }

  // To be called after making, moving or deleting something in this folder of this system.
  void changed(const std::string& folder) { listings.forget(folder); }

  // Of what is at a place.
  [[nodiscard]] DWORD attributes(const Place& place) const;
  [[nodiscard]] FileRecords& records() { return fileRecords; }
  [[nodiscard]] const std::u16string& windowsFolder() const { return settings.windowsFolder; }
  [[nodiscard]] const std::u16string& programFolder() const { return settings.programFolder; }

 private:
  struct Drive {
    std::string root;  // canonical, without a separator at the end
    KnownFolders knownFolders;
  };
  struct Lent {
    PathName path;
    std::string folder;
  };

  Place walk(const PathName& path);
  // Whether a path means a stream of a file that is there; which ones it has is not known.
  bool isStreamOfFile(std::u16string_view path);
  Place findLent(const PathName& path);
  void redirect(PathName& path) const;
  [[nodiscard]] LONG missingDriveError() const;

  DriveSettings settings;
  PathName current;
  PathName windows;
  std::map<char, Drive> drives;  // by upper-case letter
  std::vector<Lent> lent;
  std::map<char16_t, UINT> types;
  FolderListings listings{settings.freshness};
  FileRecords fileRecords;
};

}  // namespace zelvreg::machine

#endif
