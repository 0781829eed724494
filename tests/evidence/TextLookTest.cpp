#include "evidence/TextLook.h"

#include <algorithm>

#include "evidence/Reasons.h"
#include "runtime/Environment.h"
#include "support/ComputerFixture.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

const std::string home = "C:\\EvidenceTest";
const std::string environment = "HKEY_CURRENT_USER\\Environment";
const std::string appPath =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"
    "evidencelisted.exe";

// The names of the reasons that a text has.
class TextLookTest : public fixture::ComputerFixture {
 protected:
  TextLookTest() {
    makeFile(home + "\\there.exe");
    makeFile(home + "\\with blank\\there too.exe");
    makeFile(home + "\\library.dll");
    makeFile(home + "\\shortcut.lnk");
  }

  Evidence look(const std::string& text, Reading reading = Reading::Command,
                const TextOwner& owner = {}) {
    TextLook texts(Shares::Refused, 1);
    return texts.at(text, owner, reading);
  }
  std::string reasonsOf(const std::string& text, Reading reading = Reading::Command,
                        const TextOwner& owner = {}) {
    return reasonCodes(look(text, reading, owner));
  }
};

TEST_F(TextLookTest, WhatIsThereIsFoundInWhateverWayItIsWritten) {
  for (const std::string text :
       {"C:\\EvidenceTest\\there.exe", "\"C:\\EvidenceTest\\there.exe\" /x",
        "C:\\EvidenceTest\\there.exe /x", "C:\\EvidenceTest\\there.exe/x",
        "C:/EvidenceTest/there.exe", "C:\\EvidenceTest\\with blank\\there too.exe -a b",
        "\\??\\C:\\EvidenceTest\\there.exe", "\\\\?\\C:\\EvidenceTest\\there.exe",
        "file:///C:/EvidenceTest/there.exe", "C:\\EvidenceTest\\gone\\..\\there.exe",
        "C:\\EvidenceTest", "C:\\EvidenceTest\\", "C:\\EvidenceTest\\there.exe,-3"}) {
    EXPECT_EQ(reasonsOf(text), "found") << text;
  }
}

TEST_F(TextLookTest, WhatIsGoneIsAbsentAndSoMayBeItsFolder) {
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\gone.exe"), "absent");
  EXPECT_EQ(reasonsOf("\"C:\\EvidenceTest\\gone.exe\" C:\\EvidenceTest\\there.exe"), "absent");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\gone\\gone.exe"), "absent parent-absent");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\100% gone\\x.exe"), "absent parent-absent");
  // A folder that the text only begins with is not what it names.
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest gone\\gone.exe"), "absent parent-absent");
}

TEST_F(TextLookTest, TheSystemAddsExtensions) {
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\there"), "found-with-extension");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\there /x"), "found-with-extension");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\shortcut"), "found-with-extension");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\library", Reading::Library), "found-with-extension");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\there", Reading::File), "absent");
}

TEST_F(TextLookTest, NothingIsAddedWhereTheTextShowsTheExtension) {
  makeFile(home + "\\gone.exe,1.exe");
  makeFile(home + "\\gone.exe extra.exe");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\gone.exe,1", Reading::Start), "absent");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\gone.exe extra", Reading::Start), "absent");
  makeFile(home + "\\v1.2.exe");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\v1.2", Reading::Start), "found-with-extension");
}

TEST_F(TextLookTest, ANameWithoutAFolderIsSought) {
  makeFile(environmentVariable("WINDIR") + "\\evidencesought.exe");
  setText(appPath, "", "\"" + home + "\\there.exe\"");
  EXPECT_EQ(reasonsOf("evidencesought.exe /x"), "found-on-path");
  EXPECT_EQ(reasonsOf("evidencesought"), "found-on-path");
  EXPECT_EQ(reasonsOf("evidencelisted.exe"), "found-on-path");
  EXPECT_EQ(reasonsOf("evidencegone.exe"), "absent bare-name");
  EXPECT_EQ(reasonsOf("evidencegone"), "absent place-unknown");
  EXPECT_EQ(reasonsOf("somewhere\\evidencegone.exe"), "absent place-unknown");
  removeKey(appPath);
}

