// The Windows calls that search a folder, and the one that names the program's own file.
#include <sys/stat.h>
#include <windows.h>

#include "machine/Machine.h"
#include "machine/base/CaseFold.h"
#include "machine/calls/ApiSupport.h"
#include "machine/files/Drives.h"
#include "machine/files/NamePattern.h"
#include "machine/files/OpenFiles.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

HANDLE failedSearch(LONG code) {
  failed(code);
  return INVALID_HANDLE_VALUE;
}

// Windows counts 100 nanoseconds from the year 1601.
FILETIME fileTime(const timespec& time) {
  constexpr std::uint64_t secondsTo1970 = 11644473600;
  const auto seconds = static_cast<std::uint64_t>(time.tv_sec) + secondsTo1970;
  const std::uint64_t ticks = seconds * 10000000 + static_cast<std::uint64_t>(time.tv_nsec) / 100;
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

WIN32_FIND_DATAW describe(const Machine& machine, const Place& place, std::u16string_view name) {
  WIN32_FIND_DATAW data{};
  data.dwFileAttributes = machine.drives().records().attributes(place.path(), place.isFolder);
  struct stat status {};
  if (stat(place.file.c_str(), &status) == 0) {
    const auto size = place.isFolder ? 0 : static_cast<std::uint64_t>(status.st_size);
    data.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    data.nFileSizeLow = static_cast<DWORD>(size);
    data.ftLastWriteTime = fileTime(status.st_mtim);
    data.ftLastAccessTime = fileTime(status.st_atim);
    data.ftCreationTime = data.ftLastWriteTime;
  }
  giveText(name.substr(0, MAX_PATH - 1), data.cFileName, MAX_PATH);
  return data;
}

// What of a folder fits the pattern, in name order. Every folder but a drive's root begins with
// itself and the one above.
OpenSearch search(const Machine& machine, const Place& folder, std::u16string_view pattern) {
  Drives& drives = machine.drives();
  const std::u16string wanted = upperCase(pattern);
  OpenSearch result;
  for (const std::u16string_view self : {u".", u".."}) {
    const bool isRoot = folder.file.size() == folder.rootSize;
    if (!isRoot && fitsPattern(self, wanted))
      result.found.push_back(describe(machine, folder, self));
  }
  // A copy: following a link may list the folder anew.
  const std::vector<ListedName> names = drives.namesIn(folder);
  for (const ListedName& listed : names) {
    if (!fitsPattern(listed.upper, wanted)) continue;
    Place place = folder;
    place.isFolder = listed.kind == NameKind::Folder;
    place.file = folder.file + "/" + listed.name;
    if (listed.kind == NameKind::Link) place = drives.findTrue(utf16(place.path()));
    if (listed.kind == NameKind::Other || !place.exists()) continue;
    result.found.push_back(describe(machine, place, utf16(listed.name)));
  }
  return result;
}

}  // namespace

extern "C" {

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return INVALID_HANDLE_VALUE;
  if (const auto fault = machine->faults().next(ApiCall::FindFirstFile)) {
    return failedSearch(*fault);
  }
  std::u16string_view folderText = textOf(pattern);
  const std::u16string_view namePattern = takeLastPart(folderText);
  if (namePattern.empty()) return failedSearch(ERROR_FILE_NOT_FOUND);
  const Place folder = machine->drives().find(folderText.empty() ? u"." : folderText);
  if (!folder.exists() || !folder.isFolder) {
    return failedSearch(folder.canBeMade() ? ERROR_PATH_NOT_FOUND : folder.error);
  }
  OpenSearch found = search(*machine, folder, withoutEnd(namePattern));
  if (found.found.empty()) return failedSearch(ERROR_FILE_NOT_FOUND);
  *data = found.found[found.next++];
  return machine->openFiles().add(std::move(found));
}

BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  OpenSearch* search = machine->openFiles().search(find);
  if (search == nullptr) return failed(ERROR_INVALID_HANDLE);
  if (search->next == search->found.size()) return failed(ERROR_NO_MORE_FILES);
  *data = search->found[search->next++];
  return TRUE;
}

BOOL FindClose(HANDLE find) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  return machine->openFiles().closeSearch(find) ? TRUE : failed(ERROR_INVALID_HANDLE);
}

DWORD GetModuleFileNameW(HMODULE, LPWSTR path, DWORD size) {
  const Machine* machine = machineInForce();
  if (machine == nullptr || path == nullptr || size == 0) return 0;
  const std::u16string file = machine->drives().programFolder() + u"\\zelvreg.exe";
  if (file.size() < size) return giveText(file, path, size);
  giveText(file.substr(0, size - 1), path, size);
  failed(ERROR_INSUFFICIENT_BUFFER);
  return size;
}
}
