#include "search/DeadPath.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cctype>

#include "form/Form42.h"
#include "registry/RegistryValues.h"
#include "scan/Resolver.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr std::array<std::string_view, 18> programExtensions{
    "exe", "com", "bat", "cmd", "scr", "pif", "dll", "ocx", "cpl",
    "sys", "drv", "msc", "msi", "vbs", "js",  "wsf", "hta", "ps1"};

bool isProgramExtension(std::string_view extension) {
  return std::ranges::find(programExtensions, extension) != programExtensions.end();
}

// What is not ASCII counts as a letter.
bool isLetter(unsigned char byte) { return byte >= 0x80 || std::isalpha(byte) != 0; }

bool isLetterOrDigit(unsigned char byte) { return isLetter(byte) || std::isdigit(byte) != 0; }

bool hasDriveLetter(std::string_view text) { return characterAt(text, 1) == U':'; }

// The letters and digits after a dot.
std::string_view extensionAt(std::string_view text, std::size_t dot) {
  const std::string_view rest = text.substr(dot + 1);
  const auto* const end = std::ranges::find_if_not(rest, isLetterOrDigit);
  return rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
}

// A switch may follow without a blank, and the next file of a list after a semicolon.
bool endsName(std::string_view text, std::size_t position) {
  return position >= text.size() || text[position] == ' ' || text[position] == '/' ||
         text[position] == ';';
}

// A number after a dot is a version, as in a folder's name.
bool holdsLetter(std::string_view text) { return std::ranges::any_of(text, isLetter); }

// Without what follows a blank after the extension at the last dot.
std::string_view untilBlankAfterLastDot(std::string_view text) {
  const auto dot = text.rfind('.');
  if (dot == std::string_view::npos) {
    return text;
  }
  const auto blank = text.find(' ', dot);
  const std::string_view extension = text.substr(dot + 1, blank - dot - 1);
  const bool isCut = blank != std::string_view::npos && holdsLetter(extension) &&
                     extension.find('\\') == std::string_view::npos;
  return isCut ? text.substr(0, blank) : text;
}

// To ask for a file may give access to the folder that it is, so that is asked for anew. A folder
// on a removable drive counts as there whatever the second answer.
bool isThereOnceTouched(Form42& form, const std::string& path) {
  if (FolderExists(form, path)) {
    const std::string drive = std::string(firstCharacters(path, 1)) + ":\\";
    if (comesAndGoes(GetDriveTypeW(Wide(drive).get())) || form.cancelRequested) {
      return true;
    }
  }
  return FileExists(form, path) || FolderExists(form, path);
}

}  // namespace

std::string resolvedValue(const Form42& form, HiveHandle root, const std::string& key,
                          const std::string& valueName) {
  return resolvedText(form, textOf(GetRegistryValue(root, key, valueName).value));
}

std::string resolvedText(const Form42& form, std::string text) {
  const std::string path = GetPath(form, text);
  return std::string(trim(lowerCase(untilNul(path))));
}

std::string_view betweenFirstQuotes(std::string_view text) {
  return text.starts_with('"') ? split(text, "\"")[1] : text;
}

std::string withoutQuotesAndIndex(std::string_view value) {
  const std::string_view path = betweenFirstQuotes(value);
  return replaceAll(path.substr(0, path.find(',')), "\"", "");
}

bool isTestablePath(std::string_view text) {
  constexpr std::size_t farthestMark = 4;
  const std::string_view marks = withoutLast(lastCharacters(text, farthestMark), 1);
  return !contains(marks, "^") && hasDriveLetter(text) && !text.ends_with("cur") &&
         !text.ends_with("ani");
}

std::string_view programOf(std::string_view commandLine) {
  for (auto dot = commandLine.find('.'); dot != std::string_view::npos;
       dot = commandLine.find('.', dot + 1)) {
    const std::string_view extension = extensionAt(commandLine, dot);
    const std::size_t end = dot + 1 + extension.size();
    if (isProgramExtension(extension) && endsName(commandLine, end)) {
      return commandLine.substr(0, end);
    }
  }
  return untilBlankAfterLastDot(commandLine);
}

bool comesAndGoes(unsigned driveType) {
  return driveType == DRIVE_REMOVABLE || driveType == DRIVE_REMOTE || driveType == DRIVE_CDROM;
}

bool isDeadPath(Form42& form, const std::string& path) {
  const bool isThere = form.safeguards.touches ? isThereOnceTouched(form, path)
                                               : FileExists(form, path) || FolderExists(form, path);
  return !isThere && !contains(path, "}") && hasDriveLetter(path);
}

}  // namespace zelvreg
