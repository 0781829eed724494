#include "scanners/StartupPrograms.h"

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/GrantedKeys.h"
#include "scanners/ScannerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using Rows = std::vector<std::vector<std::string>>;
using fixture::Texts;

const std::string there = "C:\\StartupProgramsTest\\There.exe";
const std::string gone = "C:\\StartupProgramsTest\\Gone.exe";
using fixture::countKey;

struct RunKey {
  const char* name;
  std::string root;
  std::string key;
  std::string reported;
};
const std::vector<RunKey> runKeys{
    {"Machine", "HKEY_LOCAL_MACHINE", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
     "Software\\Microsoft\\windows\\currentversion\\Run"},
    {"Machine32Bit", "HKEY_LOCAL_MACHINE",
     "SOFTWARE\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
     "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\Run"},
    {"User", "HKEY_CURRENT_USER", "Software\\Microsoft\\Windows\\CurrentVersion\\Run",
     "Software\\Microsoft\\windows\\currentversion\\Run"},
    {"User32Bit", "HKEY_CURRENT_USER",
     "Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\Run",
     "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\Run"},
};

std::string pathOf(const RunKey& key) { return key.root + "\\" + key.key; }

Texts findingIn(const RunKey& key, const std::string& name) {
  return {"Startup programs", name, "144", key.root, key.reported, "ru"};
}

class StartupProgramsTest : public fixture::ScannerFixture {
 protected:
  StartupProgramsTest() {
    for (const RunKey& key : runKeys) {
      emptyKey(pathOf(key));
    }
    emptyKey(countKey);
    makeFile(there);
    for (int row = 1; row <= 14; ++row) {
      form.View1.add("category");
    }
  }

  // With that key there, Wine would redirect the user's Software to it, which Windows does not.
  ~StartupProgramsTest() override { removeKey("HKEY_CURRENT_USER\\Software\\Wow6432Node"); }

  void fillAllKeys() {
    for (const RunKey& key : runKeys) {
      setText(pathOf(key), key.name, gone);
    }
  }

  [[nodiscard]] Rows findings() const {
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows.push_back(fixture::findingOf(form, row));
    }
    return rows;
  }

  [[nodiscard]] std::string shownCount() const { return form.View1.text(14, problemsColumn); }
};

// What is true of each of the four keys.
class StartupProgramsKeyTest : public StartupProgramsTest,
                               public ::testing::WithParamInterface<std::size_t> {
 protected:
  [[nodiscard]] Texts finding(const std::string& name) const { return findingIn(key, name); }

  const RunKey& key = runKeys.at(GetParam());
  const std::string path = pathOf(key);
};

std::string keyName(const ::testing::TestParamInfo<std::size_t>& key) {
  return runKeys.at(key.param).name;
}
INSTANTIATE_TEST_SUITE_P(Keys, StartupProgramsKeyTest,
                         ::testing::Range(std::size_t{0}, runKeys.size()), keyName);

TEST_P(StartupProgramsKeyTest, AProgramThatIsGoneIsReportedByTheNameOfItsValue) {
  setText(path, "Tool", gone + " /tray");
  runMRU(form);
  EXPECT_EQ(findings(), Rows{finding("Tool")});
}

