#include "scanners/References.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "registry/Permissions.h"
#include "registry/RegistryValues.h"
#include "runtime/Environment.h"
#include "scan/Resolver.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::array<std::string_view, 4> extensions{"exe", "dll", "ovl", "ocx"};
constexpr std::size_t extensionLength = 3;

}  // namespace

std::string resolvedPath(const Form42& form, std::string text) {
  std::string path = GetPath(form, text);
  path.resize(untilNul(path).size());
  return path;
}

bool namesMissingPath(const Form42& form, std::string data) {
  if (!contains(data, ":\\")) {
    return false;
  }
  // The cut sees the NUL of the resolved path as a part of the name.
  std::string path = GetPath(form, data);
  path = FilePath(path);
  // Both are asked in any case: the second one opens what lies in a recycle bin.
  const bool isFolder = FolderExists(path);
  return !FileExists(path) && !isFolder;
}

bool hasDriveColon(std::string_view text) { return text.size() > 1 && text[1] == ':'; }

bool endsInExe(std::string_view text) {
  constexpr std::string_view ending = ".exe";
  return text.size() >= ending.size() &&
         lowerCase(text.substr(text.size() - ending.size())) == ending;
}

std::string betweenQuotes(const std::string& text) {
  if (text.empty() || text.front() != '"') {
    return text;
  }
  const auto end = text.find('"', 1);
  return end == std::string::npos ? text : text.substr(1, end - 1);
}

std::string withoutQuotes(std::string_view text) { return replaceAll(text, "\"", ""); }

std::string cutBehindExtension(std::string text) {
  const std::string lower = lowerCase(text);
  std::size_t first = std::string::npos;
  for (const std::string_view extension : extensions) {
    first = std::min(first, lower.find(extension));
  }
  if (first != std::string::npos) {
    text.resize(first + extensionLength);
  }
  return text;
}

std::string programOf(const std::string& command) {
  const bool isQuoted = !command.empty() && command.front() == '"';
  return isQuoted ? betweenQuotes(command) : cutBehindExtension(command);
}

std::string defaultValueOf(HiveHandle hive, const std::string& key) {
  return textOf(GetRegistryValue(hive, key, "").value);
}

void grantCurrentUser(Form42& form, HiveHandle hive, const std::string& key) {
  GrantKeyAccess(form, hive, key, environmentVariable("UserName"));
}

void setArchiveOnly(const std::string& path) {
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_ARCHIVE);
}

}  // namespace zelvreg
