#include "evidence/SearchPath.h"

#include <algorithm>
#include <array>

#include "evidence/CommandText.h"
#include "evidence/ViewPaths.h"
#include "runtime/Environment.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Below the folder of Windows. A 32-bit process reaches the 64-bit system folder by its other name.
constexpr std::array systemFolders{"\\Sysnative", "\\SysWOW64", "\\System32", "\\System", ""};

struct ProgramList {
  HiveHandle root;
  const char16_t* key;
};
constexpr std::array programLists{
    ProgramList{HiveHandle::LocalMachine,
                u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"},
    ProgramList{HiveHandle::LocalMachine,
                u"SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"},
    ProgramList{HiveHandle::CurrentUser,
                u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"},
};

std::string textIn(HiveHandle root, const std::u16string& key, const std::u16string& name) {
  const auto value = valueAt(root, key, name);
  return value ? textOf(*value) : std::string();
}

}  // namespace

FileIs SearchPath::ask(const std::string& path) {
  if (!isDrivePath(path)) {
    return FileIs::Missing;
  }
  const DriveIs drive = files.drive(path.front());
  return drive == DriveIs::Fixed || drive == DriveIs::Removable ? files.at(path) : FileIs::Missing;
}

bool SearchPath::isFile(const std::string& path) { return ask(path) == FileIs::File; }

bool SearchPath::isFolder(const std::string& path) { return ask(path) == FileIs::Folder; }

const std::vector<std::string>& SearchPath::foldersOf(const std::u16string& owner) {
  const auto [entry, isNew] = folders.try_emplace(owner);
  std::vector<std::string>& list = entry->second;
  if (!isNew) {
    return list;
  }
  const auto windows = variables.value("windir", {}, ProgramView::Bits64);
  for (const char* folder : systemFolders) {
    if (windows) {
      list.push_back(*windows + folder);
    }
  }
  // The user's own variable, the process's, and the computer's, which the user's comes before.
  std::string path = variables.value("path", owner, ProgramView::Bits64).value_or("") + ";" +
                     (owner.empty() ? environmentVariable("PATH") + ";" : "") +
                     textIn(HiveHandle::LocalMachine, computersVariables, u"Path");
  path = variables.expand(path, owner, ProgramView::Bits64).text;
  for (const std::string_view folder : split(path, ";")) {
    std::string plain(trim(replaceAll(folder, "\"", "")));
    if (!isDrivePath(plain)) {
      continue;
    }
    for (const ViewPath& place : viewPaths(plain, ProgramView::Bits64, windows.value_or(""))) {
      const bool isKnown = std::ranges::find(list, place.path) != list.end();
      if (!isKnown && isFolder(place.path)) {
        list.push_back(place.path);
      }
    }
  }
  return list;
}

std::optional<std::string> SearchPath::findInLists(const std::string& name,
                                                   const std::u16string& owner) {
  for (const ProgramList& list : programLists) {
    std::string text = textIn(list.root, list.key + utf16(name), u"");
    text = variables.expand(replaceAll(text, "\"", ""), owner, ProgramView::Bits64).text;
    text = trim(text);
    const std::string windows =
        variables.value("windir", {}, ProgramView::Bits64).value_or(std::string());
    for (const ViewPath& place : viewPaths(text, ProgramView::Bits64, windows)) {
      if (isFile(place.path)) {
        return text;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::string> SearchPath::find(const std::string& name, const std::u16string& owner) {
  auto& ofOwner = known[owner];
  const auto found = ofOwner.find(name);
  if (found != ofOwner.end()) {
    return found->second;
  }
  std::optional<std::string> answer;
  for (const std::string& folder : foldersOf(owner)) {
    const std::string path = folder + "\\" + name;
    if (isFile(path)) {
      answer = path;
      break;
    }
  }
  if (!answer && name.find_first_of("\\/") == std::string::npos) {
    answer = findInLists(name, owner);
  }
  ofOwner.emplace(name, answer);
  return answer;
}

}  // namespace zelvreg
