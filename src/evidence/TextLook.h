// What a text of the registry refers to, resolved as Windows itself would: with the variables of
// its owner and of its view, along the search path, with the extension that the system adds, behind
// launchers, in both system folders.
#ifndef ZELVREG_EVIDENCE_TEXT_LOOK_H
#define ZELVREG_EVIDENCE_TEXT_LOOK_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "evidence/CommandText.h"
#include "evidence/FileLook.h"
#include "evidence/InstalledProducts.h"
#include "evidence/Launchers.h"
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
  Command,  // a program, with or without arguments
  Library,  // a file that the system loads, ".dll" added
  File,     // a file by its path; an index of a resource may follow
};

class TextLook {
 public:
  explicit TextLook(Shares mayAskShares) : shares(mayAskShares) {}

  // The reasons with what was tested; without a confidence. `text` is as it stands in the registry.
  Evidence at(const std::string& text, const TextOwner& owner, Reading reading);

  // The first of several texts that is found; what is said of the first one if none is.
  Evidence atAny(const std::vector<std::string>& texts, const TextOwner& owner, Reading reading);

  // A text with the variables of its owner.
  std::string expanded(std::string_view text, const TextOwner& owner);

  OwnerVariables variables;
  InstalledProducts products;

 private:
  struct Trial;
  enum class Takes : std::uint8_t { FilesOnly, FoldersToo };

  Evidence look(const std::string& text, const TextOwner& owner, Reading reading, int depth);
  Trial tryText(const std::string& text, const TextOwner& owner, Reading reading, int depth);
  Trial tryTarget(const LaunchTarget& target, const TextOwner& owner, int depth);
  void tryReading(Trial& trial, const std::string& text, const TextOwner& owner, Reading reading,
                  Takes takes);
  void tryPath(Trial& trial, const std::string& given, const TextOwner& owner, Reading reading,
               Takes takes);
  bool tryViews(Trial& trial, const std::string& path, const TextOwner& owner, Takes takes);
  void trySearch(Trial& trial, const std::string& name, const TextOwner& owner, Reading reading);
  void tryShare(Trial& trial, const std::string& path, Takes takes);
  void noteDoubts(Trial& trial, const std::string& path, bool isAsGiven);
  void noteDrive(Trial& trial, const std::string& path);
  const std::string& windowsFolder();

  Shares shares;
  FileLook files;
  SearchPath searchPath{files, variables};
  std::unordered_map<std::string, Evidence> known;  // by text, owner and reading
  std::string windows;
};

Evidence withReason(Reason reason);
// Adds a reason that is not among them yet.
void addReason(Evidence& evidence, Reason reason);
// Whether a reason says that the target was found.
bool isFound(const Evidence& evidence);

}  // namespace zelvreg

#endif
