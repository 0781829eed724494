#include "scanners/MuiCache.h"

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string cacheKey =
    "Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\Shell\\MuiCache";
const std::string fullKey = "HKEY_CURRENT_USER\\" + cacheKey;
using fixture::countKey;
const std::string gone = "C:\\MuiCacheTest\\Gone.exe";
const std::string there = "C:\\MuiCacheTest\\There.exe";

class MuiCacheTest : public fixture::ScannerFixture {
 protected:
  MuiCacheTest() {
    emptyKey(fullKey);
    emptyKey(countKey);
    makeFile(there);
    for (const Category& category : categories()) {
      form.View1.add(category.valueName);
    }
  }

  static std::vector<std::string> finding(const std::string& name) {
    return {"Missing Mui cache reference", name, "166", "HKEY_CURRENT_USER", cacheKey, "mui"};
  }

  static void cache(const std::string& name) { setText(fullKey, name, "Display name"); }

  std::string cell() { return form.View1.text(16, problemsColumn); }
};

TEST_F(MuiCacheTest, ANameOfAMissingProgramIsReported) {
  cache(gone);
  cache(there);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(gone));
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.rowInView(), 1U);
}

TEST_F(MuiCacheTest, WhatTheValueHoldsPlaysNoPart) {
  setText(fullKey, there, gone);
  setNumber(fullKey, gone, 1);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(gone));
}

TEST_F(MuiCacheTest, ANameWithoutADrivePathIsNotTested) {
  for (const char* name : {"LangID", "\\MuiCacheTest\\Gone.exe", "C:Gone.exe", "@gone.dll,-1"}) {
    cache(name);
  }
  setText(fullKey, "", gone);
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(MuiCacheTest, ADrivePathIsTestedWhereverItIsInTheName) {
  const std::string name = "@" + there + ",-1";
  cache(name);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(name));
}

TEST_F(MuiCacheTest, ASuffixAfterTheFileMakesItAnother) {
  const std::string name = there + ".FriendlyAppName";
  cache(name);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(name));
}

TEST_F(MuiCacheTest, VariablesOfANameAreReplacedForTheTestAlone) {
  makeFile("C:\\MuiCacheTest\\" + userName() + ".exe");
  cache("C:\\MuiCacheTest\\%USERNAME%.exe");
  cache("C:\\MuiCacheTest\\%USERNAME%.scr");
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding("C:\\MuiCacheTest\\%USERNAME%.scr"));
}

TEST_F(MuiCacheTest, TheSystemFolderIsLookedIntoLikeAnyOther) {
  const std::string missing = "C:\\Windows\\System32\\mui cache test.exe";
  cache(missing);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(missing));
}

TEST_F(MuiCacheTest, AFolderIsNoProgram) {
  makeFolder("C:\\MuiCacheTest\\Folder");
  cache("C:\\MuiCacheTest\\Folder");
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(MuiCacheTest, BlanksAroundANameAreReportedAndNeitherTestedNorListed) {
  cache(" " + gone + " ");
  cache(" " + there + " ");
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding(" " + gone + " "));
  EXPECT_EQ(fixture::entriesOf(form.List2), (std::vector<std::string>{gone}));
}

TEST_F(MuiCacheTest, NeitherSubkeysNorTheOtherViewAreWalked) {
  setText(fullKey + "\\Below", gone, "x");
  setText(
      "HKEY_CURRENT_USER\\Software\\Classes\\Wow6432Node\\Local Settings\\Software\\Microsoft\\"
      "Windows\\Shell\\MuiCache",
      gone, "x");
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(MuiCacheTest, WithoutFindingsTheCellShowsZero) {
  cache(there);
  form.View1.setText(16, problemsColumn, "before");
  MuiCache(form);
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "0");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(MuiCacheTest, AMissingKeyFindsNothing) {
  removeKey(fullKey);
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cell(), "0");
}

TEST_F(MuiCacheTest, TheCellShowsTheCountFromTheFirstFindingOn) {
  cache("A");
  cache("C:\\MuiCacheTest\\a.exe");
  cache("C:\\MuiCacheTest\\b.exe");
  cache(there);
  form.View1.setText(16, problemsColumn, "before");
  std::vector<std::string> shown;
  std::vector<std::string> kept;
  form.messages.serveHost = [&] {
    shown.push_back(cell());
    kept.push_back(storedText(countKey, "reg-count"));
  };
  MuiCache(form);
  EXPECT_EQ(shown, (std::vector<std::string>{"before", "before", "1", "2"}));
  EXPECT_EQ(kept, (std::vector<std::string>{"(none)", "(none)", "1", "2"}));
  EXPECT_EQ(cell(), "2");
}

TEST_F(MuiCacheTest, TheRunningTotalContinuesAndTheRowsOwnCountStartsAgain) {
  form.totalFound = 7;
  cache(gone);
  MuiCache(form);
  EXPECT_EQ(form.totalFound, 8);
  EXPECT_EQ(form.totalFoundText, "8");
  EXPECT_EQ(storedText(countKey, "reg-count"), "8");
  EXPECT_EQ(cell(), "1");
}

TEST_F(MuiCacheTest, FindingsFollowThoseThatAreThere) {
  form.View2.add("before");
  form.Text1.setText("1");
  cache(gone);
  MuiCache(form);
  ASSERT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(form.View2.text(1, locationColumn), "before");
  EXPECT_EQ(fixture::findingOf(form, 2), finding(gone));
  EXPECT_EQ(form.Text1.text(), "2");
}

TEST_F(MuiCacheTest, TheWorkListsStartEmpty) {
  form.List1.add("left over");
  form.List2.add("left over");
  form.List7.add("C:\\left over.exe");
  cache(gone);
  cache(there);
  MuiCache(form);
  EXPECT_EQ(fixture::entriesOf(form.List1), std::vector<std::string>());
  EXPECT_EQ(fixture::entriesOf(form.List2), (std::vector<std::string>{gone}));
  EXPECT_EQ(fixture::entriesOf(form.List7), (std::vector<std::string>{gone, there}));
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(MuiCacheTest, ACancelEndsTheWalk) {
  cache("C:\\MuiCacheTest\\a.exe");
  cache("C:\\MuiCacheTest\\b.exe");
  form.messages.post([this] {
    form.Text2.setText("2");
    form.cancelRequested = true;
  });
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

TEST_F(MuiCacheTest, TheStatusLineNamesTheCategoryAndTheSpellingIsForgotten) {
  form.ntSpelling = 2;
  MuiCache(form);
  EXPECT_EQ(form.Label4.caption.get(), "Missing Mui cache reference");
  EXPECT_EQ(form.ntSpelling, 0);
}

TEST_F(MuiCacheTest, WhatTheUserExcludedIsAddedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_CURRENT_USER\r\n");
  cache(gone);
  MuiCache(form);
  EXPECT_EQ(form.View2.count(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
