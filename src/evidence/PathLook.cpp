#include "evidence/PathLook.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "evidence/CommandText.h"
#include "evidence/ViewPaths.h"
#include "runtime/ShortNames.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// All of them where the shell starts what is named as a whole, else the first ones.
constexpr std::array<std::string_view, 11> programEndings{
    ".exe", ".com", ".bat", ".cmd", ".lnk", ".vbs", ".vbe", ".js", ".jse", ".wsf", ".msc"};
constexpr std::size_t usualEndings = 5;
constexpr std::array<std::string_view, 2> libraryEndings{".dll", ".cpl"};

std::span<const std::string_view> endingsFor(Reading reading, Takes takes) {
  switch (reading) {
    case Reading::Start:
      return std::span(programEndings)
          .first(takes == Takes::FoldersToo ? programEndings.size() : usualEndings);
    case Reading::Command:
      return std::span(programEndings).first(usualEndings);
    case Reading::Library:
      return libraryEndings;
    default:
      return {};
  }
}

// "PROGRA~1": a name that the file system made up for an old program.
bool hasShortName(std::string_view path) {
  for (auto sign = path.find('~'); sign != std::string_view::npos;
       sign = path.find('~', sign + 1)) {
    if (sign + 1 < path.size() && path[sign + 1] >= '1' && path[sign + 1] <= '9') {
      return true;
    }
  }
  return false;
}

// A pattern for several files, or a template with places to fill in.
bool isTemplate(std::string_view path) {
  const auto brace = path.find('{');
  const bool hasPlace = brace != std::string_view::npos && brace + 2 < path.size() &&
                        path[brace + 1] >= '0' && path[brace + 1] <= '9' && path[brace + 2] == '}';
  const auto isWild = [](char character) {
    return character == '*' || character == '?' || character == '<' || character == '>' ||
           character == '|';
  };
  return hasPlace || contains(path, "$(") || std::ranges::any_of(path, isWild);
}

// The rest of a variable, or a place to fill in.
bool hasOpenSign(std::string_view path) {
  for (auto sign = path.find('%'); sign != std::string_view::npos;
       sign = path.find('%', sign + 1)) {
    const char next = sign + 1 < path.size() ? static_cast<char>(path[sign + 1] | 0x20) : ' ';
    if ((next >= 'a' && next <= 'z') || (next >= '0' && next <= '9') || next == '*') {
      return true;
    }
  }
  return false;
}

// "[ProductName]" and "$date" at the start of a name, or a date in letters: what a program fills in
// before it uses the text. A file may be called so, too.
bool hasPlaceholder(std::string_view path) {
  for (const std::string_view year : {"YYYY", "yyyy"}) {
    const auto found = path.find(year);
    std::string_view rest = found == std::string_view::npos ? "" : path.substr(found + year.size());
    rest.remove_prefix(!rest.empty() && contains("-_. ", rest.substr(0, 1)) ? 1 : 0);
    if (rest.starts_with("MM") || rest.starts_with("mm")) {
      return true;
    }
  }
  for (auto start = path.find('\\'); start < path.size(); start = path.find('\\', start + 1)) {
    const std::string_view name = path.substr(start + 1);
    if (name.size() > 1 && name[0] == '[' && isLetter(name[1])) {
      return name.find(']') < name.find('\\');
    }
    if (name.size() > 1 && name[0] == '$' && name[1] >= 'a' && name[1] <= 'z') {
      return true;
    }
  }
  return false;
}

// A device or a volume by another name than its drive's letter.
bool isOnDevice(std::string_view path) {
  return findIgnoringCase(path, "volume{") == 0 || findIgnoringCase(path, "\\device\\") == 0 ||
         findIgnoringCase(path, "globalroot\\") == 0;
}

