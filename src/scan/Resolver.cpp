#include "scan/Resolver.h"

#include <windows.h>

#include "form/Form42.h"
#include "keys/DirectText.h"
#include "registry/Hives.h"
#include "registry/setpermission.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "text/Characters.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::string_view driveRoot = ":\\";
constexpr std::size_t longestExtension = 3;

// All parts but the last, with their dots. A part that is empty so far is left out with its dot.
std::string stemOf(const std::vector<std::string_view>& parts) {
  std::string stem;
  for (std::size_t index = 0; index + 1 < parts.size(); ++index) {
    if (!stem.empty()) {
      stem += '.';
    }
    stem += parts[index];
  }
  return stem;
}

// The last part without what is attached to it: an argument after a blank, more than three letters.
std::string_view extensionOf(const std::vector<std::string_view>& parts) {
  if (parts.empty()) {
    return {};
  }
  const std::string_view extension = parts.back().substr(0, parts.back().find(' '));
  return firstCharacters(extension, longestExtension);
}

// Without what precedes the drive letter, such as the name of a launcher.
std::string fromDriveLetter(std::string path) {
  const auto colon = path.find(driveRoot);
  if (colon != std::string::npos && colon > 0) {
    path.erase(0, withoutLast(std::string_view(path).substr(0, colon), 1).size());
  }
  return path;
}

void replaceInPlace(std::string& text, std::string_view from, std::string_view to) {
  for (auto found = text.find(from); found != std::string::npos;
       found = text.find(from, found + to.size())) {
    text.replace(found, from.size(), to);
  }
}

// What GetPath does, without regard to what it has done before.
std::string pathIn(const Form42& form, std::string& path) {
  if (form.Is64BitOS) {
    path = lowerCase(path);
    replaceInPlace(path, "system32", "Sysnative");
    if (!contains(path, "program files (x86)")) {
      replaceInPlace(path, "%programfiles%", "%ProgramW6432%");
    }
    if (contains(path, "program files\\")) {
      const std::string windows = lowerCase(environmentVariable("WINDIR"));
      replaceInPlace(path, std::string(firstCharacters(windows, 3)) + "program files\\",
                     "%ProgramW6432%\\");
    }
    replaceInPlace(path, "%commonprogramfiles%", "%ProgramW6432%\\Common Files");
  }
  return expandedText(path);
}

// A table forgets everything when it has grown as large as it may.
template <typename Answer, typename Ask>
const Answer& answered(TextTable<Answer>& table, const HashedText& question, const Ask& ask) {
  constexpr std::size_t mostAnswers = 32768;
  if (const Answer* known = table.find(question)) {
    return *known;
  }
  if (table.size() >= mostAnswers) {
    table.forget();
  }
  return table.add(question, ask());
}

fileSystemObject::Answer answerFor(const Form42& form, const std::string& path) {
  if (form.memory == nullptr) {
    return fileSystemObject::ask(path, sharesOf(form));
  }
  return answered(form.memory->files, HashedText(untilNul(path)),
                  [&] { return fileSystemObject::ask(path, sharesOf(form)); });
}

}  // namespace

MemoryOfScan::MemoryOfScan(Form42& formInUse) : form(formInUse) {
  if (!form.safeguards.touches) {
    form.memory = std::make_unique<ScanMemory>();
  }
}

MemoryOfScan::~MemoryOfScan() { form.memory.reset(); }

std::string FilePath(std::string& text) {
  const auto betweenQuotes = split(text, "\"");
  if (betweenQuotes.size() > 1) {
    text = std::string(betweenQuotes[1]);
  }
  const auto backslash = text.rfind('\\');
  const std::size_t nameStart = backslash == std::string::npos ? 0 : backslash + 1;
  std::string name = lowerCase(std::string_view(text).substr(nameStart));
  name.resize(std::min(name.find(','), name.size()));
  const auto parts = split(name, ".");
  if (parts.size() == 1) {
    return text;
  }
  std::string candidate = text.substr(0, nameStart);
  candidate.append(stemOf(parts)).append(".").append(extensionOf(parts));
  return fromDriveLetter(std::move(candidate));
}

std::string GetPath(const Form42& form, std::string& path) {
  if (form.memory == nullptr) {
    return pathIn(form, path);
  }
  const std::string given = path;
  const ResolvedText& resolved = answered(form.memory->texts, HashedText(given), [&] {
    std::string expanded = pathIn(form, path);
    return ResolvedText{path, std::move(expanded)};
  });
  path = resolved.text;
  return resolved.path;
}

bool FileExists(Form42& form, std::string path) {
  ++form.filesAsked;
  // Where nothing is given, only the path changes.
  const Rights rights = form.safeguards.touches ? Rights::Given : Rights::Left;
  if (rights == Rights::Left || mayBeOpened(path, sharesOf(form))) {
    changepermission(path, rights);
  }
  // The file system is asked first, also about what is in the system folder anyway.
  return answerFor(form, path).isFile || containsIgnoringCase(path, "system32");
}

bool FolderExists(const Form42& form, const std::string& path) {
  return answerFor(form, path).isFolder;
}

void pth(Form42& form, std::string& rule) {
  constexpr std::string_view marker = "|app=";
  constexpr std::size_t startWithout = 4;
  rule = lowerCase(rule);
  const std::size_t found = rule.find(marker);
  // Without the marker its position is 0, so that the path begins at the fifth character.
  const std::string_view path = found == std::string::npos
                                    ? afterCharacters(rule, startWithout)
                                    : std::string_view(rule).substr(found + marker.size());
  const std::size_t end = path.find('|');
  // Without a bar the length is below 0: the cut fails, and the path of the rule before stays.
  if (end != std::string_view::npos) {
    form.FirewallPath = path.substr(0, end);
  }
  if (!contains(form.FirewallPath, "\\")) {
    form.FirewallPath.clear();
  }
}

std::int16_t getIco(std::int16_t kind) {
  switch (kind) {
    case 1:
    case 2:
      return 2;
    case 3:
    case 4:
      return 3;
    default:
      return 0;
  }
}

bool runsOn64BitWindows() {
  BOOL isWow64 = FALSE;
  return IsWow64Process(GetCurrentProcess(), &isWow64) != FALSE && isWow64 != FALSE;
}

}  // namespace zelvreg
