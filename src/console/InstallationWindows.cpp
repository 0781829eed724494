#include <windows.h>

#include "console/Installation.h"
#include "runtime/Environment.h"
#include "text/Wide.h"

namespace zelvreg::console {

std::string programFile() { return modulePath(); }

std::string languageFolder() { return programFolder() + "\\lang"; }

std::vector<std::string> filesIn(const std::string& folder) {
  std::vector<std::string> names;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(wideText(utf16(folder + "\\*")), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return names;
  }
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      names.push_back(utf8(untilNul(found.cFileName)));
    }
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return names;
}

}  // namespace zelvreg::console
