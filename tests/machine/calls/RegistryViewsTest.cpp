#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using Names = std::vector<std::string>;

class RegistryViewsTest : public MachineFixture {};

TEST_F(RegistryViewsTest, A32BitOpenOfSoftwareSeesWow6432Node) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"(@="64")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)", R"(@="32")");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor)", read32), "32");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor)", read64), "64");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor)", KEY_READ | KEY_WOW64_32KEY),
            "32");
}

TEST_F(RegistryViewsTest, AnExplicitWow6432NodeIsThatKeyInBothViews) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)", R"(@="32")");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SOFTWARE\wow6432node\Vendor)", read32), "32");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(SOFTWARE\wow6432node\Vendor)", read64), "32");
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(SOFTWARE\Wow6432Node\Wow6432Node\Vendor)", read32),
            ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryViewsTest, ClassesAreSharedButForClsidAndInterface) {
  const std::string classes = R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes)";
  key(classes + R"(\.txt)", R"(@="shared")");
  for (const char* name : {"CLSID", "Interface", "TypeLib"}) {
    key(classes + "\\" + name + R"(\{1})", R"(@="64")");
    key(classes + R"(\Wow6432Node\)" + name + R"(\{1})", R"(@="32")");
  }
  start();
  const auto seen = [](const char* path, REGSAM access) {
    return defaultText(HKEY_LOCAL_MACHINE, path, access);
  };
  EXPECT_EQ(seen(R"(Software\Classes\.txt)", read32), "shared");
  EXPECT_EQ(seen(R"(Software\Classes\clsid\{1})", read32), "32");
  EXPECT_EQ(seen(R"(Software\Classes\Interface\{1})", read32), "32");
  EXPECT_EQ(seen(R"(Software\Classes\TypeLib\{1})", read32), "64");
  EXPECT_EQ(seen(R"(Software\Classes\CLSID\{1})", read64), "64");
  EXPECT_EQ(seen(R"(Software\Classes\Wow6432Node\CLSID\{1})", read32), "32");
  EXPECT_EQ(seen(R"(Software\Wow6432Node\Classes\CLSID\{1})", read32), "32");
  EXPECT_EQ(seen(R"(Software\Wow6432Node\Classes\CLSID\{1})", read64), "32");
}

TEST_F(RegistryViewsTest, TheUsersClassesAndTheClassesRootAreRedirectedLikeTheMachines) {
  key(R"(HKEY_CURRENT_USER\Software\Classes\CLSID\{1})", R"(@="user 64")");
  key(R"(HKEY_CURRENT_USER\Software\Classes\Wow6432Node\CLSID\{1})", R"(@="user 32")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{2})", R"(@="machine 64")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID\{2})", R"(@="machine 32")");
  start();
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Classes\CLSID\{1})", read32), "user 32");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Classes\CLSID\{1})", read64), "user 64");
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, R"(CLSID\{1})", read32), "user 32");
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, R"(CLSID\{2})", read32), "machine 32");
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, R"(CLSID\{2})", read64), "machine 64");
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Wow6432Node\Classes\CLSID\{1})", read64),
            "user 32");
}

TEST_F(RegistryViewsTest, OtherKeysOfTheUserAndOfSystemAreTheSameInBothViews) {
  key(R"(HKEY_CURRENT_USER\Software\Vendor)", R"(@="user")");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\Setup)", R"(@="system")");
  start();
  EXPECT_EQ(defaultText(HKEY_CURRENT_USER, R"(Software\Vendor)", read32), "user");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(System\Setup)", read32), "system");
}

TEST_F(RegistryViewsTest, A32BitHandleOfSoftwareContinuesTheSameLogicalPath) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"(@="64")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\.txt)", R"(@="shared")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)", R"(@="32")");
  start();
  const OpenedKey software(HKEY_LOCAL_MACHINE, "Software", read32);
  EXPECT_EQ(subkeys(software), Names({"Vendor"}));
  EXPECT_EQ(defaultText(software, "Vendor", read32), "32");
  EXPECT_EQ(defaultText(software, R"(Classes\.txt)", read32), "shared");
  EXPECT_EQ(defaultText(software, R"(Wow6432Node\Vendor)", read32), "32");
  EXPECT_EQ(defaultText(software, "Vendor", read64), "64");
}

