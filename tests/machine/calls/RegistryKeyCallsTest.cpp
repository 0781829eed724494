#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include <algorithm>

#include "machine/RegistryCalls.h"
#include "machine/computer/Requests.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using Names = std::vector<std::string>;

constexpr const char* vendor = R"(Software\Vendor)";

class RegistryKeyCallsTest : public MachineFixture {
 protected:
  void ofVendor(const std::string& path, std::string_view values = {}) {
    key(R"(HKEY_CURRENT_USER\Software\Vendor)" + path, values);
  }
};

TEST_F(RegistryKeyCallsTest, HowAKeyIsToBeMadeIsKept) {
  start();
  std::u16string className = u"class";
  SECURITY_ATTRIBUTES attributes{};
  attributes.nLength = 7;
  attributes.bInheritHandle = TRUE;
  HKEY made = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\New", 0, className.data(), 0, read32,
                            &attributes, &made, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(made);
  const machine::KeyRequest& request = computer().requests().newestKey;
  EXPECT_EQ(request.path, "Software\\New");
  EXPECT_EQ(request.className, "class");
  EXPECT_TRUE(request.hasAttributes);
  EXPECT_EQ(request.attributesLength, 7U);
  EXPECT_TRUE(request.inheritsHandle);
  EXPECT_FALSE(request.hasDescriptor);
  OpenedKey::create(HKEY_CURRENT_USER, vendor, read32);
  EXPECT_EQ(request.path, vendor);
  EXPECT_EQ(request.className, "");
  EXPECT_FALSE(request.hasAttributes);
}

TEST_F(RegistryKeyCallsTest, NamesAreFoundInAnyCaseAndListedAsWritten) {
  ofVendor(R"(\MiXed)", R"(@="x")");
  start();
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(SOFTWARE\vendor\mIxED)", read32), "x");
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, vendor, read32)), Names({"MiXed"}));
}

TEST_F(RegistryKeyCallsTest, SubkeysAreListedInUpperCaseNameOrder) {
  for (const char* name : {"b", "_", "A", "Z", "a1", "[", "10", "9"}) {
    ofVendor(std::string("\\") + name);
  }
  start();
  // "_" and "[" come after the capital letters.
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, vendor, read32)),
            Names({"10", "9", "A", "a1", "b", "Z", "[", "_"}));
}

TEST_F(RegistryKeyCallsTest, ManySiblingsStaySortedAndReachable) {
  start();
  const OpenedKey parent = OpenedKey::create(HKEY_CURRENT_USER, vendor, all32);
  constexpr int count = 5000;
  const auto name = [](int number) { return "key" + std::to_string(number * 7919 % count); };
  for (int number = 0; number < count; ++number) {
    ASSERT_EQ(OpenedKey::create(parent, name(number).c_str(), all32).disposition,
              REG_CREATED_NEW_KEY);
  }
  const Names names = subkeys(parent);
  EXPECT_EQ(names.size(), static_cast<std::size_t>(count));
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
  for (int number = 0; number < count; number += 2) {
    ASSERT_EQ(RegDeleteKeyW(parent, Wide(name(number)).get()), ERROR_SUCCESS);
  }
  EXPECT_EQ(subkeys(parent).size(), static_cast<std::size_t>(count / 2));
  for (int number = 0; number < count; ++number) {
    ASSERT_EQ(openStatus(parent, name(number).c_str(), read32),
              number % 2 == 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS);
  }
}

TEST_F(RegistryKeyCallsTest, AnEnumerationSaysWhenTheBufferIsTooSmallAndWhenItEnds) {
  ofVendor(R"(\name)");
  start();
  const OpenedKey key(HKEY_CURRENT_USER, vendor, read32);
  std::array<char16_t, 8> name{};
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 4), ERROR_MORE_DATA);
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 5), ERROR_SUCCESS);
  EXPECT_EQ(std::u16string(name.data()), u"name");
  EXPECT_EQ(RegEnumKeyW(key, 1, name.data(), 8), ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryKeyCallsTest, PathsMayEndButNotBeginWithABackslash) {
  ofVendor(R"(\a)", R"(@="a")");
  start();
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Vendor\a\)", read32), "a");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\\Vendor\\a\\)", read32), "a");
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, R"(\Software\Vendor)", read32), ERROR_BAD_PATHNAME);
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, R"(\Software\New)", all32).status,
            ERROR_BAD_PATHNAME);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(\Software\Vendor\a)"), ERROR_BAD_PATHNAME);
}

