#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include "machine/RegistryCalls.h"
#include "machine/registry/Registry.h"
#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

using Names = std::vector<std::string>;

class ClassesRootTest : public MachineFixture {
 protected:
  void ofMachine(const std::string& path, std::string_view values = {}) {
    key(R"(HKEY_LOCAL_MACHINE\Software\Classes\)" + path, values);
  }
  void ofUser(const std::string& path, std::string_view values = {}) {
    key(R"(HKEY_CURRENT_USER\Software\Classes\)" + path, values);
  }
  [[nodiscard]] bool machineHas(const std::string& path) const {
    return computer().registry().find(R"(HKEY_LOCAL_MACHINE\Software\Classes\)" + path) != nullptr;
  }
  [[nodiscard]] bool userHas(const std::string& path) const {
    return computer().registry().find(R"(HKEY_CURRENT_USER\Software\Classes\)" + path) != nullptr;
  }
};

TEST_F(ClassesRootTest, ListsBothSidesInNameOrderWithoutDoubles) {
  ofMachine(".b");
  ofMachine(".D");
  ofMachine("Shared");
  ofUser(".a");
  ofUser(".c");
  ofUser("SHARED");
  start();
  EXPECT_EQ(subkeys(HKEY_CLASSES_ROOT), Names({".a", ".b", ".c", ".D", "SHARED"}));
}

TEST_F(ClassesRootTest, ListsInnerKeysMergedToo) {
  ofMachine(R"(app\shell)");
  ofUser(R"(app\DefaultIcon)");
  start();
  EXPECT_EQ(subkeys(OpenedKey(HKEY_CLASSES_ROOT, "app", read32)), Names({"DefaultIcon", "shell"}));
}

TEST_F(ClassesRootTest, AnIndexCanBeAskedInAnyOrderAndAfterChanges) {
  ofMachine("b");
  ofMachine("d");
  ofUser("a");
  ofUser("c");
  start();
  const auto nameAt = [](DWORD index) {
    std::array<char16_t, 16> name{};
    const LONG status = RegEnumKeyW(HKEY_CLASSES_ROOT, index, name.data(), 16);
    return status == ERROR_SUCCESS ? utf8(name.data()) : std::to_string(status);
  };
  EXPECT_EQ(nameAt(3), "d");
  EXPECT_EQ(nameAt(1), "b");
  EXPECT_EQ(nameAt(4), "259");
  EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, u"a"), ERROR_SUCCESS);
  EXPECT_EQ(nameAt(1), "c");
}

TEST_F(ClassesRootTest, ReadsAValueFromTheUsersKeyFirst) {
  ofMachine("app", "\"both\"=\"machine\"\n\"machine\"=\"m\"");
  ofUser("app", "\"both\"=\"user\"\n\"user\"=\"u\"");
  start();
  const OpenedKey app(HKEY_CLASSES_ROOT, "app", read32);
  EXPECT_EQ(text(app, "both"), "user");
  EXPECT_EQ(text(app, "machine"), "m");
  EXPECT_EQ(valueNames(app), Names({"both", "user", "machine"}));
}

TEST_F(ClassesRootTest, ANewKeyGoesToTheMachine) {
  ofUser(R"(app\shell)");
  start();
  EXPECT_EQ(OpenedKey::create(HKEY_CLASSES_ROOT, R"(new\inner)", all32).disposition,
            REG_CREATED_NEW_KEY);
  EXPECT_EQ(OpenedKey::create(HKEY_CLASSES_ROOT, R"(app\new)", all32).disposition,
            REG_CREATED_NEW_KEY);
  const OpenedKey shell(HKEY_CLASSES_ROOT, R"(app\shell)", all32);
  EXPECT_EQ(OpenedKey::create(shell, "open", all32).status, ERROR_SUCCESS);
  EXPECT_TRUE(machineHas(R"(new\inner)"));
  EXPECT_TRUE(machineHas(R"(app\new)"));
  EXPECT_TRUE(machineHas(R"(app\shell\open)"));
  EXPECT_FALSE(userHas("new"));
  EXPECT_FALSE(userHas(R"(app\new)"));
  EXPECT_FALSE(userHas(R"(app\shell\open)"));
}