TEST_F(RegistryViewsTest, AHandleKeepsItsViewForWhatIsOpenedFromIt) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{1})", R"(@="64")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID\{1})", R"(@="32")");
  start();
  const OpenedKey wide(HKEY_LOCAL_MACHINE, R"(Software\Classes)", read64);
  const OpenedKey narrow(HKEY_LOCAL_MACHINE, R"(Software\Classes)", read32);
  EXPECT_EQ(defaultText(wide, R"(CLSID\{1})", KEY_READ), "64");
  EXPECT_EQ(defaultText(narrow, R"(CLSID\{1})", KEY_READ), "32");
  EXPECT_EQ(defaultText(wide, R"(CLSID\{1})", KEY_READ | KEY_WOW64_32KEY), "32");
}

TEST_F(RegistryViewsTest, A32BitComputerHasOneViewAndOrdinaryNames) {
  setting("bits", "32");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"(@="one")");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID\{1})", R"(@="class")");
  start();
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor)", read32), "one");
  EXPECT_EQ(defaultText(HKEY_LOCAL_MACHINE, R"(Software\Vendor)", read64), "one");
  EXPECT_EQ(defaultText(HKEY_CLASSES_ROOT, R"(CLSID\{1})", read32), "class");
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, R"(Software\Wow6432Node)", read32),
            ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryViewsTest, ANewKeyIsCreatedInTheViewOfTheCall) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)");
  machine::Registry& registry = start().registry();
  EXPECT_EQ(OpenedKey::create(HKEY_LOCAL_MACHINE, R"(Software\New\Deep)", all32).disposition,
            REG_CREATED_NEW_KEY);
  EXPECT_EQ(OpenedKey::create(HKEY_LOCAL_MACHINE, R"(Software\Wide)", all64).status, ERROR_SUCCESS);
  EXPECT_EQ(OpenedKey::create(HKEY_LOCAL_MACHINE, R"(Software\Classes\CLSID\{1})", all32).status,
            ERROR_SUCCESS);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\New\Deep)"), nullptr);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wide)"), nullptr);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\Wow6432Node\CLSID\{1})"), nullptr);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\New)"), nullptr);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Classes\CLSID)"), nullptr);
}

TEST_F(RegistryViewsTest, MakingSoftwareItselfInThe32BitViewMakesItsWow6432Node) {
  machine::Registry& registry = start().registry();
  EXPECT_EQ(openStatus(HKEY_LOCAL_MACHINE, "Software", read32), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenedKey::create(HKEY_LOCAL_MACHINE, "Software", all32).status, ERROR_SUCCESS);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\Software\Wow6432Node)"), nullptr);
}

TEST_F(RegistryViewsTest, DeletesOnAPredefinedRootActInThe32BitView) {
  for (const char* vendor : {"A", "B"}) {
    key(std::string(R"(HKEY_LOCAL_MACHINE\SOFTWARE\)") + vendor);
    key(std::string(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\)") + vendor);
  }
  machine::Registry& registry = start().registry();
  EXPECT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, uR"(Software\A)"), ERROR_SUCCESS);
  EXPECT_EQ(SHDeleteKeyW(HKEY_LOCAL_MACHINE, uR"(Software\B)"), ERROR_SUCCESS);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\A)"), nullptr);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\B)"), nullptr);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\A)"), nullptr);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\B)"), nullptr);
}

TEST_F(RegistryViewsTest, ADeleteThroughA64BitHandleActsInThe64BitView) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)");
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)");
  machine::Registry& registry = start().registry();
  const OpenedKey software(HKEY_LOCAL_MACHINE, "Software", all64);
  EXPECT_EQ(RegDeleteKeyW(software, u"Vendor"), ERROR_SUCCESS);
  EXPECT_EQ(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)"), nullptr);
  EXPECT_NE(registry.find(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\Vendor)"), nullptr);
}

TEST_F(RegistryViewsTest, BothViewFlagsAtOnceAreRefused) {
  start();
  EXPECT_EQ(
      openStatus(HKEY_LOCAL_MACHINE, "Software", KEY_READ | KEY_WOW64_64KEY | KEY_WOW64_32KEY),
      ERROR_INVALID_PARAMETER);
}

}  // namespace
}  // namespace zelvreg::fixture
