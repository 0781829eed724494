#include "scanners/References.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "keys/OpenKey.h"
#include "registry/Hives.h"
#include "registry/RegistryValues.h"
#include "registry/setpermission.h"
#include "runtime/Directory.h"
#include "runtime/FileSystemObject.h"
#include "scan/Resolver.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "text/Wide.h"

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

bool namesMissingPath(Form42& form, std::string data) {
  if (!contains(data, ":\\")) {
    return false;
  }
  // The NUL of the resolved path counts as part of the name here.
  std::string path = GetPath(form, data);
  path = FilePath(path);
  // Both are asked in any case: the second one gives access to what is in a recycle bin.
  const bool isFolder = FolderExists(form, path);
  return !FileExists(form, path) && !isFolder;
}

bool hasDriveColon(std::string_view text) { return characterAt(text, 1) == U':'; }

bool endsInExe(std::string_view text) {
  constexpr std::string_view ending = ".exe";
  return lowerCase(lastCharacters(text, ending.size())) == ending;
}

std::string betweenQuotes(const std::string& text) {
  if (text.empty() || text.front() != '"') {
    return text;
  }
  const auto end = text.find('"', 1);
  return end == std::string::npos ? text : text.substr(1, end - 1);
}

std::string withoutQuotes(std::string_view text) { return replaceAll(text, "\"", ""); }

std::string cutAfterExtension(std::string text) {
  std::size_t first = std::string::npos;
  for (const std::string_view extension : extensions) {
    first = std::min(first, findIgnoringCase(text, extension));
  }
  if (first != std::string::npos) {
    text.resize(first + extensionLength);
  }
  return text;
}

std::string programOf(const std::string& command) {
  const bool isQuoted = !command.empty() && command.front() == '"';
  return isQuoted ? betweenQuotes(command) : cutAfterExtension(command);
}

std::string defaultValueOf(HiveHandle hive, const std::string& key) {
  return textOf(GetRegistryValue(hive, key, "").value);
}

void grantCurrentUser(Form42& form, HiveHandle hive, const std::string& key) {
  if (form.safeguards.touches) {
    GrantKeyAccess(form, hive, key, processAccount());
    return;
  }
  // As if the rights had been given: the user would have access to a key that exists.
  const LONG status = OpenKey(hive, key, KEY_QUERY_VALUE | KEY_WOW64_64KEY).openStatus();
  form.GrantKeyStatus = status == ERROR_SUCCESS || status == ERROR_ACCESS_DENIED ? 0 : 1;
}

void setArchiveOnly(const Form42& form, const std::string& path) {
  if (form.safeguards.touches && mayBeOpened(path, sharesOf(form))) {
    SetFileAttributesW(Wide(path).get(), FILE_ATTRIBUTE_ARCHIVE);
  }
}

bool isListedWhenUnhidden(const Form42& form, const std::string& text) {
  setArchiveOnly(form, text);
  const std::string path = resolvedPath(form, text);
  if (!Dir(path, sharesOf(form)).empty()) {
    return true;
  }
  // As if the attributes had been removed. They are set by the text as it is, so a file that only
  // the resolved text names keeps them.
  return !form.safeguards.touches && lowerCase(path) == lowerCase(text) &&
         fileSystemObject::fileExists(path, sharesOf(form));
}

}  // namespace zelvreg