TEST_F(ClassesRootTest, AnExistingKeyOfTheUserIsOpenedNotMade) {
  ofUser("app");
  start();
  EXPECT_EQ(OpenedKey::create(HKEY_CLASSES_ROOT, "app", all32).disposition,
            REG_OPENED_EXISTING_KEY);
  EXPECT_FALSE(machineHas("app"));
}

TEST_F(ClassesRootTest, AWriteGoesToTheUsersKeyIfItIsThere) {
  ofMachine("both");
  ofMachine("machine");
  ofUser("both");
  start();
  EXPECT_EQ(setText(OpenedKey(HKEY_CLASSES_ROOT, "both", all32), "x", "1"), ERROR_SUCCESS);
  EXPECT_EQ(setText(OpenedKey(HKEY_CLASSES_ROOT, "machine", all32), "x", "2"), ERROR_SUCCESS);
  EXPECT_EQ(text(OpenedKey(HKEY_CURRENT_USER, R"(Software\Classes\both)", read32), "x"), "1");
  EXPECT_EQ(text(OpenedKey(HKEY_LOCAL_MACHINE, R"(Software\Classes\both)", read32), "x"),
            "(error 2)");
  EXPECT_EQ(text(OpenedKey(HKEY_LOCAL_MACHINE, R"(Software\Classes\machine)", read32), "x"), "2");
}

TEST_F(ClassesRootTest, ADeleteTakesOneKeyPerCallTheUsersFirst) {
  ofMachine("both");
  ofUser("both");
  start();
  EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, u"both"), ERROR_SUCCESS);
  EXPECT_FALSE(userHas("both"));
  EXPECT_TRUE(machineHas("both"));
  EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, u"both"), ERROR_SUCCESS);
  EXPECT_FALSE(machineHas("both"));
  EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, u"both"), ERROR_FILE_NOT_FOUND);
}

TEST_F(ClassesRootTest, ATreeIsDeletedOnOneSideOnly) {
  ofMachine(R"(both\inner)");
  ofUser(R"(both\inner)");
  start();
  EXPECT_EQ(SHDeleteKeyW(HKEY_CLASSES_ROOT, u"both"), ERROR_SUCCESS);
  EXPECT_FALSE(userHas("both"));
  EXPECT_TRUE(machineHas(R"(both\inner)"));
}

TEST_F(ClassesRootTest, AValueIsDeletedFromTheUsersKeyOnlyWhereThatIsThere) {
  ofMachine("app", "\"a\"=\"machine\"\n\"b\"=\"machine\"");
  ofUser("app", R"("a"="user")");
  start();
  const OpenedKey app(HKEY_CLASSES_ROOT, "app", all32);
  EXPECT_EQ(RegDeleteValueW(app, u"a"), ERROR_SUCCESS);
  EXPECT_EQ(text(app, "a"), "machine");
  EXPECT_EQ(RegDeleteValueW(app, u"a"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(text(app, "b"), "machine");
}

TEST_F(ClassesRootTest, AHandleLivesOnTheMachinesKeyWhenTheUsersIsDeleted) {
  ofMachine("app", R"(@="machine")");
  ofUser("app", R"(@="user")");
  start();
  const OpenedKey app(HKEY_CLASSES_ROOT, "app", all32);
  RegDeleteKeyW(HKEY_CURRENT_USER, uR"(Software\Classes\app)");
  EXPECT_EQ(text(app, ""), "machine");
  RegDeleteKeyW(HKEY_LOCAL_MACHINE, uR"(Software\Classes\app)");
  EXPECT_EQ(text(app, ""), "(error 1018)");
}

TEST_F(ClassesRootTest, IsEmptyWhereThereAreNoClasses) {
  start();
  EXPECT_EQ(subkeys(HKEY_CLASSES_ROOT), Names());
  EXPECT_EQ(openStatus(HKEY_CLASSES_ROOT, "app", read32), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(OpenedKey::create(HKEY_CLASSES_ROOT, "app", all32).status, ERROR_SUCCESS);
  EXPECT_TRUE(machineHas("app"));
}

}  // namespace
}  // namespace zelvreg::fixture
