#include "form/Form42.h"
#include "text/Pattern.h"
#include "text/Wide.h"
#include "undo/FixListBackupFixture.h"
#include "undo/UndoPage.h"

namespace zelvreg {
namespace {

const std::string user = "HKEY_CURRENT_USER\\Software\\FixListBackupTest";

class FixListBackupTest : public FixListBackupFixture {};

TEST_F(FixListBackupTest, EachTickedRowIsALineWithAnEmptyOneAfterIt) {
  addTicked("first");
  addTicked("left out");
  addTicked(" a,b ", "", "HKEY_CLASSES_ROOT", ".x\\\"y\"");
  form.View2.setChecked(2, false);
  Command30_Click(form);
  EXPECT_EQ(copy("1"),
            "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n"
            "HKEY_CLASSES_ROOT,.x\\\"y\",, a,b \r\n\r\n");
}

TEST_F(FixListBackupTest, TheCopyTakesTheNextNumberOfTheList) {
  setText(settings, "cnt", "41");
  addTicked("first");
  Command30_Click(form);
  EXPECT_EQ(storedText(settings, "cnt"), "42");
  const std::string label = stamp("42");
  EXPECT_EQ(matchesPattern(label, "##_##_####_##.##.##"), Match::Yes);
  EXPECT_EQ(storedText(settings + "\\file", label), label);
  EXPECT_EQ(copy("42"), "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n");
  DeleteFileW(Wide(pathOf(label)).get());
}

TEST_F(FixListBackupTest, ARunWithoutTicksMakesAnEmptyCopyAndAnEntry) {
  addTicked("first");
  form.View2.setChecked(1, false);
  Command30_Click(form);
  EXPECT_EQ(storedText(settings, "cnt"), "1");
  EXPECT_EQ(copy("1"), "");
}

TEST_F(FixListBackupTest, FoldersThatAreThereAlreadyAreUsed) {
  makeFolder(form.programFolder + "\\backup\\fixreg");
  addTicked("first");
  Command30_Click(form);
  EXPECT_EQ(copy("1"), "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n");
}

TEST_F(FixListBackupTest, ACopyIsListedButCannotBeRestoredFrom) {
  addTicked("first");
  Command30_Click(form);
  chameleonButton1_Click(form);
  ASSERT_EQ(form.View3.count(), 1U);
  EXPECT_EQ(form.View3.text(1, 0), stamp("1"));
  View3_ItemClick(form, 1);
  chameleonButton2_Click(form);
  const std::string beside = form.programFolder + "\\" + stamp("1") + ".txt";
  EXPECT_EQ(readFileText(beside).value_or("(none)"), "");
  EXPECT_EQ(copy("1"), "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n");
  DeleteFileW(Wide(beside).get());
}

TEST_F(FixListBackupTest, RemovingTheEntryLeavesTheCopy) {
  addTicked("first");
  Command30_Click(form);
  const std::string label = stamp("1");
  chameleonButton1_Click(form);
  View3_ItemClick(form, 1);
  chameleonButton3_Click(form);
  EXPECT_EQ(stamp("1"), "(none)");
  EXPECT_EQ(storedText(settings + "\\file", label), label);
  EXPECT_EQ(readFileText(pathOf(label)), "HKEY_USERS,Software\\Key,bad value,first\r\n\r\n");
  DeleteFileW(Wide(pathOf(label)).get());
}

TEST_F(FixListBackupTest, OneOldCopyIsWrittenBackFieldByField) {
  emptyKey(user);
  const std::string path = pathOf("23_03_2005_13.04.13");
  makeFile(path,
           "HKEY_CURRENT_USER,Software\\FixListBackupTest,name,data\r\n\r\n"
           "HKEY_CURRENT_USER,Software\\FixListBackupTest,comma,cut,off\r\n   \r\n"
           "HKEY_CURRENT_USER,Software\\FixListBackupTest,short\r\n"
           "HKEY_CURRENT_USER,Software\\FixListBackupTest,, kept \r\n");
  int messages = 0;
  form.dialogs.show = [&messages](const UserMessage& /*message*/) {
    ++messages;
    return Answer::Ok;
  };
  Command31_Click(form);
  // A blank line is no path that could be refused.
  EXPECT_EQ(messages, 0);
  EXPECT_EQ(storedText(user, "name"), "data");
  EXPECT_EQ(storedText(user, "comma"), "cut");
  EXPECT_EQ(storedText(user, ""), " kept ");
  EXPECT_NE(readFileText(path), std::nullopt);
  DeleteFileW(Wide(path).get());
  removeKey(user);
}

TEST_F(FixListBackupTest, OtherCopiesAreNeverWrittenBack) {
  emptyKey(user);
  const std::string path = pathOf("23_03_2005_13.04.14");
  makeFile(path, "HKEY_CURRENT_USER,Software\\FixListBackupTest,name,data\r\n\r\n");
  Command31_Click(form);
  EXPECT_EQ(storedText(user, "name"), "(none)");
  DeleteFileW(Wide(path).get());
  removeKey(user);
}

}  // namespace
}  // namespace zelvreg