TEST_F(RegistryKeyCallsTest, AnEmptyPathIsTheKeyItself) {
  ofVendor("", R"(@="itself")");
  start();
  const OpenedKey key(HKEY_CURRENT_USER, vendor, read32);
  EXPECT_EQ(defaultText(key, "", read32), "itself");
  EXPECT_EQ(defaultText(key, nullptr, read32), "itself");
  HKEY root = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, nullptr, 0, read32, &root), ERROR_SUCCESS);
  EXPECT_EQ(root, HKEY_CURRENT_USER);
}

TEST_F(RegistryKeyCallsTest, CreatingMakesAllMissingParentsAndSaysWhatItDid) {
  start();
  const OpenedKey made = OpenedKey::create(HKEY_CURRENT_USER, R"(Software\a\b\c)", all32);
  EXPECT_EQ(made.disposition, REG_CREATED_NEW_KEY);
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, R"(Software\A\B)", all32).disposition,
            REG_OPENED_EXISTING_KEY);
  EXPECT_TRUE(computer().registry().contentChanged());
}

TEST_F(RegistryKeyCallsTest, ReadingChangesNothing) {
  ofVendor("", R"(@="x")");
  const machine::Registry& registry = start().registry();
  defaultText(HKEY_CURRENT_USER, vendor, read32);
  subkeys(HKEY_CLASSES_ROOT);
  EXPECT_FALSE(registry.contentChanged());
  EXPECT_FALSE(registry.securityChanged());
}

TEST_F(RegistryKeyCallsTest, NamesHaveALongestLengthAndPathsADeepestLevel) {
  start();
  const std::string longest(255, 'x');
  const std::string tooLong(256, 'x');
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, longest.c_str(), all32).status, ERROR_SUCCESS);
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, tooLong.c_str(), all32).status,
            ERROR_INVALID_PARAMETER);
  std::string deep = "d";
  for (int level = 1; level < 511; ++level) {
    deep += "\\d";
  }
  // The user's own key is the first level.
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, deep.c_str(), all32).status, ERROR_SUCCESS);
  EXPECT_EQ(OpenedKey::create(HKEY_CURRENT_USER, (deep + "\\d").c_str(), all32).status,
            ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryKeyCallsTest, AKeyWithSubkeysIsNotDeleted) {
  ofVendor(R"(\a\b)");
  start();
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a)"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a\b)"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a)"), ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a)"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, nullptr), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, u""), ERROR_ACCESS_DENIED);
}

TEST_F(RegistryKeyCallsTest, ATreeIsDeletedWhole) {
  ofVendor(R"(\a\b\c)");
  ofVendor(R"(\d)");
  start();
  EXPECT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Vendor\a)"), ERROR_SUCCESS);
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, vendor, read32)), Names({"d"}));
  const OpenedKey key(HKEY_CURRENT_USER, vendor, all32);
  EXPECT_EQ(SHDeleteKeyW(key, u""), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, vendor, read32), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryKeyCallsTest, AHandleOfADeletedKeyStaysValidAndSaysSo) {
  ofVendor(R"(\a)", R"(@="x")");
  start();
  OpenedKey key(HKEY_CURRENT_USER, R"(Software\Vendor\a)", all32);
  EXPECT_EQ(RegDeleteKeyW(key, u""), ERROR_SUCCESS);
  std::array<char16_t, 8> name{};
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 8), ERROR_KEY_DELETED);
  EXPECT_EQ(text(key, ""), "(error 1018)");
  EXPECT_EQ(setText(key, "", "x"), ERROR_KEY_DELETED);
  EXPECT_EQ(RegDeleteValueW(key, u""), ERROR_KEY_DELETED);
  EXPECT_EQ(openStatus(key, "below", read32), ERROR_KEY_DELETED);
  EXPECT_EQ(OpenedKey::create(key, "below", all32).status, ERROR_KEY_DELETED);
  EXPECT_EQ(RegDeleteKeyW(key, u""), ERROR_KEY_DELETED);
  // A new key of the same name is another key.
  OpenedKey::create(HKEY_CURRENT_USER, R"(Software\Vendor\a)", all32);
  EXPECT_EQ(text(key, ""), "(error 1018)");
}

