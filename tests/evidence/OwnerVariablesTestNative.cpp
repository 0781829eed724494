// The variables of a user who is not signed in: only the emulated computer lets a test give it one.
#include "evidence/OwnerVariables.h"

#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

const std::u16string bea = u"S-1-5-21-9-9-9-1002";
const std::string beasKey = R"(HKEY_USERS\S-1-5-21-9-9-9-1002)";
const std::string environment = R"(HKEY_CURRENT_USER\Environment)";

class OwnerVariablesTest : public fixture::MachineFixture {
 protected:
  OwnerVariablesTest() {
    key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\ProfileList)"
        R"(\S-1-5-21-9-9-9-1002)",
        R"("ProfileImagePath"="%SystemDrive%\\Users\\Bea")");
  }

  static std::string expanded(std::string_view text, const std::u16string& owner = {}) {
    return OwnerVariables().expand(text, owner, ProgramView::Bits64).text;
  }
  static bool isComplete(std::string_view text) {
    return OwnerVariables().expand(text, {}, ProgramView::Bits64).isComplete;
  }
  static bool hasUsersVariable(std::string_view text) {
    return OwnerVariables().expand(text, {}, ProgramView::Bits64).hasUsersVariable;
  }
};

TEST_F(OwnerVariablesTest, AProfileSaysWhatFollowsFromIt) {
  start();
  EXPECT_EQ(expanded("%USERPROFILE%|%UserName%|%HOMEDRIVE%|%HOMEPATH%", bea),
            R"(C:\Users\Bea|Bea|C:|\Users\Bea)");
  EXPECT_EQ(expanded("%APPDATA%|%LOCALAPPDATA%", bea),
            R"(C:\Users\Bea\AppData\Roaming|C:\Users\Bea\AppData\Local)");
  EXPECT_EQ(expanded("%TEMP%|%TMP%", bea),
            R"(C:\Users\Bea\AppData\Local\Temp|C:\Users\Bea\AppData\Local\Temp)");
}

TEST_F(OwnerVariablesTest, AProfileThatIsOnlyADriveHasNoFolderOnIt) {
  key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows NT\CurrentVersion\ProfileList\S-1-5-21-7)",
      R"("ProfileImagePath"="E:")");
  start();
  EXPECT_EQ(expanded("%HOMEDRIVE%|%USERPROFILE%", u"S-1-5-21-7"), "E:|E:");
  EXPECT_EQ(OwnerVariables().value("homepath", u"S-1-5-21-7", ProgramView::Bits64), "");
}

TEST_F(OwnerVariablesTest, FoldersThatTheUserHasMovedAreElsewhere) {
  key(beasKey + R"(\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)",
      R"("AppData"="D:\\Roams")"
      "\n"
      R"("Local AppData"="%USERPROFILE%\\Stays")");
  start();
  EXPECT_EQ(expanded("%APPDATA%|%LOCALAPPDATA%", bea), R"(D:\Roams|C:\Users\Bea\Stays)");
}

TEST_F(OwnerVariablesTest, WhatTheUserHasSetComesFirst) {
  key(beasKey + R"(\Environment)", R"("TEMP"="D:\\Temp")"
                                   "\n"
                                   R"("BOTH"="set")");
  key(beasKey + R"(\Volatile Environment)", R"("BOTH"="of the session")"
                                            "\n"
                                            R"("SESSION"="of the session")");
  start();
  EXPECT_EQ(expanded("%TEMP%|%BOTH%|%SESSION%", bea), R"(D:\Temp|set|of the session)");
}

TEST_F(OwnerVariablesTest, AnotherUserHasOnlyWhatEveryoneHasOfTheProcess) {
  variable("ONLYHERE", "x");
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\Session Manager\Environment)",
      R"("COMPUTERS"="y")");
  start();
  EXPECT_EQ(expanded("%ONLYHERE%|%SystemDrive%|%computers%"), "x|C:|y");
  EXPECT_EQ(expanded("%ONLYHERE%|%SystemDrive%|%computers%", bea), "%ONLYHERE%|C:|y");
  EXPECT_TRUE(isCommonVariable("WinDir"));
  EXPECT_FALSE(isCommonVariable("TEMP"));
}

TEST_F(OwnerVariablesTest, AUserWithoutAProfileHasNone) {
  start();
  EXPECT_EQ(expanded("%USERPROFILE%\\x", u"S-1-5-21-8"), "%USERPROFILE%\\x");
}

