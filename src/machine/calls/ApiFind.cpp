// The Windows calls that search a folder, and the one that names the program's own file.
#include <sys/stat.h>
#include <windows.h>

#include <array>
#include <optional>

#include "machine/Machine.h"
#include "machine/base/CaseFold.h"
#include "machine/calls/ApiSupport.h"
#include "machine/calls/FileAccess.h"
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
  data.dwFileAttributes = attributesAt(machine, place);
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

// The file of one name in a folder; none for a link that leads nowhere, and for what is neither a
// file nor a folder.
std::optional<WIN32_FIND_DATAW> describe(const Machine& machine, const Place& folder,
                                         const ListedName& listed) {
  Place place = folder;
  place.isFolder = listed.kind == NameKind::Folder;
  place.file = folder.file + "/" + listed.name;
  if (listed.kind == NameKind::Link) place = machine.drives().findTrue(utf16(place.path()));
  if (listed.kind == NameKind::Other || !place.exists()) return std::nullopt;
  return describe(machine, place, utf16(listed.name));
}

// The next file that fits; none after the last one. Every folder but a drive's root begins with
// itself and the one above.
std::optional<WIN32_FIND_DATAW> takeNext(const Machine& machine, OpenSearch& search) {
  constexpr std::array<std::u16string_view, 2> selves{u".", u".."};
  const Place& folder = search.folder;
  const bool isRoot = folder.file.size() == folder.rootSize;
  while (search.next < selves.size() + search.names->size()) {
    const std::size_t next = search.next++;
    if (next < selves.size()) {
      if (!isRoot && fitsPattern(selves[next], search.pattern)) {
        return describe(machine, folder, selves[next]);
      }
      continue;
    }
    const ListedName& listed = (*search.names)[next - selves.size()];
    if (!fitsPattern(listed.upper, search.pattern)) continue;
    if (auto found = describe(machine, folder, listed)) return found;
  }
  return std::nullopt;
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
  OpenSearch search{folder, upperCase(withoutEnd(namePattern)), machine->drives().namesIn(folder)};
  const auto first = takeNext(*machine, search);
  if (!first) return failedSearch(ERROR_FILE_NOT_FOUND);
  *data = *first;
  return machine->openFiles().add(std::move(search));
}

BOOL FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  OpenSearch* search = machine->openFiles().search(find);
  if (search == nullptr) return failed(ERROR_INVALID_HANDLE);
  const auto found = takeNext(*machine, *search);
  if (!found) return failed(ERROR_NO_MORE_FILES);
  *data = *found;
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