TEST_F(TextLookTest, TheFoldersOfTheUsersPathAreSought) {
  setText(environment, "Path", "%EVIDENCEHOME%\\with blank", REG_EXPAND_SZ);
  setText(environment, "EVIDENCEHOME", home);
  makeFile(home + "\\with blank\\evidenceonpath.exe");
  EXPECT_EQ(reasonsOf("evidenceonpath.exe"), "found-on-path");
  removeKey(environment);
}

TEST_F(TextLookTest, BehindALauncherItsTargetCounts) {
  EXPECT_EQ(reasonsOf("cmd /c start \"\" \"C:\\EvidenceTest\\there.exe\""),
            "found-behind-launcher");
  EXPECT_EQ(reasonsOf("rundll32.exe C:\\EvidenceTest\\library.dll,Entry"), "found-behind-launcher");
  EXPECT_EQ(reasonsOf("rundll32.exe C:\\EvidenceTest\\library,Entry"), "found-behind-launcher");
  EXPECT_EQ(reasonsOf("rundll32.exe C:\\EvidenceTest\\gone.dll,Entry"), "absent");
  EXPECT_EQ(reasonsOf("cmd /c echo x > y"), "launcher-unclear");
  EXPECT_EQ(reasonsOf("cmd /c \\\\server\\share\\x.exe"), "share");
}

TEST_F(TextLookTest, AProgramWithTheNameOfALauncherIsNone) {
  makeFile(home + "\\mmc.exe");
  makeFile(home + "\\java.exe");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\mmc.exe boot"), "found");
  EXPECT_EQ(reasonsOf("\"C:\\EvidenceTest\\java.exe\" -jar C:\\gone.jar"), "found");
}

TEST_F(TextLookTest, EverySpellingOfThePathOfASystemFolderIsTheSame) {
  const std::string windows = environmentVariable("WINDIR");
  makeFile(windows + "\\Sysnative\\evidence64.dll");
  for (const std::string folder : {"\\\\System32\\", "\\.\\System32\\", "\\System32.\\",
                                   "\\x\\..\\System32\\", "/System32/"}) {
    EXPECT_EQ(reasonsOf(windows + folder + "evidence64.dll", Reading::File), "found") << folder;
  }
}

TEST_F(TextLookTest, ATabIsABlankAndManyCommasHideNoProgram) {
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\there\t/x"), "found-with-extension");
  std::string list = "C:\\EvidenceTest\\there a";
  for (int count = 0; count < 200; ++count) {
    list += ",b";
  }
  EXPECT_EQ(reasonsOf(list), "found-with-extension");
  EXPECT_EQ(reasonsOf(replaceAll(list, "there", "gone")), "absent path-too-long text-too-long");
}

