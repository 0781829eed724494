// How the registry answers, on the same export of it: what the emulated computer may not do
// differently from Windows.
#include <windows.h>

#include <array>

#include "keys/Deletion.h"
#include "keys/DirectText.h"
#include "keys/OpenKey.h"
#include "keys/StdRegProv.h"
#include "keys/ValueData.h"
#include "registry/Hives.h"
#include "registry/RegistryValues.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/Resolver.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Names = std::vector<std::string>;

const std::string place = "SOFTWARE\\Conformance";
const std::string types = "SOFTWARE\\Conformance\\Types";
const std::string class64 = "{00000000-0000-0000-0000-00000000C064}";
const std::string class32 = "{00000000-0000-0000-0000-00000000C032}";

std::string asUtf16(std::string_view text) {
  const std::u16string units = utf16(text);
  return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t)};
}

class RegistryConformance : public fixture::ComputerFixture,
                            public ::testing::WithParamInterface<ProviderRoad> {
 protected:
  RegistryConformance() { form.safeguards.asksService = GetParam() == ProviderRoad::Service; }

  static LONG open(HiveHandle hive, const std::string& path, REGSAM access) {
    return OpenKey(hive, path, access).openStatus();
  }

  // The text of a value as a direct read in one view gives it.
  static std::string read(const std::string& path, const std::string& name, REGSAM view) {
    const OpenKey key(HiveHandle::LocalMachine, path, KEY_QUERY_VALUE | view);
    ValueData data;
    data.read(key.handle(), name);
    return data.text();
  }

  // The names that enumerating a key gives.
  static Names subkeys(HiveHandle hive, const std::string& path, REGSAM view) {
    const OpenKey key(hive, path, KEY_ENUMERATE_SUB_KEYS | view);
    Names names;
    std::array<char16_t, 256> name{};
    for (DWORD index = 0; RegEnumKeyW(key.handle(), index, roomIn(name), 256) == ERROR_SUCCESS;
         ++index) {
      names.push_back(utf8(name.data()));
    }
    return names;
  }

  static LONG query(const std::string& name, void* data, DWORD& size, DWORD& type) {
    const OpenKey key(HiveHandle::LocalMachine, types, KEY_QUERY_VALUE | KEY_WOW64_64KEY);
    return RegQueryValueExW(key.handle(), Wide(name).get(), nullptr, &type,
                            static_cast<BYTE*>(data), &size);
  }
};

TEST_P(RegistryConformance, WithoutAFlagTheProcessSeesThe32BitView) {
  EXPECT_EQ(read(place, "View", 0), "32");
  EXPECT_EQ(read(place, "View", KEY_WOW64_32KEY), "32");
  EXPECT_EQ(read(place, "View", KEY_WOW64_64KEY), "64");
}

TEST_P(RegistryConformance, The32BitKeysHaveAPathOfTheirOwnInBothViews) {
  EXPECT_EQ(read("SOFTWARE\\Wow6432Node\\Conformance", "View", KEY_WOW64_64KEY), "32");
  EXPECT_EQ(read("SOFTWARE\\Wow6432Node\\Conformance", "View", 0), "32");
}

TEST_P(RegistryConformance, NamesAreFoundInAnyCaseAndABackslashAtTheEndIsPassedOver) {
  EXPECT_EQ(read("software\\CONFORMANCE", "vIEW", KEY_WOW64_64KEY), "64");
  EXPECT_EQ(read(place + "\\", "View", KEY_WOW64_64KEY), "64");
}

TEST_P(RegistryConformance, APathThatBeginsWithABackslashIsABadName) {
  EXPECT_EQ(open(HiveHandle::LocalMachine, "\\" + place, KEY_READ), ERROR_BAD_PATHNAME);
}

