#include "evidence/TextLook.h"

#include <algorithm>
#include <array>
#include <span>

#include "evidence/ViewPaths.h"
#include "runtime/ShortNames.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {

// What one way to read a text has led to.
struct TextLook::Trial {
  std::vector<Reason> found;    // at most one
  std::vector<Reason> reasons;  // why not
  std::vector<std::string> tested;
  bool isJudged = false;  // whether the reading that counts has been judged

  void note(Reason reason) {
    if (std::ranges::find(reasons, reason) == reasons.end()) {
      reasons.push_back(reason);
    }
  }
  void find(Reason reason) {
    if (found.empty()) {
      found.push_back(reason);
    }
  }
};

namespace {

constexpr std::size_t longestText = 32767;  // characters, as the system's calls take them
constexpr std::size_t mostTested = 6;
constexpr int deepestLauncher = 4;

constexpr std::array<std::string_view, 5> programEndings{".exe", ".com", ".bat", ".cmd", ".lnk"};
constexpr std::array<std::string_view, 2> libraryEndings{".dll", ".cpl"};

std::span<const std::string_view> endingsFor(Reading reading) {
  switch (reading) {
    case Reading::Command:
      return programEndings;
    case Reading::Library:
      return libraryEndings;
    default:
      return {};
  }
}

TextIs kindOf(Reading reading) { return reading == Reading::File ? TextIs::Path : TextIs::Command; }

bool hasExtension(std::string_view path) {
  return fileNameIn(path).find('.') != std::string_view::npos;
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
  return hasPlace || path.find_first_of("*?<>|") != std::string_view::npos;
}

// The rest of a variable, or a place to fill in.
bool hasOpenSign(std::string_view path) {
  for (auto sign = path.find('%'); sign != std::string_view::npos;
       sign = path.find('%', sign + 1)) {
    const char next = sign + 1 < path.size() ? static_cast<char>(path[sign + 1] | 0x20) : ' ';
    if (next >= 'a' && next <= 'z') {
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

bool isOfPackage(std::string_view path) { return containsIgnoringCase(path, "\\windowsapps\\"); }

bool isCachedByInstaller(std::string_view path) {
  return containsIgnoringCase(path, "\\installer\\{");
}

void addAll(std::vector<std::string>& tested, const std::vector<std::string>& more) {
  for (const std::string& path : more) {
    if (tested.size() < mostTested && std::ranges::find(tested, path) == tested.end()) {
      tested.push_back(path);
    }
  }
}

}  // namespace

void addReason(Evidence& evidence, Reason reason) {
  if (std::ranges::find(evidence.reasons, reason) == evidence.reasons.end()) {
    evidence.reasons.push_back(reason);
  }
}

Evidence withReason(Reason reason) {
  Evidence evidence;
  evidence.reasons.push_back(reason);
  return evidence;
}

bool isFound(const Evidence& evidence) {
  return std::ranges::any_of(evidence.reasons, [](Reason reason) {
    return reason >= Reason::Found && reason <= Reason::FoundWithOwnerVariables;
  });
}

const std::string& TextLook::windowsFolder() {
  if (windows.empty()) {
    windows = variables.value("windir", {}, ProgramView::Bits64).value_or("C:\\Windows");
  }
  return windows;
}

std::string TextLook::expanded(std::string_view text, const TextOwner& owner) {
  return variables.expand(text, owner.user, owner.view).text;
}

Evidence TextLook::at(const std::string& text, const TextOwner& owner, Reading reading) {
  std::string key = utf8(owner.user);
  key += static_cast<char>('0' + static_cast<int>(reading));
  key += owner.view == ProgramView::Bits64 ? '6' : '3';
  key += owner.isEveryones ? 'e' : 'o';
  key += text;
  const auto found = known.find(key);
  if (found != known.end()) {
    return found->second;
  }
  return known.emplace(std::move(key), look(text, owner, reading, 0)).first->second;
}

Evidence TextLook::atAny(const std::vector<std::string>& texts, const TextOwner& owner,
                         Reading reading) {
  Evidence first;
  for (const std::string& text : texts) {
    Evidence evidence = at(text, owner, reading);
    if (isFound(evidence)) {
      return evidence;
    }
    if (first.reasons.empty()) {
      first = std::move(evidence);
    } else {
      addAll(first.tested, evidence.tested);
    }
  }
  return first;
}

// With the variables of the owner and its view; if that finds nothing, with those of the other
// view.
Evidence TextLook::look(const std::string& text, const TextOwner& owner, Reading reading,
                        int depth) {
  const std::string_view whole = trim(untilNul(text));
  if (whole.empty()) {
    return withReason(Reason::NoText);
  }
  if (whole.size() > longestText && characterCount(whole) > longestText) {
    return withReason(Reason::TextTooLong);
  }
  const ExpandedText own = variables.expand(whole, owner.user, owner.view);
  const bool hasVariables = own.text != whole;
  Trial trial = tryText(own.text, owner, reading, depth);
  if (!trial.found.empty() && hasVariables && trial.found.front() == Reason::Found) {
    trial.found.front() = Reason::FoundWithOwnerVariables;
  }
  if (trial.found.empty() && hasVariables) {
    const ProgramView other =
        owner.view == ProgramView::Bits64 ? ProgramView::Bits32 : ProgramView::Bits64;
    const std::string text2 = variables.expand(whole, owner.user, other).text;
    Trial second = text2 == own.text ? Trial() : tryText(text2, owner, reading, depth);
    if (!second.found.empty()) {
      trial.find(Reason::FoundInOtherView);
      addAll(trial.tested, second.tested);
    }
  }
  Evidence evidence{.reasons = trial.found.empty() ? trial.reasons : trial.found,
                    .tested = std::move(trial.tested)};
  const bool isOthers = owner.isEveryones && own.hasUsersVariable;
  if (trial.found.empty() && (!own.isComplete || isOthers)) {
    addReason(evidence, Reason::UnknownVariable);
  }
  return evidence;
}

TextLook::Trial TextLook::tryText(const std::string& text, const TextOwner& owner, Reading reading,
                                  int depth) {
  if (kindOf(reading) == TextIs::Command && reading != Reading::Library) {
    const CommandParts parts = commandParts(text);
    if (const auto target = launchTarget(parts.program, parts.arguments)) {
      return tryTarget(*target, owner, depth + 1);
    }
  }
  Trial trial;
  const std::string_view whole = trim(text);
  const bool isQuoted = whole.starts_with('"');
  for (const std::string& one : fileReadings(text, kindOf(reading))) {
    // Only what stands between quotes, or all of the text, may be a folder.
    const bool isWhole = one == whole || (isQuoted && whole.substr(1).starts_with(one));
    tryReading(trial, one, owner, reading, isWhole ? Takes::FoldersToo : Takes::FilesOnly);
    if (!trial.found.empty()) {
      break;
    }
  }
  return trial;
}

// What a launcher opens. Whether the launcher itself is there does not count.
TextLook::Trial TextLook::tryTarget(const LaunchTarget& target, const TextOwner& owner, int depth) {
  Trial trial;
  trial.tested = {target.text};
  const auto decide = [&](bool isKnown, Reason reason) {
    isKnown ? trial.find(reason) : trial.note(Reason::NotRegistered);
  };
  switch (target.kind) {
    case TargetIs::Product:
      decide(products.isProduct(target.text), Reason::InstallerOnDemand);
      return trial;
    case TargetIs::ServiceGroup:
      decide(InstalledProducts::isServiceGroup(target.text), Reason::FoundBehindLauncher);
      return trial;
    case TargetIs::Application:
      decide(InstalledProducts::isApplication(target.text), Reason::FoundBehindLauncher);
      return trial;
    case TargetIs::Unclear:
      trial.tested.clear();
      trial.note(Reason::LauncherUnclear);
      return trial;
    default:
      break;
  }
  if (depth > deepestLauncher) {
    trial.note(Reason::LauncherUnclear);
    return trial;
  }
  const Reading reading = target.kind == TargetIs::Library ? Reading::Library : Reading::Command;
  Evidence evidence = look(target.text, owner, reading, depth);
  if (isFound(evidence)) {
    trial.find(Reason::FoundBehindLauncher);
  }
  trial.reasons = std::move(evidence.reasons);
  trial.tested = std::move(evidence.tested);
  return trial;
}

void TextLook::tryReading(Trial& trial, const std::string& text, const TextOwner& owner,
                          Reading reading, Takes takes) {
  std::string path = plainPath(text, windowsFolder());
  const auto judge = [&](Reason reason) {
    if (!trial.isJudged) {
      trial.note(reason);
      trial.isJudged = true;
    }
  };
  if (isOnDevice(path)) {
    judge(Reason::PlaceUnknown);
    return;
  }
  const bool hasDrive = isDrivePath(path);
  const bool isRemote =
      hasDrive ? files.drive(path.front()) == DriveIs::Remote : leadsToShare(path);
  if (isRemote && shares == Shares::Refused) {
    trial.note(Reason::Share);
    trial.isJudged = true;
    return;
  }
  if (isRemote) {
    tryShare(trial, path, takes);
    return;
  }
  if (isTemplate(path)) {
    judge(Reason::NotAPath);
    return;
  }
  // Without a drive it is most likely that of the system.
  if (path.size() > 1 && (path[0] == '\\' || path[0] == '/') && path[1] != '\\') {
    path.insert(0, windowsFolder().substr(0, 2));
    trial.note(Reason::PlaceUnknown);
  }
  if (isDrivePath(path)) {
    tryPath(trial, path, owner, reading, takes);
  } else if (path.find(':') == std::string::npos) {
    trySearch(trial, path, owner, reading);
  } else {
    judge(Reason::NotAPath);
  }
}

// Only where shares are asked.
void TextLook::tryShare(Trial& trial, const std::string& path, Takes takes) {
  addAll(trial.tested, {path});
  const FileIs answer = files.at(path);
  const bool isFolder = answer == FileIs::Folder && takes == Takes::FoldersToo;
  if (answer == FileIs::File || isFolder) {
    trial.find(Reason::Found);
  } else if (answer == FileIs::Missing || answer == FileIs::InMissingFolder) {
    trial.note(Reason::AbsentOnShare);
  } else {
    trial.note(Reason::Share);
  }
  trial.isJudged = true;
}

void TextLook::noteDrive(Trial& trial, const std::string& path) {
  switch (files.drive(path.front())) {
    case DriveIs::Absent:
      trial.note(Reason::DriveAbsent);
      break;
    case DriveIs::Removable:
      trial.note(Reason::DriveRemovable);
      break;
    default:
      break;
  }
}

void TextLook::tryPath(Trial& trial, const std::string& given, const TextOwner& owner,
                       Reading reading, Takes takes) {
  const std::string path = hasShortName(given) ? withLongNames(given) : given;
  const bool isFirst = !trial.isJudged;
  if (isFirst) {
    addAll(trial.tested, {path});
    noteDrive(trial, path);
  }
  if (files.drive(path.front()) == DriveIs::Absent) {
    trial.isJudged = true;
    return;
  }
  if (tryViews(trial, path, owner, takes)) {
    return;
  }
  if (!hasExtension(path) && files.at(path) != FileIs::InMissingFolder) {
    for (const std::string_view ending : endingsFor(reading)) {
      Trial extended;
      if (tryViews(extended, path + std::string(ending), owner, Takes::FilesOnly)) {
        trial.find(Reason::FoundWithExtension);
        addAll(trial.tested, extended.tested);
        return;
      }
    }
  }
  if (isFirst) {
    noteDoubts(trial, path, path == given);
  }
}

// What the path itself says against its being dead.
void TextLook::noteDoubts(Trial& trial, const std::string& path, bool isAsGiven) {
  if (isOfPackage(path)) {
    trial.note(Reason::PackagedApp);
  }
  if (isCachedByInstaller(path) && products.isProduct(guidIn(path))) {
    trial.note(Reason::InstallerOnDemand);
  }
  // One that could be looked up is as good as any other.
  if (isAsGiven && hasShortName(path)) {
    trial.note(Reason::ShortName);
  }
}

// Whether a path is there in its own view or in the other one. The first reading of a text says why
// it is not.
bool TextLook::tryViews(Trial& trial, const std::string& path, const TextOwner& owner,
                        Takes takes) {
  const bool isLong = path.size() > longestUsualPath && utf16(path).size() > longestUsualPath;
  for (const ViewPath& place : viewPaths(path, owner.view, windowsFolder())) {
    const FileIs answer = files.at(place.path);
    const bool isFolder = answer == FileIs::Folder && takes == Takes::FoldersToo;
    if (answer == FileIs::File || isFolder) {
      trial.find(place.isOwn ? Reason::Found : Reason::FoundInOtherView);
      addAll(trial.tested, {path});
      return true;
    }
    if (answer == FileIs::Denied) {
      trial.note(Reason::AccessDenied);
    } else if (answer == FileIs::BehindBrokenLink) {
      trial.note(Reason::ReparseBroken);
    } else if (!trial.isJudged && place.isOwn) {
      trial.note(Reason::Absent);
      if (answer == FileIs::InMissingFolder) {
        trial.note(Reason::ParentAbsent);
      }
      if (isLong) {
        trial.note(Reason::PathTooLong);
      }
      if (hasOpenSign(path)) {
        trial.note(Reason::UnknownVariable);
      }
    }
  }
  trial.isJudged = true;
  return false;
}

void TextLook::trySearch(Trial& trial, const std::string& name, const TextOwner& owner,
                         Reading reading) {
  std::vector<std::string> names{name};
  if (!hasExtension(name)) {
    for (const std::string_view ending : endingsFor(reading)) {
      names.push_back(name + std::string(ending));
    }
  }
  for (const std::string& one : names) {
    if (const auto path = searchPath.find(one, owner.user)) {
      trial.find(Reason::FoundOnPath);
      addAll(trial.tested, {*path});
      return;
    }
  }
  if (!trial.isJudged) {
    const bool isBare = name.find_first_of("\\/") == std::string::npos;
    addAll(trial.tested, {name});
    trial.note(Reason::Absent);
    trial.note(isBare ? Reason::BareName : Reason::PlaceUnknown);
    trial.isJudged = true;
  }
}

}  // namespace zelvreg