TEST_F(TextLookTest, LengthsAreCountedInCharactersAsTheSystemDoes) {
  const auto letters = [](int count) {
    std::string text;
    for (int letter = 0; letter < count; ++letter) {
      text += "\u6F22";
    }
    return text;
  };
  EXPECT_EQ(reasonsOf(home + "\\there.exe " + letters(20'000)), "found");
  // A path that is not long for the system is read with its rules, which drop a dot at the end.
  const std::string path = home + "\\" + letters(60) + "\\" + letters(60);
  makeFile(path);
  EXPECT_EQ(reasonsOf(path + ".", Reading::File), "found");
}

TEST_F(TextLookTest, APercentSignBeforeAnyDigitIsAPlaceToFillIn) {
  for (const std::string digit : {"0", "1", "9"}) {
    EXPECT_EQ(reasonsOf(home + "\\%" + digit + " gone.exe"), "absent unknown-variable") << digit;
  }
}

TEST_F(TextLookTest, APathOfVeryManyFoldersEndsSoon) {
  std::string path = "C:\\EvidenceTest\\";
  for (int count = 0; count < 10'000; ++count) {
    path += "a\\";
  }
  EXPECT_EQ(reasonsOf(path), "absent parent-absent path-too-long");
}

TEST_F(TextLookTest, LaunchersInLaunchersHaveAnEnd) {
  std::string command = "C:\\EvidenceTest\\gone.exe";
  for (int count = 0; count < 50; ++count) {
    command.insert(0, "cmd /c ");
  }
  EXPECT_EQ(reasonsOf(command), "launcher-unclear");
}

TEST_F(TextLookTest, VariablesAreThoseOfTheOwner) {
  setText(environment, "EVIDENCEHOME", home);
  setText(environment, "EVIDENCENESTED", "%EVIDENCEHOME%\\with blank", REG_EXPAND_SZ);
  EXPECT_EQ(reasonsOf("%EVIDENCEHOME%\\there.exe"), "found-with-owner-variables");
  EXPECT_EQ(reasonsOf("%evidencenested%\\there too.exe"), "found-with-owner-variables");
  EXPECT_EQ(reasonsOf("%EVIDENCEHOME%\\gone.exe"), "absent");
  EXPECT_EQ(reasonsOf("%EVIDENCEUNKNOWN%\\gone.exe"), "absent place-unknown unknown-variable");
  // For another user it may be another folder.
  const TextOwner everyone{.user = {}, .view = ProgramView::Bits64, .isEveryones = true};
  EXPECT_EQ(reasonsOf("%EVIDENCEHOME%\\gone.exe", Reading::Command, everyone),
            "absent unknown-variable");
  removeKey(environment);
}

TEST_F(TextLookTest, VariablesThatNameEachOtherInACircleEnd) {
  setText(environment, "EVIDENCEA", "%EVIDENCEB%%EVIDENCEB%", REG_EXPAND_SZ);
  setText(environment, "EVIDENCEB", "%EVIDENCEA%%EVIDENCEA%", REG_EXPAND_SZ);
  EXPECT_EQ(confidenceOf(look("%EVIDENCEA%\\x.exe").reasons), Confidence::Unsure);
  removeKey(environment);
}

TEST_F(TextLookTest, TheProgramFoldersAreThoseOfTheView) {
  const std::string programs = environmentVariable("ProgramW6432");
  makeFile(programs + "\\EvidenceTest\\only64.exe");
  const std::string text = "%ProgramFiles%\\EvidenceTest\\only64.exe";
  EXPECT_EQ(reasonsOf(text), "found-with-owner-variables");
  const TextOwner in32{.user = {}, .view = ProgramView::Bits32};
  EXPECT_EQ(reasonsOf(text, Reading::Command, in32), "found-in-other-view");
}

TEST_F(TextLookTest, BothSystemFoldersAreAsked) {
  const std::string windows = environmentVariable("WINDIR");
  makeFile(windows + "\\Sysnative\\evidence64.dll");
  makeFile(windows + "\\SysWOW64\\evidence32.dll");
  const std::string text64 = windows + "\\System32\\evidence64.dll";
  const std::string text32 = windows + "\\System32\\evidence32.dll";
  const TextOwner in32{.user = {}, .view = ProgramView::Bits32};
  EXPECT_EQ(reasonsOf(text64, Reading::File), "found");
  EXPECT_EQ(reasonsOf(text64, Reading::File, in32), "found-in-other-view");
  EXPECT_EQ(reasonsOf(text32, Reading::File), "found-in-other-view");
  EXPECT_EQ(reasonsOf(text32, Reading::File, in32), "found");
  EXPECT_EQ(reasonsOf(windows + "\\System32\\evidencegone.dll", Reading::File), "absent");
}

TEST_F(TextLookTest, WhatIsNotHereCannotBeDecided) {
  for (const auto& [text, codes] : std::vector<std::pair<std::string, std::string>>{
           {"Q:\\x.exe", "drive-absent"},
           {"\\\\server\\share\\x.exe", "share"},
           {"//server/share/x.exe", "share"},
           {"\\\\?\\UNC\\server\\x.exe", "share"},
           {"file://server/x.exe", "share"},
           {"\\Device\\HarddiskVolume9\\x.exe", "place-unknown"},
           {"\\\\?\\GLOBALROOT\\Device\\x.exe", "place-unknown"},
           {"\\\\?\\Volume{0F0F0F0F-0000-4000-8000-00000000C0DE}\\x.exe", "place-unknown"},
           {"https://vendor.example/x.exe", "not-a-path"},
           {"C:\\EvidenceTest\\*.exe", "not-a-path"},
           {"C:\\EvidenceTest\\log-%d.txt", "absent unknown-variable"},
           {"C:\\EvidenceTest\\log-{0}.txt", "not-a-path"},
           {"", "no-text"},
           {"   ", "no-text"},
           {"\"\"", "no-text"},
           {"C:\\EvidenceTest\\%1", "absent unknown-variable"},
           {"C:\\EvidenceTest\\$(Name)\\x.dll", "not-a-path"},
           {"C:\\EvidenceTest\\$date.log", "absent not-a-path"},
           {"C:\\EvidenceTest\\[ProductName].msi", "absent not-a-path"},
           {"C:\\EvidenceTest\\backup-YYYYMMDD.zip", "absent not-a-path"},
           {"\\\\?\\C:\\..\\..\\UNC\\server\\x.exe", "share"},
       }) {
    EXPECT_EQ(reasonsOf(text), codes) << text;
  }
}

TEST_F(TextLookTest, SignsOfATemplateCountOnlyWhereTheyAreWhole) {
  for (const auto& [name, codes] : std::vector<std::pair<std::string, std::string>>{
           {"log-?.txt", "not-a-path"},
           {"log-<1.txt", "not-a-path"},
           {"log->1.txt", "not-a-path"},
           {"log-|1.txt", "not-a-path"},
           {"log-{9}", "not-a-path"},
           {"log-{a}.txt", "absent"},
           {"log-{12}.txt", "absent"},
           {"log-{0", "absent"},
           {"log-$x.txt", "absent"},
           {"log-%9", "absent unknown-variable"},
           {"log-%Z", "absent unknown-variable"},
           {"log-% %a.txt", "absent unknown-variable"},
           {"log-100%", "absent"},
           {"log-%-.txt", "absent"},
           {"log-yyyy-mm.txt", "absent not-a-path"},
           {"log-YYYY_MM.txt", "absent not-a-path"},
           {"log-YYYYmm.txt", "absent not-a-path"},
           {"log-YYYY", "absent"},
           {"log-YYYY-", "absent"},
           {"log-YYYYxMM.txt", "absent"},
           {"log-YYYY--MM.txt", "absent"},
           {"$Date.log", "absent"},
           {"$", "absent"},
           {"[", "absent"},
           {"[1].msi", "absent"},
           {"[Name.msi", "absent"},
           {"[Name\\a].msi", "absent parent-absent"},
           {"x\\$date.log", "absent parent-absent not-a-path"},
       }) {
    EXPECT_EQ(reasonsOf(home + "\\" + name, Reading::File), codes) << name;
  }
}

TEST_F(TextLookTest, AFileMayBeCalledLikeATemplate) {
  makeFile(home + "\\$date.exe");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\$date.exe"), "found");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\Product [x64].exe"), "absent");
  EXPECT_EQ(reasonsOf("C:\\$Recycle.Bin\\gone.exe").find("not-a-path"), std::string::npos);
}

TEST_F(TextLookTest, ATextIsReadUpToItsNulAndHasALongestLength) {
  EXPECT_EQ(reasonsOf(std::string("C:\\EvidenceTest\\there.exe\0x", 27)), "found");
  EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\" + std::string(250, 'x') + "\\" + std::string(60, 'y')),
            "absent parent-absent path-too-long");
  EXPECT_EQ(reasonsOf("C:\\" + std::string(32'768, 'x')), "text-too-long");
  EXPECT_EQ(reasonsOf("C:\\" + std::string(32'000, '%')), "absent path-too-long");
}

TEST_F(TextLookTest, WhatTheInstallerKeepsIsWantedAsLongAsItsProductIsThere) {
  const std::string cache = "C:\\EvidenceTest\\Installer\\";
  const std::string kept = "{12345678-9ABC-4DEF-8123-456789ABCDEF}\\gone.exe";
  EXPECT_EQ(reasonsOf(cache + kept), "absent parent-absent");
  const std::string product =
      "HKEY_LOCAL_"
      "MACHINE\\SOFTWARE\\Classes\\Installer\\Products\\87654321CBA9FED41832547698BADCFE";
  makeKey(product);
  EXPECT_EQ(reasonsOf(cache + kept), "absent parent-absent installer-on-demand");
  removeKey(product);
}

TEST_F(TextLookTest, WhatOnlyLooksLikeTheCodeOfAProductIsNone) {
  for (const std::string name : {"{", "{}", "{x}", "{12345678-9ABC-4DEF-8123-456789ABCDE}",
                                 "{12345678-9ABC-4DEF-8123-456789ABCDEFF", "{12345678"}) {
    EXPECT_EQ(reasonsOf("C:\\EvidenceTest\\Installer\\" + name + "\\gone.exe"),
              "absent parent-absent")
        << name;
  }
}

TEST_F(TextLookTest, WhatIsPackagedOrHasAShortNameIsNotCalledDead) {
  EXPECT_EQ(reasonsOf("C:\\Program Files\\WindowsApps\\Vendor.App_1.0_x64__abc\\gone.exe"),
            "absent parent-absent packaged-app");
  EXPECT_EQ(reasonsOf("C:\\EVIDEN~9\\gone.exe"), "absent parent-absent short-name");
  EXPECT_EQ(reasonsOf("C:\\EVI~EN~1\\gone.exe"), "absent parent-absent short-name");
}

TEST_F(TextLookTest, WhatOnlyLooksLikeAPackageOrAShortNameIsDead) {
  for (const std::string path :
       {"C:\\Program Files\\WindowsApps.old\\gone.exe", "C:\\EvidenceTest gone\\WindowsApps",
        "C:\\EVIDEN~0\\gone.exe", "C:\\EvidenceTest gone\\gone~"}) {
    EXPECT_EQ(reasonsOf(path, Reading::File), "absent parent-absent") << path;
  }
}

TEST_F(TextLookTest, WithoutADriveItIsMostLikelyThatOfTheSystem) {
  EXPECT_EQ(reasonsOf("\\EvidenceTest\\there.exe"), "found");
  EXPECT_EQ(reasonsOf("/EvidenceTest/gone.exe", Reading::File), "place-unknown absent");
}

TEST_F(TextLookTest, EachReadingHasItsExtensions) {
  for (const std::string ending : {".exe", ".com", ".bat", ".cmd", ".lnk"}) {
    makeFile(home + "\\usual-" + ending.substr(1) + ending);
    const std::string path = home + "\\usual-" + ending.substr(1);
    EXPECT_EQ(reasonsOf(path, Reading::Command), "found-with-extension") << ending;
    EXPECT_EQ(reasonsOf(path, Reading::Start), "found-with-extension") << ending;
    EXPECT_EQ(reasonsOf(path, Reading::Library), "absent") << ending;
  }
  makeFile(home + "\\panel.cpl");
  EXPECT_EQ(reasonsOf(home + "\\panel", Reading::Library), "found-with-extension");
  EXPECT_EQ(reasonsOf(home + "\\panel", Reading::Command), "absent");
  makeFile(home + "\\script.vbs");
  EXPECT_EQ(reasonsOf(home + "\\script", Reading::Start), "found-with-extension");
  EXPECT_EQ(reasonsOf(home + "\\script", Reading::Command), "absent");
}

TEST_F(TextLookTest, ATextThatIsReadInAnotherWayIsLookedForAnew) {
  TextLook texts(Shares::Refused, 1);
  const std::string text = home + "\\there";
  EXPECT_EQ(reasonCodes(texts.at(text, {}, Reading::Command)), "found-with-extension");
  EXPECT_EQ(reasonCodes(texts.at(text, {}, Reading::File)), "absent");
  EXPECT_EQ(reasonCodes(texts.at(text, {}, Reading::Command)), "found-with-extension");
}

TEST_F(TextLookTest, SaysWhatItLookedFor) {
  EXPECT_EQ(look("\"C:\\EvidenceTest\\gone.exe\" /x").tested,
            TestedPlaces{"C:\\EvidenceTest\\gone.exe"});
}

}  // namespace
}  // namespace zelvreg
