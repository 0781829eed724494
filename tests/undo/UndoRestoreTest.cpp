#include "undo/UndoRestore.h"

#include "support/ComputerFixture.h"
#include "undo/JournalFile.h"

namespace zelvreg {
namespace {

// All writes go to the 32-bit view.
const std::string machineKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\UndoRestoreTest";
const std::string classesKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\UndoRestoreTest";
const std::string userKey = "HKEY_CURRENT_USER\\Software\\UndoRestoreTest";
const std::string usersKey = "HKEY_USERS\\UndoRestoreTest";

class UndoRestoreTest : public fixture::ComputerFixture {
 protected:
  UndoRestoreTest() { removeKeys(); }
  ~UndoRestoreTest() override { removeKeys(); }

  static void removeKeys() {
    for (const auto& key : {machineKey, classesKey, userKey, usersKey}) {
      removeKey(key);
    }
  }
  void restore(const JournalRecord& record) { restoreJournal(form, journalFile({record})); }
};

TEST_F(UndoRestoreTest, AnIconIsRestoredAsTheDefaultOfItsKey) {
  restore({"6", "2", "\\defaulticon", "C:\\a.ico", "UndoRestoreTest"});
  EXPECT_EQ(storedText(classesKey + "\\defaulticon", ""), "C:\\a.ico");
}

TEST_F(UndoRestoreTest, ASharedDllIsRestoredAsUsedOnce) {
  makeKey(machineKey);
  restore({"2", "1", "Software\\UndoRestoreTest", "C:\\a.dll", "C:\\a.dll"});
  EXPECT_EQ(bytesOf(machineKey, "C:\\a.dll"), std::string("\1\0\0\0", 4));
}

TEST_F(UndoRestoreTest, ASharedDllOfTheClassesIsRestoredThere) {
  makeKey(classesKey);
  restore({"2", "2", "UndoRestoreTest", "C:\\a.dll", "C:\\b.dll"});
  EXPECT_EQ(bytesOf(classesKey, "C:\\b.dll"), std::string("\1\0\0\0", 4));
  EXPECT_EQ(bytesOf(classesKey, "C:\\a.dll"), "(none)");
}

TEST_F(UndoRestoreTest, ASharedDllMakesNoKey) {
  restore({"2", "1", "Software\\UndoRestoreTest", "C:\\a.dll", "C:\\a.dll"});
  EXPECT_FALSE(hasKey(machineKey));
}

TEST_F(UndoRestoreTest, AnApplicationPathIsRestoredAsTheDefaultOfItsKey) {
  restore({"3", "1", "Software\\UndoRestoreTest", "a.exe", "C:\\a.exe"});
  EXPECT_EQ(storedText(machineKey + "\\a.exe", ""), "C:\\a.exe");
}

TEST_F(UndoRestoreTest, AFileClassIsRestoredAsItsDefaultAndNeverEmpty) {
  restore({"7", "2", "UndoRestoreTest\\shell", "C:\\a.exe", "UndoRestoreTest"});
  EXPECT_EQ(storedText(classesKey, ""), "C:\\a.exe");
  restore({"7", "2", "UndoRestoreTest\\shell", "", "UndoRestoreTest"});
  EXPECT_EQ(storedText(classesKey, ""), " ");
}

TEST_F(UndoRestoreTest, ThreeKindsGoToTheirRootsWhateverTheDigit) {
  restore({"11", "1", "Software\\UndoRestoreTest", "name", "user"});
  EXPECT_EQ(storedText(userKey, "name"), "user");
  restore({"12", "1", "UndoRestoreTest", "name", "users"});
  EXPECT_EQ(storedText(usersKey, "name"), "users");
  restore({"13", "3", "Software\\UndoRestoreTest", "name", "machine"});
  EXPECT_EQ(storedText(machineKey, "name"), "machine");
}

TEST_F(UndoRestoreTest, ACodeOfThreeDigitsActsByItsFirstTwo) {
  restore({"133", "3", "Software\\UndoRestoreTest", "name", "record"});
  EXPECT_EQ(storedText(machineKey, "name"), "record");
  restore({"771", "2", "UndoRestoreTest", "name", "class"});
  EXPECT_EQ(storedText(classesKey, "name"), "class");
}

TEST_F(UndoRestoreTest, AnyOtherKindIsRestoredWithNameAndDataExchanged) {
  restore({"1", "1", "Software\\UndoRestoreTest", "font.ttf", "Font (TrueType)"});
  EXPECT_EQ(storedText(machineKey, "font.ttf"), "Font (TrueType)");
}

TEST_F(UndoRestoreTest, TheOtherDigitsWriteNothing) {
  makeKey(machineKey);
  makeKey(userKey);
  const std::string key = "Software\\UndoRestoreTest";
  for (const char* digit : {"3", "4", "", "x"}) {
    for (const char* kind : {"1", "2", "3"}) {
      restore({kind, digit, key, "name", "text"});
    }
    for (const char* kind : {"6", "7"}) {
      restore({kind, digit, "key", "data", key});
    }
  }
  for (const std::string& place : {machineKey, userKey}) {
    for (const char* name : {"", "name", "text"}) {
      EXPECT_EQ(bytesOf(place, name), "(none)") << place << " " << name;
    }
    EXPECT_FALSE(hasKey(place + "\\name"));
    EXPECT_FALSE(hasKey(place + "\\defaulticon"));
  }
}

TEST_F(UndoRestoreTest, ADigitThatIsNoNumberIsThatOfTheRecordBefore) {
  restoreJournal(form, journalFile({{"1", "1", "Software\\UndoRestoreTest", "first", "x"}}) +
                           journalFile({{"1", "", "Software\\UndoRestoreTest", "second", "y"}}));
  EXPECT_EQ(storedText(machineKey, "second"), "y");
}

TEST_F(UndoRestoreTest, TwiceIsTheSameAsOnce) {
  const JournalRecord record{"1", "1", "Software\\UndoRestoreTest", "name", "text"};
  restore(record);
  restore(record);
  EXPECT_EQ(storedText(machineKey, "name"), "text");
}

TEST_F(UndoRestoreTest, AnEmptyFileWritesNothing) {
  restoreJournal(form, "");
  EXPECT_FALSE(hasKey(machineKey));
}

TEST_F(UndoRestoreTest, AKeyThatWasCutIsRestoredCut) {
  const std::string longKey = "Software\\UndoRestoreTest\\" + std::string(150, 'k');
  restore({"1", "1", longKey, "name", "text"});
  EXPECT_EQ(storedText(machineKey + "\\" + std::string(150 - 25, 'k'), "name"), "text");
}

TEST_F(UndoRestoreTest, ANameAndATextThatWereCutComeBackCut) {
  restore({"13", "1", "Software\\UndoRestoreTest", std::string(60, 'v'), std::string(60, 't')});
  EXPECT_EQ(storedText(machineKey, std::string(50, 'v')), std::string(50, 't'));
}

TEST_F(UndoRestoreTest, ADigitBeyondSixteenBitsIsThatOfTheRecordBefore) {
  const auto record = [](const char* hive, const char* value) {
    return journalFile({{"771", hive, "Software\\UndoRestoreTest", value, "data"}});
  };
  restoreJournal(form, record("1", "a") + record("1e300", "b") + record("-32769", "c") +
                           record("word", "d") + record("32767", "e"));
  for (const char* value : {"a", "b", "c", "d"}) {
    EXPECT_EQ(storedText(machineKey, value), "data") << value;
  }
  EXPECT_EQ(storedText(machineKey, "e"), "(none)");
}

}  // namespace
}  // namespace zelvreg
