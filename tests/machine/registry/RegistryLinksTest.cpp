#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using Names = std::vector<std::string>;

constexpr const char* user = R"(HKEY_USERS\S-1-5-21-1-1-1-1001)";

class RegistryLinksTest : public MachineFixture {
 protected:
  // The value line that makes a key a link.
  static std::string linkTo(std::string_view target) {
    std::string line = "\"SymbolicLinkValue\"=hex(6):";
    for (const char letter : target) {
      constexpr const char* digits = "0123456789abcdef";
      line += digits[letter >> 4];
      line += digits[letter & 15];
      line += ",00,";
    }
    line.pop_back();
    return line;
  }
};

TEST_F(RegistryLinksTest, TheCurrentUserIsItsKeyInUsers) {
  key(R"(HKEY_CURRENT_USER\Software\A)", R"(@="a")");
  key(std::string(user) + R"(\Software\B)", R"(@="b")");
  start();
  EXPECT_EQ(defaultText(HKEY_USERS, R"(S-1-5-21-1-1-1-1001\Software\A)", read32), "a");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\B)", read32), "b");
}

TEST_F(RegistryLinksTest, TheUsersClassesLieBesideTheUsersKey) {
  key(R"(HKEY_CURRENT_USER\Software\Classes\.a)", R"(@="a")");
  key(std::string(user) + R"(_Classes\.b)", R"(@="b")");
  start();
  EXPECT_EQ(defaultText(HKEY_USERS, R"(S-1-5-21-1-1-1-1001_Classes\.a)", read32), "a");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Classes\.b)", read32), "b");
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CURRENT_USER, R"(Software\Classes)", read32)),
            Names({".a", ".b"}));
}

TEST_F(RegistryLinksTest, OtherUsersHaveTheSameLink) {
  key(R"(HKEY_USERS\S-1-5-21-9-9-9-500\Software\Classes\.a)", R"(@="a")");
  key(R"(HKEY_USERS\.DEFAULT\Software\Classes\.b)", R"(@="b")");
  machine::Registry& registry = start().registry();
  EXPECT_NE(registry.find(R"(HKEY_USERS\S-1-5-21-9-9-9-500_Classes\.a)"), nullptr);
  EXPECT_EQ(registry.find(R"(HKEY_USERS\.DEFAULT_Classes)"), nullptr);
  EXPECT_EQ(defaultText(HKEY_USERS, R"(.DEFAULT\Software\Classes\.b)", read32), "b");
}

TEST_F(RegistryLinksTest, TheClassesOfWow6432NodeAreTheWow6432NodeOfClasses) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Classes\CLSID\{1})", R"(@="a")");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Classes\Wow6432Node\CLSID\{1})", read64),
            "a");
  EXPECT_EQ(subkeys(OpenedKey(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Wow6432Node)", read64)),
            Names({"Classes"}));
}

TEST_F(RegistryLinksTest, ALinkComesAndGoesWithItsTarget) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)");
  start();
  const OpenedKey wow(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Wow6432Node)", read64);
  EXPECT_EQ(subkeys(wow), Names({"Vendor"}));
  OpenedKey::create(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Classes\Wow6432Node)", all64);
  EXPECT_EQ(subkeys(wow), Names({"Classes", "Vendor"}));
  EXPECT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, uR"(SOFTWARE\Wow6432Node\Classes)"), ERROR_SUCCESS);
  EXPECT_EQ(subkeys(wow), Names({"Vendor"}));
}

TEST_F(RegistryLinksTest, CurrentControlSetIsTheOneThatSelectNames) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001\A)", R"(@="first")");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet002\A)", R"(@="second")");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Select)", R"("Current"=dword:00000002)");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\CurrentControlSet\A)", read32), "second");
  EXPECT_EQ(subkeys(OpenedKey(HKEY_LOCAL_MACHINE, "SYSTEM", read32)),
            Names({"ControlSet001", "ControlSet002", "CurrentControlSet", "Select"}));
}

TEST_F(RegistryLinksTest, KeysGivenUnderCurrentControlSetAreThoseOfTheSelectedSet) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\A)", R"(@="a")");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Select)", R"("Current"=dword:00000001)");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\ControlSet001\Services\A)", read32), "a");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\CurrentControlSet\Services\A)", read32), "a");
}

