// Tries one reading of a text as a path: where it leads, and if nowhere, why.
#ifndef ZELVREG_EVIDENCE_PATH_LOOK_H
#define ZELVREG_EVIDENCE_PATH_LOOK_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "evidence/FileLook.h"
#include "evidence/InstalledProducts.h"
#include "evidence/OwnerVariables.h"
#include "evidence/SearchPath.h"
#include "form/Evidence.h"
#include "runtime/Shares.h"

namespace zelvreg {

// Whom a text is for.
struct TextOwner {
  std::u16string user;  // the key below HKEY_USERS; empty for the current user and the computer
  ProgramView view = ProgramView::Bits64;
  // Whether it is for every user of the computer, so that a user's variable may mean another file.
  bool isEveryones = false;
};

// How a text is to be read. All of a text may also be the path of a folder.
enum class Reading : std::uint8_t {
  Start,    // what the shell starts: a program or a script, with or without arguments
  Command,  // a program, with or without arguments
  Library,  // a file that the system loads, ".dll" added
  File,     // a file by its path; an index of a resource may follow
};

// What the readings of one text have led to so far.
struct PathTrial {
  std::optional<Reason> found;
  ReasonList reasons;  // why not
  TestedPlaces tested;
  bool isJudged = false;  // whether the reading that counts has been judged

  // The first reason counts.
  void find(Reason reason);
};

// Whether a reading may also be a folder. A text that was cut may not: what is before a blank is
// often the name of a folder by chance.
enum class Takes : std::uint8_t { FilesOnly, FoldersToo };

class PathLook {
 public:
  // Both must outlive this.
  PathLook(Shares mayAskShares, OwnerVariables& ownerVariables, InstalledProducts& installed,
           std::size_t expectedFiles)
      : shares(mayAskShares),
        variables(ownerVariables),
        products(installed),
        files(expectedFiles) {}

  // The first reading that is tried says why nothing is found.
  void tryReading(PathTrial& trial, const std::string& text, const TextOwner& owner,
                  Reading reading, Takes takes);

  // Whether a program is named without a folder, or below the folder of Windows. Another program
  // may have the name of one of the system's launchers.
  bool isOfSystem(const std::string& program);

 private:
  void tryPath(PathTrial& trial, const std::string& given, const TextOwner& owner, Reading reading,
               Takes takes);
  bool tryViews(PathTrial& trial, const std::string& path, const TextOwner& owner, Takes takes);
  void trySearch(PathTrial& trial, const std::string& name, const TextOwner& owner,
                 Reading reading);
  void tryShare(PathTrial& trial, const std::string& path, Takes takes);
  void noteDoubts(PathTrial& trial, const std::string& path, bool isAsGiven);
  void noteDrive(PathTrial& trial, const std::string& path);
  const std::string& windowsFolder();

  Shares shares;
  OwnerVariables& variables;
  InstalledProducts& products;
  FileLook files;
  SearchPath searchPath{files, variables};
  std::string windows;
};

}  // namespace zelvreg

#endif
