#include <gtest/gtest.h>
#include <windows.h>

#include "machine/Machine.h"
#include "machine/RegistryCalls.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class RegistryWideCallsTest : public MachineFixture {
 protected:
  // Starts with one key that has these value lines and opens it.
  OpenedKey open(std::string_view values) {
    key(R"(HKEY_CURRENT_USER\Software\Vendor)", values);
    start();
    return {HKEY_CURRENT_USER, R"(Software\Vendor)", all32};
  }

  struct Listed {
    LONG status;
    std::u16string name;
    DWORD type;
    std::string data;
  };

  static Listed valueAt(HKEY key, DWORD index, DWORD nameRoom = 64, DWORD room = 64) {
    std::array<char16_t, 64> name{};
    std::string data(64, '-');
    DWORD type = 0;
    const LONG status = RegEnumValueW(key, index, name.data(), &nameRoom, nullptr, &type,
                                      reinterpret_cast<BYTE*>(data.data()), &room);
    return {status, std::u16string(name.data(), nameRoom), type, data.substr(0, room)};
  }
};

TEST_F(RegistryWideCallsTest, ValuesAreListedAsTheyAreStored) {
  const OpenedKey key = open("\"odd\"=hex(1):61,00,62\n\"open\"=hex(1):2d,4e\n@=\"x\"");
  const Listed odd = valueAt(key, 0);
  EXPECT_EQ(odd.name, u"odd");
  EXPECT_EQ(odd.type, REG_SZ);
  EXPECT_EQ(odd.data, "a\0b"s);
  EXPECT_EQ(valueAt(key, 1).data, "\x2D\x4E");
  EXPECT_EQ(valueAt(key, 2).name, u"");
  EXPECT_EQ(valueAt(key, 2).data, "x\0\0\0"s);
  EXPECT_EQ(valueAt(key, 3).status, ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryWideCallsTest, TheRoomForNamesAndDataIsKept) {
  const OpenedKey key = open(R"("name"=hex(1):61,00)");
  EXPECT_EQ(valueAt(key, 0, 4).status, ERROR_MORE_DATA);
  EXPECT_EQ(valueAt(key, 0, 5).status, ERROR_SUCCESS);
  EXPECT_EQ(valueAt(key, 0, 5, 1).status, ERROR_MORE_DATA);
  std::array<char16_t, 8> name{};
  std::array<BYTE, 4> data{'-', '-', '-', '-'};
  DWORD nameSize = 8;
  DWORD size = 2;
  RegEnumValueW(key, 0, name.data(), &nameSize, nullptr, nullptr, data.data(), &size);
  EXPECT_EQ(data[2], '-');
  size = 4;
  nameSize = 8;
  RegEnumValueW(key, 0, name.data(), &nameSize, nullptr, nullptr, data.data(), &size);
  EXPECT_EQ(size, 2U);
  EXPECT_EQ(data[2], 0);
  EXPECT_EQ(data[3], 0);
}

TEST_F(RegistryWideCallsTest, DataAreStoredUnchangedButForATerminatorRightAfterThem) {
  const OpenedKey key = open("");
  const auto set = [&](LPCWSTR name, DWORD type, std::string_view data, DWORD size) {
    return RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(data.data()), size);
  };
  EXPECT_EQ(set(u"uncounted", REG_SZ, "a\0\0\0"sv, 2), ERROR_SUCCESS);
  EXPECT_EQ(set(u"open", REG_SZ, "a\0b\0"sv, 2), ERROR_SUCCESS);
  EXPECT_EQ(set(u"closed", REG_SZ, "a\0\0\0\0\0"sv, 4), ERROR_SUCCESS);
  EXPECT_EQ(set(u"odd", REG_SZ, "a\0b!!!"sv, 3), ERROR_SUCCESS);
  EXPECT_EQ(set(u"bytes", REG_BINARY, "a\0\0\0"sv, 2), ERROR_SUCCESS);
  EXPECT_EQ(set(u"\x4E2D", REG_NONE, "", 0), ERROR_SUCCESS);
  EXPECT_EQ(RegSetValueExW(key, u"x", 0, REG_SZ, nullptr, 2), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(valueAt(key, 0).data, "a\0\0\0"s);
  EXPECT_EQ(valueAt(key, 1).data, "a\0"s);
  EXPECT_EQ(valueAt(key, 2).data, "a\0\0\0"s);
  EXPECT_EQ(valueAt(key, 3).data, "a\0b"s);
  EXPECT_EQ(valueAt(key, 4).data, "a\0"s);
  EXPECT_EQ(valueAt(key, 5).name, u"\x4E2D");
  EXPECT_EQ(RegDeleteValueW(key, u"\x4E2D"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteValueW(key, u"\x4E2D"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryWideCallsTest, KeysAreMadeListedOpenedAndDeletedByNamesBeyondTheCodePage) {
  const OpenedKey key = open("");
  HKEY made = nullptr;
  DWORD disposition = 0;
  EXPECT_EQ(
      RegCreateKeyExW(key, u"\x4E2D\\Below", 0, nullptr, 0, all64, nullptr, &made, &disposition),
      ERROR_SUCCESS);
  EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
  RegCloseKey(made);
  std::array<char16_t, 8> name{};
  DWORD size = 2;
  EXPECT_EQ(RegEnumKeyExW(key, 0, name.data(), &size, nullptr, nullptr, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(size, 1U);
  EXPECT_EQ(name[0], u'\x4E2D');
  size = 1;
  EXPECT_EQ(RegEnumKeyExW(key, 0, name.data(), &size, nullptr, nullptr, nullptr, nullptr),
            ERROR_MORE_DATA);
  EXPECT_EQ(RegEnumKeyExW(key, 1, name.data(), &size, nullptr, nullptr, nullptr, nullptr),
            ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(RegDeleteKeyExW(key, u"\x4E2D", 0, 0), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyExW(key, u"\x4E2D\\Below", 0, 0), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyExW(key, u"\x4E2D", 0, 0), ERROR_SUCCESS);
  EXPECT_EQ(RegOpenKeyExW(key, u"\x4E2D", 0, read64, &made), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(made, nullptr);
}

TEST_F(RegistryWideCallsTest, TheLongestNameFitsIntoARoomOf256) {
  const OpenedKey key = open("");
  const std::u16string longest(255, u'\u30BD');
  HKEY made = nullptr;
  EXPECT_EQ(RegCreateKeyExW(key, longest.c_str(), 0, nullptr, 0, all64, nullptr, &made, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(made);
  std::array<char16_t, 256> name{};
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 255), ERROR_MORE_DATA);
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 256), ERROR_SUCCESS);
  EXPECT_EQ(std::u16string(name.data()), longest);
  EXPECT_EQ(RegDeleteKeyW(key, longest.c_str()), ERROR_SUCCESS);
}

TEST_F(RegistryWideCallsTest, TheFlagsChooseTheView) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\True)", R"(@="x")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Other)", R"(@="x")");
  start();
  const auto opens = [](LPCWSTR path, REGSAM access) {
    HKEY opened = nullptr;
    const LONG status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path, 0, access, &opened);
    RegCloseKey(opened);
    return status;
  };
  EXPECT_EQ(opens(u"SOFTWARE\\True", read64), ERROR_SUCCESS);
  EXPECT_EQ(opens(u"SOFTWARE\\True", read32), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(opens(u"SOFTWARE\\Other", read32), ERROR_SUCCESS);
  EXPECT_EQ(opens(u"\\SOFTWARE", read32), ERROR_BAD_PATHNAME);
  EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Other", KEY_WOW64_64KEY, 0),
            ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Other", KEY_WOW64_32KEY, 0),
            ERROR_SUCCESS);
}

TEST_F(RegistryWideCallsTest, TheCallOfAPlanFails) {
  const OpenedKey key = open(R"("x"="y")");
  auto& faults = machine::Machine::current()->faults();
  HKEY opened = nullptr;
  faults.clear();
  faults.fail(machine::ApiCall::RegOpenKey, 2, ERROR_GEN_FAILURE);
  EXPECT_EQ(openStatus(key, "", read32), ERROR_SUCCESS);
  EXPECT_EQ(RegOpenKeyExW(key, u"", 0, read32, &opened), ERROR_GEN_FAILURE);
  faults.fail(machine::ApiCall::RegEnumValue, 1, ERROR_GEN_FAILURE);
  EXPECT_EQ(valueAt(key, 0).status, ERROR_GEN_FAILURE);
  EXPECT_EQ(valueAt(key, 0).status, ERROR_SUCCESS);
}

TEST_F(RegistryWideCallsTest, NamesCompareWithoutRegardToCase) {
  start();
  const auto compare = [](std::u16string_view first, std::u16string_view second, BOOL ignoresCase) {
    return CompareStringOrdinal(first.data(), static_cast<int>(first.size()), second.data(),
                                static_cast<int>(second.size()), ignoresCase);
  };
  EXPECT_EQ(compare(u"\x0434"sv, u"\x0414"sv, TRUE), CSTR_EQUAL);
  EXPECT_EQ(compare(u"a", u"A", FALSE), CSTR_GREATER_THAN);
  EXPECT_EQ(compare(u"a", u"ab", TRUE), CSTR_LESS_THAN);
  EXPECT_EQ(compare(u"a\0b"sv, u"A\0c"sv, TRUE), CSTR_LESS_THAN);
  EXPECT_EQ(CompareStringOrdinal(u"ab", -1, u"AB", 2, TRUE), CSTR_EQUAL);
  EXPECT_EQ(CompareStringOrdinal(nullptr, 0, u"", 0, TRUE), 0);
}

}  // namespace
}  // namespace zelvreg::fixture