TEST_F(RegistryLinksTest, WithoutASelectionCurrentControlSetIsAnOrdinaryKey) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\A)", R"(@="a")");
  machine::Registry& registry = start().registry();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\CurrentControlSet\A)", read32), "a");
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SYSTEM\ControlSet001)"), nullptr);
}

TEST_F(RegistryLinksTest, TheCurrentConfigurationIsAHardwareProfile) {
  key(R"(HKEY_CURRENT_CONFIG\Software\A)", R"(@="a")");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE,
                        R"(SYSTEM\CurrentControlSet\Hardware Profiles\Current\Software\A)", read32),
            "a");
  EXPECT_EQ(defaultText(HKEY_CURRENT_CONFIG, R"(Software\A)", read32), "a");
}

TEST_F(RegistryLinksTest, AKeyWithOnlyALinkValueLeadsToItsTarget) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Target\A)", R"(@="a")");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Link)", linkTo(R"(\Registry\Machine\Software\Target)"));
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\ToUser)", linkTo(R"(\REGISTRY\USER\S-1-5-21-1-1-1-1001)"));
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\Link\A)", read32), "a");
  EXPECT_EQ(subkeys(OpenedKey(HKEY_LOCAL_MACHINE, R"(SYSTEM\Link)", read32)), Names({"A"}));
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\ToUser)", read32), ERROR_SUCCESS);
}

TEST_F(RegistryLinksTest, ALinkItselfCanBeOpened) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Link)", linkTo(R"(\Registry\Machine\Nowhere)"));
  start();
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\Link)", read32), ERROR_FILE_NOT_FOUND);
  HKEY link = nullptr;
  constexpr DWORD openLink = 8;
  EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, uR"(SYSTEM\Link)", openLink, read32, &link),
            ERROR_SUCCESS);
  EXPECT_EQ(valueNames(link), Names({"SymbolicLinkValue"}));
  RegCloseKey(link);
}

TEST_F(RegistryLinksTest, AChangedLinkIsSeenByTheNextOpen) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Link)", linkTo(R"(\Registry\Machine\Nowhere)"));
  start();
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\Link)", read32), ERROR_FILE_NOT_FOUND);
  HKEY link = nullptr;
  constexpr DWORD openLink = 8;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, uR"(SYSTEM\Link)", openLink, all32, &link);
  EXPECT_EQ(RegDeleteValueW(link, u"SymbolicLinkValue"), ERROR_SUCCESS);
  RegCloseKey(link);
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\Link)", read32), ERROR_SUCCESS);
}

TEST_F(RegistryLinksTest, AKeyWithMoreThanTheLinkValueIsOrdinary) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Key)", linkTo(R"(\Registry\Machine\Nowhere)") + "\n@=\"here\"");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SYSTEM\Key)", read32), "here");
}

TEST_F(RegistryLinksTest, LinksThatLeadBackToThemselvesEndInNotFound) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\A)", linkTo(R"(\Registry\Machine\SYSTEM\B)"));
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\B)", linkTo(R"(\Registry\Machine\SYSTEM\A)"));
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Self)", linkTo(R"(\Registry\Machine\SYSTEM\Self\Below)"));
  start();
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\A)", read32), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SYSTEM\Self)", read32), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenedKey::create(HKEY_LOCAL_MACHINE, R"(SYSTEM\A\New)", all32).status,
            ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryLinksTest, DeletingATreeLeavesWhatItsLinksPointTo) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID)", R"(@="stays")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)");
  machine::Registry& registry = start().registry();
  const OpenedKey software(HKEY_LOCAL_MACHINE, "SOFTWARE", all64);
  EXPECT_EQ(SHDeleteKeyW(software, u"Wow6432Node"), ERROR_SUCCESS);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node)"), nullptr);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID)"), nullptr);
  // The link is back as soon as there is a place for it.
  OpenedKey::create(software, "Wow6432Node", all64);
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Wow6432Node\Classes\CLSID)", read64),
            "stays");
}

}  // namespace
}  // namespace zelvreg::fixture