TEST_P(RegistryConformance, AMissingKeyAndAnUnknownHandleHaveTheirCodes) {
  EXPECT_EQ(open(HiveHandle::LocalMachine, place + "\\None\\Deeper", KEY_READ),
            ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(open(HiveHandle::Unknown, place, KEY_READ), ERROR_INVALID_HANDLE);
}

TEST_P(RegistryConformance, AnEmptySubkeyIsTheKeyItself) {
  const OpenKey key(HiveHandle::LocalMachine, place, KEY_READ | KEY_WOW64_64KEY);
  HKEY same = nullptr;
  ASSERT_EQ(RegOpenKeyExW(key.handle(), Wide("").get(), 0, KEY_READ, &same), ERROR_SUCCESS);
  EXPECT_EQ(RegCloseKey(same), ERROR_SUCCESS);
}

TEST_P(RegistryConformance, SubkeysComeInUpperCaseOrderAsTheyAreWritten) {
  EXPECT_EQ(subkeys(HiveHandle::LocalMachine, place, KEY_WOW64_64KEY),
            (Names{"alpha", "Beta", "Gamma", "Types"}));
  EXPECT_EQ(subkeys(HiveHandle::LocalMachine, place, 0), (Names{"Only32"}));
}

TEST_P(RegistryConformance, TheClassesAreSharedButForTheirTwoRedirectedKeys) {
  EXPECT_EQ(open(HiveHandle::ClassesRoot, ".conformance", KEY_READ), ERROR_SUCCESS);
  EXPECT_EQ(open(HiveHandle::LocalMachine, "SOFTWARE\\Classes\\.conformance", KEY_READ),
            ERROR_SUCCESS);
  EXPECT_EQ(open(HiveHandle::ClassesRoot, "CLSID\\" + class32, KEY_READ), ERROR_SUCCESS);
  EXPECT_EQ(open(HiveHandle::ClassesRoot, "CLSID\\" + class64, KEY_READ), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(open(HiveHandle::ClassesRoot, "CLSID\\" + class64, KEY_READ | KEY_WOW64_64KEY),
            ERROR_SUCCESS);
}

TEST_P(RegistryConformance, TheUsersKeysAreReachedByTheirHive) {
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::CurrentUser, "Software\\Conformance", "Owner"),
            "the user");
}

TEST_P(RegistryConformance, ATooSmallBufferIsToldTheSizeThatIsNeeded) {
  std::array<char, 4> small{};
  auto size = static_cast<DWORD>(small.size());
  DWORD type = 0;
  EXPECT_EQ(query("Text", small.data(), size, type), ERROR_MORE_DATA);
  EXPECT_EQ(size, 12U);
  EXPECT_EQ(type, REG_SZ);
  size = 0;
  EXPECT_EQ(query("Text", nullptr, size, type), ERROR_SUCCESS);
  EXPECT_EQ(size, 12U);
}

TEST_P(RegistryConformance, ValuesHaveTheirTypesAndBytes) {
  const std::vector<std::pair<const char*, std::string>> expected{
      {"", "1" + asUtf16({"the default\0", 12})},
      {"Text", "1" + asUtf16({"plain\0", 6})},
      {"Expand", "2" + asUtf16({"%windir%\\a\0", 11})},
      {"Number", std::string("4\2\1\0\0", 5)},
      {"Binary", std::string("3\1\2\3", 4)},
      {"Multi", "7" + asUtf16({"a\0b\0\0", 5})},
      {"Empty", "1" + asUtf16({"\0", 1})},
      {"None", "0"},
  };
  for (const auto& [name, typeAndBytes] : expected) {
    std::string data(64, '\0');
    DWORD size = 64;
    DWORD type = 0;
    ASSERT_EQ(query(name, data.data(), size, type), ERROR_SUCCESS) << name;
    EXPECT_EQ(std::to_string(type) + data.substr(0, size), typeAndBytes) << name;
  }
}