bool isOfPackage(std::string_view path) {
  constexpr std::string_view folder = "windowsapps";
  std::size_t start = 0;
  for (auto end = nextSeparator(path); end != std::string_view::npos;
       end = nextSeparator(path, start)) {
    if (end - start == folder.size() &&
        findIgnoringCase(path.substr(start, end - start), folder) == 0) {
      return true;
    }
    start = end + 1;
  }
  return false;
}

bool isCachedByInstaller(std::string_view path) {
  return contains(path, "{") && containsIgnoringCase(path, "\\installer\\{");
}

}  // namespace

void PathTrial::find(Reason reason) {
  if (!found) {
    found = reason;
  }
}

const std::string& PathLook::windowsFolder() {
  if (windows.empty()) {
    windows = variables.value("windir", {}, ProgramView::Bits64).value_or("C:\\Windows");
  }
  return windows;
}

void PathLook::tryReading(PathTrial& trial, const std::string& text, const TextOwner& owner,
                          Reading reading, Takes takes) {
  std::string path = plainPath(text, windowsFolder());
  const auto judge = [&](Reason reason) {
    if (!trial.isJudged) {
      trial.reasons.add(reason);
      trial.isJudged = true;
    }
  };
  const bool hasDrive = isDrivePath(path);
  if (!hasDrive && isOnDevice(path)) {
    judge(Reason::PlaceUnknown);
    return;
  }
  const bool isRemote = hasDrive ? files.drive(path.front()) == DriveIs::Remote ||
                                       variables.mapsDrive(path.front(), owner.user)
                                 : leadsToShare(path);
  if (isRemote && shares == Shares::Refused) {
    trial.reasons.add(Reason::Share);
    trial.isJudged = true;
    return;
  }
  if (isRemote) {
    tryShare(trial, path, takes);
    return;
  }
  if (!trial.isJudged && isTemplate(path)) {
    judge(Reason::NotAPath);
    return;
  }
  // Without a drive it is most likely that of the system.
  if (path.size() > 1 && (path[0] == '\\' || path[0] == '/') && path[1] != '\\') {
    path.insert(0, windowsFolder().substr(0, 2));
    trial.reasons.add(Reason::PlaceUnknown);
  }
  if (isDrivePath(path)) {
    tryPath(trial, path, owner, reading, takes);
  } else if (path.find(':') == std::string::npos) {
    trySearch(trial, path, owner, reading);
  } else {
    judge(Reason::NotAPath);
  }
}

bool PathLook::isOfSystem(const std::string& program) {
  if (program.find_first_of("\\/") == std::string::npos) {
    return true;
  }
  const std::string path = lowerCase(plainPath(program, windowsFolder()));
  return path.starts_with(lowerCase(windowsFolder()) + "\\");
}

// Only where shares are asked.
void PathLook::tryShare(PathTrial& trial, const std::string& path, Takes takes) {
  trial.tested.add(path);
  const FileIs answer = files.at(path);
  const bool isFolder = answer == FileIs::Folder && takes == Takes::FoldersToo;
  if (answer == FileIs::File || isFolder) {
    trial.find(Reason::Found);
  } else if (answer == FileIs::Missing || answer == FileIs::InMissingFolder) {
    trial.reasons.add(Reason::AbsentOnShare);
  } else {
    trial.reasons.add(Reason::Share);
  }
  trial.isJudged = true;
}

void PathLook::noteDrive(PathTrial& trial, const std::string& path) {
  switch (files.drive(path.front())) {
    case DriveIs::Absent:
      trial.reasons.add(Reason::DriveAbsent);
      break;
    case DriveIs::Removable:
      trial.reasons.add(Reason::DriveRemovable);
      break;
    default:
      break;
  }
}