TEST_P(StartupProgramsKeyTest, AProgramThatIsThereIsNot) {
  setText(path, "Arguments", there + " /tray");
  setText(path, "After a launcher", "rundll32.exe " + there + ",Entry");
  setText(path, "Plain", there);
  setText(path, "Quoted", "\"" + there + "\" /tray");
  runMRU(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(StartupProgramsKeyTest, ANameWithoutAFolderIsTestedAsItIs) {
  setText(path, "Tool", "startup programs test.exe /tray");
  runMRU(form);
  EXPECT_EQ(findings(), Rows{finding("Tool")});
}

TEST_P(StartupProgramsKeyTest, AVariableIsNotReplaced) {
  setText(path, "Tool", "%SystemDrive%\\StartupProgramsTest\\There.exe", REG_EXPAND_SZ);
  runMRU(form);
  EXPECT_EQ(findings(), Rows{finding("Tool")});
}

TEST_P(StartupProgramsKeyTest, AFolderIsNoProgram) {
  setText(path, "Tool", "C:\\StartupProgramsTest");
  runMRU(form);
  EXPECT_EQ(findings(), Rows{finding("Tool")});
}

TEST_P(StartupProgramsKeyTest, NothingOfTheSystemFolderIsReported) {
  setText(path, "Path", "C:\\Windows\\SYSTEM32\\startup programs test.exe");
  setText(path, "Relative", "system32\\startup programs test.exe");
  runMRU(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(StartupProgramsKeyTest, AValueThatIsNoTextNamesNoProgram) {
  setText(path, "Empty", "");
  setNumber(path, "Number", 3);
  runMRU(form);
  EXPECT_EQ(findings(), (Rows{finding("Empty"), finding("Number")}));
}

TEST_P(StartupProgramsKeyTest, BlanksAroundANameAreLostAndNothingIsReadUnderTheRest) {
  setText(path, " Tool ", there);
  runMRU(form);
  EXPECT_EQ(findings(), Rows{finding("Tool")});
}

TEST_P(StartupProgramsKeyTest, ANameOfBlanksAndTheDefaultValueAreSkipped) {
  setText(path, "", gone);
  setText(path, "  ", gone);
  runMRU(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(StartupProgramsKeyTest, EachValueIsTested) {
  setText(path, "a", gone);
  setText(path, "b", there);
  setText(path, "c", gone);
  runMRU(form);
  EXPECT_EQ(findings(), (Rows{finding("a"), finding("c")}));
}

TEST_P(StartupProgramsKeyTest, NoAccessIsGranted) {
  setText(path, "Tool", gone);
  runMRU(form);
  EXPECT_FALSE(fixture::namesUser(accessOfKey(path), userName()));
}

TEST_P(StartupProgramsKeyTest, AMissingKeyFindsNothing) {
  fillAllKeys();
  removeKey(path);
  runMRU(form);
  Rows others;
  for (const RunKey& other : runKeys) {
    if (&other != &key) {
      others.push_back(findingIn(other, other.name));
    }
  }
  EXPECT_EQ(findings(), others);
}

TEST_F(StartupProgramsTest, TheKeysAreWalkedInTheirOrder) {
  fillAllKeys();
  runMRU(form);
  ASSERT_EQ(form.View2.count(), 4U);
  for (std::size_t row = 1; row <= 4; ++row) {
    const RunKey& key = runKeys[row - 1];
    EXPECT_EQ(fixture::findingOf(form, row), findingIn(key, key.name));
  }
}

TEST_F(StartupProgramsTest, EachFindingIsCountedShownAndSaved) {
  fillAllKeys();
  form.totalFound = 40;
  Texts shown;
  Texts saved;
  form.messages.serveHost = [&] {
    shown.push_back(shownCount());
    saved.push_back(storedText(countKey, "reg-count"));
  };
  runMRU(form);
  EXPECT_EQ(shown, (Texts{"", "1", "2", "3"}));
  EXPECT_EQ(saved, (Texts{"(none)", "41", "42", "43"}));
  EXPECT_EQ(shownCount(), "4");
  EXPECT_EQ(storedText(countKey, "reg-count"), "44");
  EXPECT_EQ(form.totalFoundText, "44");
}

TEST_F(StartupProgramsTest, WithoutFindingsZeroIsShownAtTheEndAlone) {
  Texts shown;
  form.messages.serveHost = [&] { shown.push_back(shownCount()); };
  runMRU(form);
  // An empty key has one turn.
  EXPECT_EQ(shown, (Texts{"", "", "", ""}));
  EXPECT_EQ(shownCount(), "0");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(StartupProgramsTest, TheQueueIsServedOnceForEachValue) {
  setText(pathOf(runKeys[0]), "a", there);
  setText(pathOf(runKeys[0]), "b", there);
  setText(pathOf(runKeys[3]), "c", there);
  int served = 0;
  form.messages.serveHost = [&] { ++served; };
  runMRU(form);
  EXPECT_EQ(served, 5);
}

TEST_F(StartupProgramsTest, TheListsBeginEmpty) {
  for (ListBox* list : {&form.List1, &form.List2, &form.List7}) {
    list->add("left over");
  }
  fillAllKeys();
  runMRU(form);
  EXPECT_EQ(form.View2.count(), 4U);
  EXPECT_EQ(fixture::entriesOf(form.List1), Texts{});
  EXPECT_EQ(fixture::entriesOf(form.List2),
            (Texts{"Machine", "Machine32Bit", "User", "User32Bit"}));
  EXPECT_EQ(fixture::entriesOf(form.List7), Texts{"User32Bit"});
}

TEST_F(StartupProgramsTest, TheOtherSpellingIsForgotten) {
  form.ntSpelling = 2;
  runMRU(form);
  EXPECT_EQ(form.ntSpelling, 0);
}

TEST_F(StartupProgramsTest, AScanOnceStartedRunsToItsEnd) {
  fillAllKeys();
  form.Text2.setText("2");
  form.cancelRequested = true;
  runMRU(form);
  EXPECT_EQ(form.View2.count(), 4U);
}

TEST_F(StartupProgramsTest, TheStatusLineNamesTheCategory) {
  runMRU(form);
  EXPECT_EQ(form.Label4.caption.get(), "Startup programs");
}

TEST_F(StartupProgramsTest, ANewRowComesAfterTheOthersUntickedAndScrolledIntoView) {
  setText(pathOf(runKeys[0]), "Tool", gone);
  form.View2.add("font");
  form.Text1.setText("5");
  runMRU(form);
  EXPECT_EQ(fixture::findingOf(form, 2), findingIn(runKeys[0], "Tool"));
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_EQ(form.View2.rowInView(), 2U);
  EXPECT_EQ(form.Text1.text(), "2");
}

TEST_F(StartupProgramsTest, WhatTheUserExcludedIsReportedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_LOCAL_MACHINE\r\n");
  setText(pathOf(runKeys[0]), "Tool", gone);
  runMRU(form);
  EXPECT_EQ(form.View2.count(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
