// The Windows calls on profile (INI) files.
#include <windows.h>

#include <algorithm>
#include <charconv>

#include "machine/Machine.h"
#include "machine/base/AtomicFile.h"
#include "machine/base/CodePage.h"
#include "machine/base/MachineError.h"
#include "machine/calls/ApiSupport.h"
#include "machine/calls/FileAccess.h"
#include "machine/computer/ProfileFile.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

// A file named without a folder lies in the Windows folder.
Place placeOf(const Machine& machine, LPCWSTR file) {
  const std::u16string_view text = textOf(file);
  const bool namesFolder = text.find_first_of(u"\\/:") != std::u16string_view::npos;
  Drives& drives = machine.drives();
  return drives.find(namesFolder ? std::u16string(text)
                                 : drives.windowsFolder() + u"\\" + std::u16string(text));
}

// The file's content; one that cannot be read counts as empty, and the last error says why.
ProfileFile read(const Machine& machine, const Place& place) {
  std::string content;
  LONG error = place.error;
  if (place.exists() && (place.isFolder || grantedOn(machine, place.path(), GENERIC_READ) == 0)) {
    error = ERROR_ACCESS_DENIED;
  }
  if (error == ERROR_SUCCESS) {
    try {
      content = readWholeFile(place.file);
    } catch (const MachineError&) {
      error = ERROR_ACCESS_DENIED;
    }
  }
  failed(error);
  return {content, machine.codePage()};
}

std::u16string_view withoutBlanksBehind(std::u16string_view text) {
  return text.substr(0, text.find_last_not_of(u" \t") + 1);
}

std::u16string_view withoutQuotes(std::u16string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == u'"' || text.front() == u'\'');
  return quoted ? text.substr(1, text.size() - 2) : text;
}

// Cuts a text that is too long so that its NUL fits.
DWORD giveCut(std::u16string_view text, LPWSTR buffer, DWORD size) {
  if (buffer == nullptr || size == 0) return 0;
  return giveText(text.substr(0, size - 1), buffer, size);
}

// Texts, each followed by a NUL, and one more NUL at the end. Cut, the list still ends in two.
DWORD giveList(const std::vector<std::u16string>& texts, LPWSTR buffer, DWORD size) {
  if (buffer == nullptr || size == 0) return 0;
  std::u16string list;
  for (const std::u16string& text : texts) list.append(text).push_back(u'\0');
  if (list.empty()) list.push_back(u'\0');
  const bool whole = list.size() + 1 <= size;
  std::fill_n(buffer, std::min<std::size_t>(size, 2), u'\0');
  if (whole) {
    std::copy_n(list.c_str(), list.size() + 1, buffer);
    return texts.empty() ? 0 : static_cast<DWORD>(list.size());
  }
  if (size < 2) return 0;
  std::copy_n(list.data(), size - 2, buffer);
  buffer[size - 2] = buffer[size - 1] = u'\0';
  return size - 2;
}

// Whether the file may be written, if need be made. ERROR_SUCCESS or the answer.
LONG mayWrite(const Machine& machine, const Place& place) {
  if (!place.exists()) return mayMake(machine, place, fileWriteData);
  const DWORD attributes = attributesAt(machine, place);
  if (place.isFolder || (attributes & FILE_ATTRIBUTE_READONLY) != 0) return ERROR_ACCESS_DENIED;
  const bool granted = grantedOn(machine, place.path(), GENERIC_READ | GENERIC_WRITE) != 0;
  return granted ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

BOOL write(const Machine& machine, const Place& place, const ProfileFile& profile) {
  try {
    replaceFile(place.file, profile.content());
  } catch (const MachineError&) {
    return failed(ERROR_ACCESS_DENIED);
  }
  if (!place.exists()) wasMade(machine, place, false, nullptr);
  return TRUE;
}

// Decimal with a sign, or hexadecimal after "0x"; what does not begin with a number is 0.
UINT numberIn(std::u16string_view wide) {
  const std::string narrow = utf8(wide);
  std::string_view text = narrow;
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  if (hex) text.remove_prefix(2);
  std::uint64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number, hex ? 16 : 10);
  const auto kept = static_cast<UINT>(number);
  return negative ? 0U - kept : kept;
}

}  // namespace

extern "C" {

DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR file) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  if (const auto fault = machine->faults().next(ApiCall::PrivateProfile)) {
    failed(*fault);
    return 0;
  }
  if (section == nullptr || file == nullptr) {
    failed(ERROR_INVALID_PARAMETER);
    return 0;
  }
  return giveList(read(*machine, placeOf(*machine, file)).entries(section), buffer, size);
}

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR fallback, LPWSTR buffer,
                               DWORD size, LPCWSTR file) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  const std::u16string_view otherwise = withoutBlanksBehind(textOf(fallback));
  if (const auto fault = machine->faults().next(ApiCall::PrivateProfile)) {
    failed(*fault);
    return giveCut(otherwise, buffer, size);
  }
  const ProfileFile profile = read(*machine, placeOf(*machine, file));
  if (section == nullptr) return giveList(profile.sections(), buffer, size);
  if (key == nullptr) return giveList(profile.keys(section), buffer, size);
  const auto value = profile.value(section, key);
  return giveCut(value ? withoutQuotes(*value) : otherwise, buffer, size);
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, int fallback, LPCWSTR file) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return static_cast<UINT>(fallback);
  if (const auto fault = machine->faults().next(ApiCall::PrivateProfile)) {
    failed(*fault);
    return static_cast<UINT>(fallback);
  }
  if (section == nullptr || key == nullptr) return static_cast<UINT>(fallback);
  const auto value = read(*machine, placeOf(*machine, file)).value(section, key);
  return value ? numberIn(withoutQuotes(*value)) : static_cast<UINT>(fallback);
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR text, LPCWSTR file) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (const auto fault = machine->faults().next(ApiCall::PrivateProfile)) return failed(*fault);
  // Without a section the call only writes out what is kept back; nothing is.
  if (section == nullptr) return FALSE;
  const Place place = placeOf(*machine, file);
  const LONG refusal = mayWrite(*machine, place);
  if (refusal != ERROR_SUCCESS) return failed(refusal);
  ProfileFile profile = read(*machine, place);
  if (key == nullptr) {
    profile.removeSection(section);
  } else if (text == nullptr) {
    profile.removeKey(section, key);
  } else {
    profile.set(section, key, text);
  }
  return write(*machine, place, profile);
}
}
