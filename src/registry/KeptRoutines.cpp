#include "registry/KeptRoutines.h"

#include <array>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "keys/StdRegProv.h"
#include "keys/ValueData.h"
#include "registry/Hives.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "runtime/FileSystemObject.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using AtStop = SubkeyEnumerator::AtStop;

constexpr SubkeyEnumerator enumKeyno{.access = workOn32BitView,
                                     .list = &Form42::List1,
                                     .clearsFirst = false,
                                     .servesQueue = true,
                                     .repaintsTitle = true,
                                     .endsAfterFirst = false,
                                     .atStop = AtStop::LeavesAllOpen};

constexpr SubkeyEnumerator anyKeyIn(ListBox Form42::*list) {
  return {.access = workOn64BitView,
          .list = list,
          .clearsFirst = true,
          .servesQueue = false,
          .repaintsTitle = false,
          .endsAfterFirst = true,
          .atStop = AtStop::ClosesNames};
}

void listIniSection(const std::string& file, const std::string& section, std::string& pairs,
                    LONG& rc) {
  std::array<char16_t, 8192> buffer;
  const DWORD length = GetPrivateProfileSectionW(
      Wide(section).get(), roomIn(buffer), static_cast<DWORD>(buffer.size()), Wide(file).get());
  pairs = utf8({buffer.data(), length});
  rc = static_cast<LONG>(length);
}

// Appends "name=data" with its NUL for the types that have a text. The answer of the reading.
LONG appendPair(HKEY key, const std::string& name, DWORD type, DWORD size, std::string& pairs) {
  if (type == REG_SZ) {
    ValueData data;
    const LONG status = data.read(key, name);
    if (status == ERROR_SUCCESS) {
      pairs.append(name).append("=").append(utf8(data.units()));
    }
    return status;
  }
  if (type == REG_DWORD || (type == REG_BINARY && size < 3)) {
    Variant number;
    const LONG status = readNumber(key, name, number);
    if (status == ERROR_SUCCESS) {
      pairs.append(name).append("=").append(textOf(number)).push_back('\0');
    }
    return status;
  }
  return ERROR_SUCCESS;
}

// The code of the reading that failed, or success when the walk came to its end or was stopped.
LONG collectPairs(Form42& form, HKEY key, std::string& pairs) {
  for (DWORD index = 0; !isStopAsked(form); ++index) {
    std::array<char16_t, 2048> buffer;
    auto nameSize = static_cast<DWORD>(buffer.size());
    DWORD size = 2048;
    DWORD type = REG_NONE;
    if (RegEnumValueW(key, index, roomIn(buffer), &nameSize, nullptr, &type, nullptr, &size) !=
        ERROR_SUCCESS) {
      closeNameList(pairs);
      return ERROR_SUCCESS;
    }
    const std::string name = utf8({buffer.data(), nameSize});
    if (const LONG status = appendPair(key, name, type, size, pairs); status != ERROR_SUCCESS) {
      return status;
    }
    form.Label3.caption = name;
    form.Label3.refresh();
    if (!trim(name).empty()) {
      form.List1.add(trim(name));
    }
  }
  return ERROR_SUCCESS;
}

bool isHeaderOf(const std::string& line, const std::string& section) {
  return line.starts_with('[') && (contains(line, section + " ") || contains(line, section + "]"));
}

}  // namespace

void fEnumKeyno(Form42& form, const std::string& hive, const std::string& key, std::string& names,
                LONG& rc) {
  enumerateSubkeys(form, enumKeyno, HiveFromShortName(hive, sharesOf(form)), key, names, rc);
}

void fEnumKey5(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc) {
  const HiveHandle root = HiveFromShortName(hive, sharesOf(form));
  enumerateSubkeys(form, anyKeyIn(&Form42::List5), root, key, names, rc);
}

void fEnumKey6(Form42& form, const std::string& hive, const std::string& key, std::string& names,
               LONG& rc) {
  const HiveHandle root = HiveFromShortName(hive, sharesOf(form));
  enumerateSubkeys(form, anyKeyIn(&Form42::List6), root, key, names, rc);
}

void fEnumValue_old(Form42& form, const std::string& hive, const std::string& key,
                    std::string& pairs, LONG& rc) {
  const HiveHandle handle = HiveFromShortName(hive, sharesOf(form));
  if (handle == HiveHandle::Unknown) {
    rc = hiveRefused;
    return;
  }
  if (handle == HiveHandle::hINI) {
    listIniSection(hive, key, pairs, rc);
    return;
  }
  OpenKey open(handle, key, workOn64BitView);
  rc = open.openStatus();
  if (!open.isOpen()) {
    return;
  }
  rc = collectPairs(form, open.handle(), pairs);
  if (rc != ERROR_SUCCESS) {
    open.abandon();
    return;
  }
  rc = open.close();
}

void fReadIniFuzzy(const std::string& file, std::string& section, const std::string& key,
                   const std::string& fallback, std::string& result, LONG& rc, Shares shares) {
  result = fallback;
  rc = ERROR_FILE_NOT_FOUND;
  if (!mayBeOpened(file, shares)) {
    return;
  }
  const std::string wantedSection = upperCase(section);
  const std::string wantedKey = upperCase(key);
  std::string header;
  auto stream = fileSystemObject::TextStream::openTextFile(file);
  while (!stream.atEndOfStream()) {
    const std::string line = upperCase(trim(stream.readLine()));
    if (line.starts_with('[')) {
      if (!header.empty()) {
        return;
      }
      header = isHeaderOf(line, wantedSection) ? line : "";
    } else if (!header.empty() && line.starts_with(wantedKey) && contains(line, "=")) {
      result = line.substr(line.find('=') + 1);
      section = header.substr(1, header.find(']') - 1);
      rc = ERROR_SUCCESS;
      return;
    }
  }
}

bool DeleteKey3(HiveHandle hive, const std::string& key) {
  return RegDeleteKeyW(systemKey(hive), Wide(key).get()) == ERROR_SUCCESS;
}

void EnumerateKeys(Form42& form, HiveHandle hive, const std::string& key) {
  for (const std::string& name : subkeyNames(form, hive, key)) {
    EnumerateKeys(form, hive, key + "\\" + name);
  }
}

void test(Form42& form, const std::string& hive, const std::string& key, LONG& /*rc*/) {
  const HiveHandle root = HiveFromShortName(hive, sharesOf(form));
  valueNames(form, ProviderArchitecture::Bits64, root, key);
}

}  // namespace zelvreg
