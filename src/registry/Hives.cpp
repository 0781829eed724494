#include "registry/Hives.h"

#include <array>
#include <charconv>

#include "form/Form42.h"
#include "keys/OpenKey.h"
#include "keys/RootHandles.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

// What the settings' reader makes of a number: hexadecimal text of each byte, last to first, with
// no leading zero, after the text that `result` held.
std::string decimalOfBytes(std::string result, std::string_view bytes) {
  for (std::size_t position = bytes.size(); position-- > 0;) {
    std::array<char, 2> digits{};
    const auto byte = static_cast<unsigned char>(bytes[position]);
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<unsigned>(byte), 16);
    result.append(digits.data(), end.ptr);
  }
  std::uint32_t number = 0;
  const char* last = result.data() + result.size();
  const auto parsed = std::from_chars(result.data(), last, number, 16);
  if (parsed.ec != std::errc() || parsed.ptr != last) {
    return "&h" + result;  // no number: the format leaves the text as it is
  }
  return decimal(static_cast<std::int32_t>(number));
}

bool setValue(Form42& form, std::string fullKey, const std::string& valueName, DWORD type,
              const void* data, std::size_t size) {
  auto hive = static_cast<HiveHandle>(form.parsedHive);
  ParseKey(form.dialogs, fullKey, hive);
  form.parsedHive = static_cast<std::uint32_t>(hive);
  if (hive == HiveHandle::Unknown) {
    return false;
  }
  const OpenKey key(hive, fullKey, writeOn32BitView, ClassesOf::User);
  return key.isOpen() &&
         RegSetValueExW(key.handle(), Wide(valueName).get(), 0, type,
                        static_cast<const BYTE*>(data), static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

Shares sharesOf(const Form42& form) {
  return form.safeguards.asksShares ? Shares::Asked : Shares::Refused;
}

void ParseKey(const Dialogs& dialogs, std::string& key, HiveHandle& hive) {
  if (!key.starts_with("HKEY_") || key.ends_with('\\')) {
    dialogs.tell("Incorrect Format:\n\n" + key);
    return;
  }
  const auto backslash = key.find('\\');
  hive = GetHiveHandle(key.substr(0, backslash));
  key = backslash == std::string::npos ? std::string() : key.substr(backslash + 1);
}

bool GetRegString(HiveHandle hive, const std::string& key, const std::string& valueName,
                  std::string& result) {
  const OpenKey open(hive, key, settingsAccess);
  std::array<char16_t, 1024> buffer;
  DWORD size = sizeof buffer;
  DWORD type = REG_NONE;
  if (!open.isOpen() ||
      RegQueryValueExW(open.keyOf(valueName), Wide(valueName).get(), nullptr, &type,
                       reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS) {
    result.clear();
    return false;
  }
  if (type == REG_SZ) {
    std::u16string_view text(buffer.data(), size / sizeof(char16_t));
    text.remove_suffix(text.ends_with(u'\0') ? 1 : 0);
    result = utf8(text);
  } else if (type == REG_DWORD) {
    std::string_view bytes(reinterpret_cast<const char*>(buffer.data()), size);
    bytes.remove_suffix(bytes.ends_with('\0') ? 1 : 0);
    result = decimalOfBytes(result, bytes);
  }
  return true;
}

bool SaveRegString(HiveHandle hive, const std::string& key, const std::string& valueName,
                   const std::string& data) {
  // The class text and the record's length are what this program has always passed.
  std::u16string className = u"1";
  SECURITY_ATTRIBUTES attributes{};
  attributes.nLength = 50;
  attributes.bInheritHandle = TRUE;
  HKEY made = nullptr;
  DWORD disposition = 0;
  if (RegCreateKeyExW(systemKey(hive), Wide(key).get(), 0, roomIn(className),
                      REG_OPTION_NON_VOLATILE, settingsAccess, &attributes, &made,
                      &disposition) != ERROR_SUCCESS) {
    return false;
  }
  // The terminator is not counted; the system adds it.
  const std::u16string units = utf16(data);
  const LONG written = RegSetValueExW(made, Wide(valueName).get(), 0, REG_SZ,
                                      reinterpret_cast<const BYTE*>(units.data()),
                                      static_cast<DWORD>(units.size() * sizeof(char16_t)));
  RegCloseKey(made);
  return written == ERROR_SUCCESS;
}

bool SetRegDword(Form42& form, std::string fullKey, const std::string& valueName,
                 std::int32_t data) {
  return setValue(form, std::move(fullKey), valueName, REG_DWORD, &data, sizeof(data));
}

void SetRegStringValue(Form42& form, std::string fullKey, const std::string& valueName,
                       const std::string& data) {
  const std::u16string units = utf16(data);
  setValue(form, std::move(fullKey), valueName, REG_SZ, units.data(),
           units.size() * sizeof(char16_t));
}

}  // namespace zelvreg