void PathLook::tryPath(PathTrial& trial, const std::string& given, const TextOwner& owner,
                       Reading reading, Takes takes) {
  const bool isShort = hasShortName(given);
  const std::string longer = isShort ? withLongNames(given) : std::string();
  const std::string& path = isShort ? longer : given;
  const bool isFirst = !trial.isJudged;
  if (isFirst) {
    trial.tested.add(path);
    noteDrive(trial, path);
  }
  if (files.drive(path.front()) == DriveIs::Absent) {
    trial.isJudged = true;
    return;
  }
  if (tryViews(trial, path, owner, takes)) {
    return;
  }
  if (!showsFileEnd(path) && files.at(path) != FileIs::InMissingFolder) {
    for (const std::string_view ending : endingsFor(reading, takes)) {
      PathTrial extended;
      if (tryViews(extended, path + std::string(ending), owner, Takes::FilesOnly)) {
        trial.find(Reason::FoundWithExtension);
        trial.tested.add(extended.tested);
        return;
      }
    }
  }
  if (isFirst) {
    noteDoubts(trial, path, path == given);
  }
}

// What the path itself says against its being dead.
void PathLook::noteDoubts(PathTrial& trial, const std::string& path, bool isAsGiven) {
  if (isOfPackage(path)) {
    trial.reasons.add(Reason::PackagedApp);
  }
  if (isCachedByInstaller(path) && products.isProduct(guidIn(path))) {
    trial.reasons.add(Reason::InstallerOnDemand);
  }
  // One that could be looked up is as good as any other.
  if (isAsGiven && hasShortName(path)) {
    trial.reasons.add(Reason::ShortName);
  }
}

// Whether a path is there in its own view or in the other one. The first reading of a text says why
// it is not.
bool PathLook::tryViews(PathTrial& trial, const std::string& path, const TextOwner& owner,
                        Takes takes) {
  const bool isLong = path.size() > longestUsualPath && utf16(path).size() > longestUsualPath;
  for (const ViewPath& place : viewPaths(path, owner.view, windowsFolder())) {
    const FileIs answer = files.at(place.path);
    const bool isFolder = answer == FileIs::Folder && takes == Takes::FoldersToo;
    if (answer == FileIs::File || isFolder) {
      trial.find(place.isOwn ? Reason::Found : Reason::FoundInOtherView);
      trial.tested.add(path);
      return true;
    }
    if (answer == FileIs::Denied) {
      trial.reasons.add(Reason::AccessDenied);
    } else if (answer == FileIs::BehindBrokenLink) {
      trial.reasons.add(Reason::ReparseBroken);
    } else if (!trial.isJudged && place.isOwn) {
      trial.reasons.add(Reason::Absent);
      if (answer == FileIs::InMissingFolder) {
        trial.reasons.add(Reason::ParentAbsent);
      }
      if (isLong) {
        trial.reasons.add(Reason::PathTooLong);
      }
      if (hasOpenSign(path)) {
        trial.reasons.add(Reason::UnknownVariable);
      }
      if (hasPlaceholder(path)) {
        trial.reasons.add(Reason::NotAPath);
      }
    }
  }
  trial.isJudged = true;
  return false;
}

void PathLook::trySearch(PathTrial& trial, const std::string& name, const TextOwner& owner,
                         Reading reading) {
  std::vector<std::string> names{name};
  if (!showsFileEnd(name)) {
    for (const std::string_view ending : endingsFor(reading, Takes::FilesOnly)) {
      names.push_back(name + std::string(ending));
    }
  }
  for (const std::string& one : names) {
    if (const auto path = searchPath.find(one, owner.user)) {
      trial.find(Reason::FoundOnPath);
      trial.tested.add(*path);
      return;
    }
  }
  if (!trial.isJudged) {
    // A word alone need not be a file at all.
    const bool isBare = name.find_first_of("\\/") == std::string::npos && hasFileEnding(name);
    trial.tested.add(name);
    trial.reasons.add(Reason::Absent);
    trial.reasons.add(isBare ? Reason::BareName : Reason::PlaceUnknown);
    trial.isJudged = true;
  }
}

}  // namespace zelvreg