TEST_F(RegistryKeyCallsTest, ClosedAndForeignHandlesAreInvalid) {
  ofVendor("");
  start();
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, uR"(Software\Vendor)", 0, read32, &key),
            ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
  HKEY other = nullptr;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, uR"(Software\Vendor)", 0, read32, &other),
            ERROR_SUCCESS);
  EXPECT_NE(other, key);
  EXPECT_EQ(text(key, ""), "(error 6)");
  EXPECT_EQ(RegCloseKey(other), ERROR_SUCCESS);
  for (const std::uintptr_t number : {0U, 1U, 4U, 0x1234U, 0x80000007U}) {
    EXPECT_EQ(openStatus(reinterpret_cast<HKEY>(number), vendor, read32), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(reinterpret_cast<HKEY>(number)), ERROR_INVALID_HANDLE);
  }
  EXPECT_EQ(openStatus(HKEY_PERFORMANCE_DATA, "", read32), ERROR_INVALID_HANDLE);
  EXPECT_EQ(openStatus(HKEY_DYN_DATA, "", read32), ERROR_INVALID_HANDLE);
  EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
}

TEST_F(RegistryKeyCallsTest, OpenHandlesAreCounted) {
  ofVendor("");
  const machine::Registry& registry = start().registry();
  {
    const OpenedKey first(HKEY_CURRENT_USER, vendor, read32);
    const OpenedKey second(HKEY_CURRENT_USER, vendor, read32);
    EXPECT_EQ(registry.openHandles(), 2U);
  }
  EXPECT_EQ(registry.openHandles(), 0U);
}

TEST_F(RegistryKeyCallsTest, NamesOfEveryScriptAreFoundInAnyCaseWhateverTheCodePage) {
  setting("codepage", "1251");
  ofVendor("\\\u0416");
  ofVendor("\\\u4E2D");
  start();
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, vendor, read32)), Names({"\u0416", "\u4E2D"}));
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, "Software\\Vendor\\\u0436", read32), ERROR_SUCCESS);
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, "Software\\Vendor\\\u4E2D", read32), ERROR_SUCCESS);
}

TEST_F(RegistryKeyCallsTest, ANameCanBeHalfOfACharacter) {
  start();
  const std::string half = "Software\\Vendor\\\xED\xA0\xBD";
  OpenedKey::create(HKEY_CURRENT_USER, half.c_str(), all32);
  restart();
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, vendor, read32)), Names({"\xED\xA0\xBD"}));
  EXPECT_EQ(openStatus(HKEY_CURRENT_USER, half.c_str(), read32), ERROR_SUCCESS);
}

TEST_F(RegistryKeyCallsTest, PlannedFaultsAreAnsweredAndNothingElseHappens) {
  ofVendor(R"(\a)", R"("v"="x")");
  machine::Machine& machine = start();
  using machine::ApiCall;
  const OpenedKey key(HKEY_CURRENT_USER, vendor, all32);
  const OpenedKey inner(key, "a", all32);
  machine::FaultPlan& faults = machine.faults();
  for (const ApiCall call : {ApiCall::RegOpenKey, ApiCall::RegCreateKey, ApiCall::RegEnumKey,
                             ApiCall::RegEnumValue, ApiCall::RegQueryValue, ApiCall::RegSetValue,
                             ApiCall::RegDeleteKey, ApiCall::RegDeleteValue}) {
    faults.fail(call, 1, ERROR_GEN_FAILURE);
  }
  std::array<char16_t, 8> name{};
  auto size = static_cast<DWORD>(name.size());
  EXPECT_EQ(openStatus(key, "a", read32), ERROR_GEN_FAILURE);
  EXPECT_EQ(OpenedKey::create(key, "b", all32).status, ERROR_GEN_FAILURE);
  EXPECT_EQ(RegEnumKeyW(key, 0, name.data(), 8), ERROR_GEN_FAILURE);
  EXPECT_EQ(RegEnumValueW(inner, 0, name.data(), &size, nullptr, nullptr, nullptr, nullptr),
            ERROR_GEN_FAILURE);
  EXPECT_EQ(RegQueryValueExW(inner, u"v", nullptr, nullptr, nullptr, nullptr), ERROR_GEN_FAILURE);
  EXPECT_EQ(setText(inner, "v", "y"), ERROR_GEN_FAILURE);
  EXPECT_EQ(RegDeleteKeyW(key, u"a"), ERROR_GEN_FAILURE);
  EXPECT_EQ(RegDeleteValueW(inner, u"v"), ERROR_GEN_FAILURE);
  EXPECT_EQ(text(inner, "v"), "x");
  EXPECT_EQ(subkeys(key), Names({"a"}));
}

TEST(RegistryWithoutAMachineTest, IsNotReady) {
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, "Software", read32), ERROR_NOT_READY);
  EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_NOT_READY);
}

}  // namespace
}  // namespace zelvreg::fixture