TEST_P(RegistryConformance, EnumeratingPastTheEndSaysSo) {
  const OpenKey key(HiveHandle::LocalMachine, place, KEY_READ | KEY_WOW64_64KEY);
  std::array<char16_t, 256> name{};
  DWORD size = 256;
  EXPECT_EQ(RegEnumKeyW(key.handle(), 4, roomIn(name), 256), ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(RegEnumValueW(key.handle(), 1, roomIn(name), &size, nullptr, nullptr, nullptr, nullptr),
            ERROR_NO_MORE_ITEMS);
}

TEST_P(RegistryConformance, ANameThatDoesNotFitSaysThatThereIsMore) {
  const OpenKey key(HiveHandle::LocalMachine, place, KEY_READ | KEY_WOW64_64KEY);
  std::array<char16_t, 5> name{};
  EXPECT_EQ(RegEnumKeyW(key.handle(), 0, roomIn(name), 5), ERROR_MORE_DATA);
}

TEST_P(RegistryConformance, AKeyWithSubkeysCannotBeDeleted) {
  const OpenKey parent(HiveHandle::LocalMachine, "SOFTWARE", KEY_READ | KEY_WOW64_64KEY);
  EXPECT_EQ(RegDeleteKeyW(parent.handle(), Wide("Conformance").get()), ERROR_ACCESS_DENIED);
  EXPECT_EQ(RegDeleteKeyW(parent.handle(), Wide("NoneAtAll").get()), ERROR_FILE_NOT_FOUND);
}

TEST_P(RegistryConformance, AClosedHandleIsInvalid) {
  OpenKey key(HiveHandle::LocalMachine, place, KEY_READ);
  HKEY handle = key.handle();
  ASSERT_EQ(key.close(), ERROR_SUCCESS);
  DWORD size = 0;
  EXPECT_EQ(RegQueryValueExW(handle, Wide("View").get(), nullptr, nullptr, nullptr, &size),
            ERROR_INVALID_HANDLE);
}

TEST_P(RegistryConformance, ADeletedKeySaysSoThroughItsHandle) {
  const std::string path = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Conformance deleted";
  emptyKey(path);
  const OpenKey key(HiveHandle::LocalMachine, "SOFTWARE\\Conformance deleted",
                    KEY_ALL_ACCESS | KEY_WOW64_64KEY);
  removeKey(path);
  EXPECT_EQ(RegSetValueExW(key.handle(), Wide("a").get(), 0, REG_SZ, nullptr, 0),
            ERROR_KEY_DELETED);
}

TEST_P(RegistryConformance, TheProviderReadsTheViewThatItWasConnectedFor) {
  std::string value;
  for (const auto& [architecture, expected] :
       std::vector<std::pair<ProviderArchitecture, std::string>>{
           {ProviderArchitecture::Bits64, "64"}, {ProviderArchitecture::Bits32, "32"}}) {
    const auto provider = connectStdRegProv(GetParam(), architecture);
    EXPECT_EQ(provider->getStringValue(HiveHandle::LocalMachine, place, "View", value), 0);
    EXPECT_EQ(value, expected);
  }
}

TEST_P(RegistryConformance, TheProviderListsNamedValuesOnly) {
  const auto provider = connectStdRegProv(GetParam(), ProviderArchitecture::Bits64);
  std::optional<Names> names;
  std::vector<DWORD> valueTypes;
  EXPECT_EQ(provider->enumValues(HiveHandle::LocalMachine, types, names, valueTypes, [] {}), 0);
  ASSERT_TRUE(names.has_value());
  EXPECT_EQ(names->size(), 9U);
  EXPECT_EQ(valueTypes.size(), 9U);
}

TEST_P(RegistryConformance, TheProviderHasNoListForAKeyWithoutValues) {
  const auto provider = connectStdRegProv(GetParam(), ProviderArchitecture::Bits64);
  std::optional<Names> names;
  std::vector<DWORD> valueTypes;
  EXPECT_EQ(
      provider->enumValues(HiveHandle::LocalMachine, place + "\\alpha", names, valueTypes, [] {}),
      0);
  EXPECT_FALSE(names.has_value());
  EXPECT_NE(
      provider->enumValues(HiveHandle::LocalMachine, place + "\\None", names, valueTypes, [] {}),
      0);
}

TEST_P(RegistryConformance, TheProviderGivesTextsOnly) {
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, types, "Text"), "plain");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, types, "Expand"), "%windir%\\a");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, types, "Number"), "");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, types, ""), "the default");
}

TEST_P(RegistryConformance, ATextKeepsItsLettersWhateverTheCodePage) {
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, types, "Accents"), "grün");
}

TEST_P(RegistryConformance, SettingsReadersSeeTheSameValues) {
  std::string text;
  EXPECT_TRUE(GetRegString(HiveHandle::LocalMachine, place, "View", text));
  EXPECT_EQ(text, "32");
  EXPECT_EQ(GetRegistryValue(HiveHandle::LocalMachine, place, "View").value, Variant("64"));
}

TEST_P(RegistryConformance, EnumeratorsSeeTheTrueView) {
  fEnumKey(form, HiveHandle::LocalMachine, place);
  EXPECT_EQ(fixture::entriesOf(form.List1), (Names{"alpha", "Beta", "Gamma", "Types"}));
}

TEST_P(RegistryConformance, VariablesExpandAsForA32BitProcess) {
  std::string path = "%ProgramFiles%\\a";
  EXPECT_EQ(GetPath(form, path), std::string("C:\\Program Files\\a\0", 19));
  EXPECT_EQ(expandedText("%ProgramFiles%|%none%|%"),
            std::string("C:\\Program Files (x86)|%none%|%\0", 32));
  EXPECT_EQ(expandedText(std::string("C:\\a\0%none%", 11)), std::string("C:\\a\0", 5));
  EXPECT_EQ(expandedText("C:\\\xC3\xA4\xFF"), std::string("C:\\\xC3\xA4\xEF\xBF\xBD\0", 9));
  EXPECT_EQ(expandedText(""), std::string(1, '\0'));
}

TEST_P(RegistryConformance, TheSystemFolderIsRedirected) {
  makeFile("C:\\Windows\\Sysnative\\conformance64.txt");
  makeFile("C:\\Windows\\System32\\conformance32.txt");
  EXPECT_NE(GetFileAttributesW(Wide("C:\\Windows\\SysWOW64\\conformance32.txt").get()),
            INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW(Wide("C:\\Windows\\System32\\conformance64.txt").get()),
            INVALID_FILE_ATTRIBUTES);
}

INSTANTIATE_TEST_SUITE_P(Roads, RegistryConformance,
                         ::testing::Values(ProviderRoad::Direct, ProviderRoad::Service),
                         [](const auto& road) {
                           return road.param == ProviderRoad::Direct ? "Direct" : "Service";
                         });

}  // namespace
}  // namespace zelvreg
