#include "registry/Hives.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

// The settings' routines see the 32-bit view, whose keys lie here in the 64-bit one.
const std::string settings = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\HivesTest";
const std::string settingsBelowHive = "SOFTWARE\\HivesTest";

class HivesTest : public fixture::ComputerFixture {
 protected:
  HivesTest() { emptyKey(settings); }

  std::string read(const std::string& valueName, std::string before = "before") {
    readWorked = GetRegString(HiveHandle::LocalMachine, settingsBelowHive, valueName, before);
    return before;
  }

  bool readWorked = false;
};

class ParseKeyTest : public HivesTest {
 protected:
  void parse(const std::string& path) {
    key = path;
    form.dialogs.show = [this](const UserMessage& shown) {
      messages.push_back(shown.text);
      return Answer::Ok;
    };
    ParseKey(form.dialogs, key, hive);
  }

  std::string key;
  HiveHandle hive = HiveHandle::DynData;
  std::vector<std::string> messages;
};

TEST_F(ParseKeyTest, SplitsAtTheFirstBackslash) {
  parse("HKEY_LOCAL_MACHINE\\Software\\X");
  EXPECT_EQ(hive, HiveHandle::LocalMachine);
  EXPECT_EQ(key, "Software\\X");
  EXPECT_TRUE(messages.empty());
}

TEST_F(ParseKeyTest, AHiveAloneLeavesAnEmptyKey) {
  parse("HKEY_USERS");
  EXPECT_EQ(hive, HiveHandle::Users);
  EXPECT_EQ(key, "");
}

TEST_F(ParseKeyTest, AnUnknownHiveHasNoHandle) {
  parse("HKEY_NOTHING\\X");
  EXPECT_EQ(hive, HiveHandle::Unknown);
  EXPECT_EQ(key, "X");
}

TEST_F(ParseKeyTest, ATrailingBackslashIsRefusedWithAMessage) {
  parse("HKEY_USERS\\");
  EXPECT_EQ(hive, HiveHandle::DynData);
  EXPECT_EQ(key, "HKEY_USERS\\");
  EXPECT_EQ(messages, (std::vector<std::string>{"Incorrect Format:\n\nHKEY_USERS\\"}));
}

TEST_F(ParseKeyTest, ATextThatNamesNoHiveIsRefusedWithAMessage) {
  parse("HKLM\\Software");
  EXPECT_EQ(hive, HiveHandle::DynData);
  EXPECT_EQ(messages, (std::vector<std::string>{"Incorrect Format:\n\nHKLM\\Software"}));
}

TEST_F(HivesTest, ATextOfTheLargestSizeIsReturnedWholeWithoutATerminator) {
  setBytes(settings, "Long", REG_SZ, std::string(1024, 'a'));
  EXPECT_EQ(read("Long"), std::string(1024, 'a'));
  EXPECT_TRUE(readWorked);
}

TEST_F(HivesTest, ALongerTextCountsAsAbsent) {
  setBytes(settings, "Longer", REG_SZ, std::string(1025, 'a'));
  EXPECT_EQ(read("Longer"), "");
  EXPECT_FALSE(readWorked);
}

TEST_F(HivesTest, ATextLosesItsTerminator) {
  setText(settings, "Text", "some text");
  EXPECT_EQ(read("Text"), "some text");
}

TEST_F(HivesTest, AnAbsentValueOrKeyClearsTheResult) {
  EXPECT_EQ(read("None"), "");
  EXPECT_FALSE(readWorked);
  std::string result = "before";
  EXPECT_FALSE(GetRegString(HiveHandle::LocalMachine, "SOFTWARE\\HivesTest\\None", "", result));
  EXPECT_EQ(result, "");
}

TEST_F(HivesTest, ANumberIsReadFromItsBytesWithoutPadding) {
  setNumber(settings, "Odd", 0x00000102);
  setNumber(settings, "Small", 255);
  setNumber(settings, "Exact", 0x10203040);
  setNumber(settings, "Zero", 0);
  EXPECT_EQ(read("Odd", ""), "18");
  EXPECT_EQ(read("Small", ""), "255");
  EXPECT_EQ(read("Exact", ""), "270544960");
  EXPECT_EQ(read("Zero", ""), "0");
}

TEST_F(HivesTest, TheDigitsOfANumberStandBehindWhatTheResultHeld) {
  setNumber(settings, "Small", 0x12);
  EXPECT_EQ(read("Small", "1"), "65554");  // 0x1 0012, of the digits "1", "0", "0", "12"
}

TEST_F(HivesTest, DigitsThatMakeNoNumberStayATextWithTheMarkOfOne) {
  setNumber(settings, "Small", 0x12);
  EXPECT_EQ(read("Small", "before"), "&hbefore0012");
  EXPECT_EQ(read("Small", "12345678"), "&h123456780012");
}

TEST_F(HivesTest, ATextWithVariablesLeavesTheResultAndStillCounts) {
  setText(settings, "Expand", "%windir%", REG_EXPAND_SZ);
  EXPECT_EQ(read("Expand"), "before");
  EXPECT_TRUE(readWorked);
}

TEST_F(HivesTest, SettingsLiveInThe32BitView) {
  setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\HivesTest", "Where", "64");
  setText(settings, "Where", "32");
  EXPECT_EQ(read("Where"), "32");
}

TEST_F(HivesTest, SavingMakesTheKeyAndTheSystemAddsTheTerminator) {
  EXPECT_TRUE(
      SaveRegString(HiveHandle::LocalMachine, settingsBelowHive + "\\New\\Key\\", "Name", "text"));
  EXPECT_EQ(bytesOf(settings + "\\New\\Key", "Name"), std::string("text\0", 5));
}

TEST_F(HivesTest, SavingFailsOnAnUnknownHive) {
  EXPECT_FALSE(SaveRegString(HiveHandle::Unknown, settingsBelowHive, "Name", "text"));
}

TEST_F(HivesTest, NumbersAndTextsAreSetByTheFullPathOfAnExistingKey) {
  SetRegDword(form, "HKEY_LOCAL_MACHINE\\" + settingsBelowHive, "Number", 7);
  SetRegStringValue(form, "HKEY_LOCAL_MACHINE\\" + settingsBelowHive, "Text", "abc");
  EXPECT_EQ(bytesOf(settings, "Number"), std::string("\x07\0\0\0", 4));
  EXPECT_EQ(storedText(settings, "Text"), "abc");
}

TEST_F(HivesTest, SettingCreatesNoKey) {
  SetRegDword(form, "HKEY_LOCAL_MACHINE\\" + settingsBelowHive + "\\None", "Number", 7);
  EXPECT_FALSE(hasKey(settings + "\\None"));
}

TEST_F(HivesTest, SettingBelowAnUnknownHiveWritesNothing) {
  setNumber(settings, "Number", 1);
  SetRegDword(form, "HKEY_OF_NOBODY\\" + settingsBelowHive, "Number", 7);
  EXPECT_EQ(bytesOf(settings, "Number"), std::string("\x01\0\0\0", 4));
}

TEST_F(HivesTest, ARefusedPathIsLookedForUnderTheHiveOfThePathBefore) {
  SetRegDword(form, "HKEY_LOCAL_MACHINE\\" + settingsBelowHive, "Number", 1);
  SetRegDword(form, settingsBelowHive, "Number", 2);
  EXPECT_EQ(bytesOf(settings, "Number"), std::string("\x02\0\0\0", 4));
}

}  // namespace
}  // namespace zelvreg