TEST_F(OwnerVariablesTest, WhatOnlyTheComputerHasIsNotTheUsers) {
  key(R"(HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Control\Session Manager\Environment)",
      R"("COMPUTERS"="y")"
      "\n"
      R"("BOTH"="y")");
  key(environment, R"("BOTH"="x")");
  start();
  EXPECT_FALSE(hasUsersVariable("%COMPUTERS%%WINDIR%"));
  EXPECT_TRUE(hasUsersVariable("%COMPUTERS%%BOTH%"));
  EXPECT_TRUE(hasUsersVariable("%BOTH%%COMPUTERS%"));
}

TEST_F(OwnerVariablesTest, ANameThatIsNotKnownStaysAndOnlyANameIsMissing) {
  start();
  for (const char* text : {"a %", "%", "100% of 5%", "%1%", "%*%", "%~dp0%", "%a\\b%", "%%"}) {
    EXPECT_EQ(expanded(text), text);
    EXPECT_TRUE(isComplete(text)) << text;
  }
  for (const char* text : {"%unknown%", "a %unknown% b", "%%unknown%", "%unknown% %"}) {
    EXPECT_EQ(expanded(text), text);
    EXPECT_FALSE(isComplete(text)) << text;
  }
  EXPECT_EQ(expanded("5% of %SystemDrive%"), "5% of C:");
}

TEST_F(OwnerVariablesTest, VariablesInVariablesAreExpandedEightDeep) {
  std::string lines;
  for (int number = 1; number <= 9; ++number) {
    lines += "\"V" + std::to_string(number) + "\"=\"%V" + std::to_string(number + 1) + "%\"\n";
  }
  key(environment, lines + "\"V10\"=\"end\"");
  start();
  EXPECT_EQ(expanded("%V3%"), "end");
  EXPECT_TRUE(isComplete("%V3%"));
  EXPECT_EQ(expanded("%V2%"), "%V10%");
  EXPECT_FALSE(isComplete("%V2%"));
}

TEST_F(OwnerVariablesTest, AsManyVariablesAreExpandedAsAPathCanNeed) {
  key(environment, R"("V"="x")");
  start();
  std::string text;
  for (int number = 0; number < 257; ++number) {
    text += "%V%";
  }
  EXPECT_EQ(expanded(text), std::string(256, 'x') + "%V%");
}

TEST_F(OwnerVariablesTest, TheFoldersOfProgramsAreThoseOfTheView) {
  variable("ProgramW6432", "C:\\Six");
  variable("ProgramFiles(x86)", "C:\\Three");
  variable("CommonProgramW6432", "C:\\SixCommon");
  variable("CommonProgramFiles(x86)", "C:\\ThreeCommon");
  start();
  const std::string text = "%ProgramFiles%|%CommonProgramFiles%";
  EXPECT_EQ(expanded(text), "C:\\Six|C:\\SixCommon");
  EXPECT_EQ(OwnerVariables().expand(text, {}, ProgramView::Bits32).text,
            "C:\\Three|C:\\ThreeCommon");
}

TEST_F(OwnerVariablesTest, EachUserHasMappedDrives) {
  key(R"(HKEY_CURRENT_USER\Network\Z)");
  key(R"(HKEY_CURRENT_USER\Network\Long)");
  key(beasKey + R"(\Network\y)");
  start();
  OwnerVariables variables;
  EXPECT_TRUE(variables.mapsDrive('Z', {}));
  EXPECT_TRUE(variables.mapsDrive('z', {}));
  EXPECT_FALSE(variables.mapsDrive('Y', {}));
  EXPECT_FALSE(variables.mapsDrive('L', {}));
  EXPECT_TRUE(variables.mapsDrive('Y', bea));
  EXPECT_FALSE(variables.mapsDrive('Z', bea));
}

TEST_F(OwnerVariablesTest, OnlyAnotherUsersKeyHasAnOwner) {
  start();
  OwnerVariables variables;
  EXPECT_EQ(variables.ownerOf({HiveHandle::Users, bea + u"\\Software"}), bea);
  EXPECT_EQ(variables.ownerOf({HiveHandle::CurrentUser, u"Software"}), u"");
  EXPECT_EQ(variables.ownerOf({HiveHandle::LocalMachine, u"SOFTWARE"}), u"");
}

}  // namespace
}  // namespace zelvreg
