#include "scanners/RecentLists.h"

#include <array>

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fixture::Texts;

const std::string userRoot = "HKEY_CURRENT_USER\\";
const std::string explorer = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
const std::string documents = explorer + "\\RecentDocs";
const std::string typedPaths = explorer + "\\TypedPaths";
const std::string lastList = explorer + "\\ComDlg32\\LastVisitedPidlMRU";
const std::array<std::string, 8> lists{documents,
                                       explorer + "\\StreamMRU",
                                       typedPaths,
                                       explorer + "\\WordWheelQuery",
                                       explorer + "\\RunMRU",
                                       explorer + "\\ComDlg32\\OpenSavePidlMRU",
                                       explorer + "\\ComDlg32\\LastVisitedPidlMRULegacy",
                                       lastList};
using fixture::countKey;

class RecentListsTest : public fixture::ScannerFixture {
 protected:
  RecentListsTest() {
    for (const std::string& list : lists) {
      removeKey(userRoot + list);
    }
    emptyKey(countKey);
    for (const Category& category : categories()) {
      form.View1.add(category.valueName);
    }
  }

  static std::vector<std::string> finding(const std::string& name, const std::string& key) {
    return {"Users MRU lists", name, "155", "HKEY_CURRENT_USER", key, "mr"};
  }

  static void note(const std::string& list, const std::string& name) {
    setText(userRoot + list, name, "x");
  }

  std::string cell() { return form.View1.text(15, problemsColumn); }
};

TEST_F(RecentListsTest, EveryNamedValueOfAListAndOfItsSubkeysIsReported) {
  const std::string texts = documents + "\\.txt";
  const std::string folders = documents + "\\Folder";
  for (const char* name : {"0", "1", "2", "MRUListEx"}) {
    note(documents, name);
  }
  note(texts, "0");
  note(texts, "MRUListEx");
  note(folders, "0");
  MRUhist(form);
  const std::vector<Texts> expected{finding("0", documents), finding("1", documents),
                                    finding("2", documents), finding("MRUListEx", documents),
                                    finding("0", texts),     finding("MRUListEx", texts),
                                    finding("0", folders)};
  ASSERT_EQ(form.View2.count(), expected.size());
  for (std::size_t row = 1; row <= expected.size(); ++row) {
    EXPECT_EQ(fixture::findingOf(form, row), expected[row - 1]) << row;
  }
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.rowInView(), expected.size());
}

TEST_F(RecentListsTest, AllListsAreWalkedInTheirOrderEachWithItsSubkeys) {
  for (const std::string& list : lists) {
    note(list, "a");
    note(list + "\\Below", "b");
  }
  MRUhist(form);
  ASSERT_EQ(form.View2.count(), 2 * lists.size());
  for (std::size_t index = 0; index < lists.size(); ++index) {
    EXPECT_EQ(fixture::findingOf(form, 2 * index + 1), finding("a", lists[index]));
    EXPECT_EQ(fixture::findingOf(form, 2 * index + 2), finding("b", lists[index] + "\\Below"));
  }
}

TEST_F(RecentListsTest, WhatAValueHoldsPlaysNoPart) {
  makeFile("C:\\RecentListsTest\\There.txt");
  setText(userRoot + typedPaths, "url1", "C:\\RecentListsTest\\There.txt");
  setText(userRoot + typedPaths, "url2", "");
  setNumber(userRoot + typedPaths, "url3", 0);
  setBytes(userRoot + typedPaths, "url4", REG_BINARY, "");
  MRUhist(form);
  ASSERT_EQ(form.View2.count(), 4U);
  for (std::size_t row = 1; row <= 4; ++row) {
    EXPECT_EQ(fixture::findingOf(form, row), finding("url" + std::to_string(row), typedPaths));
  }
}

TEST_F(RecentListsTest, TheDefaultValueIsNoFinding) {
  note(typedPaths, "");
  MRUhist(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RecentListsTest, ANameOfBlanksIsNotReported) {
  note(typedPaths, "  ");
  MRUhist(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RecentListsTest, ANameIsReportedWithoutTheBlanksAroundIt) {
  note(typedPaths, " a b ");
  MRUhist(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), finding("a b", typedPaths));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"a b"}));
}

TEST_F(RecentListsTest, ASubkeyOfASubkeyIsNotLookedAt) {
  note(documents + "\\.txt\\Below", "0");
  MRUhist(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(RecentListsTest, WithoutFindingsTheCellKeepsWhatItShowed) {
  form.View1.setText(15, problemsColumn, "before");
  MRUhist(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cell(), "before");
  EXPECT_EQ(form.Text1.text(), "0");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(RecentListsTest, TheCountRunsThroughAllLists) {
  note(documents, "0");
  note(lastList, "0");
  form.View1.setText(15, problemsColumn, "before");
  Texts shown;
  form.messages.serveHost = [&] {
    if (shown.empty() || shown.back() != cell()) {
      shown.push_back(cell());
    }
  };
  MRUhist(form);
  EXPECT_EQ(shown, (Texts{"before", "1", "2"}));
  EXPECT_EQ(cell(), "2");
}

TEST_F(RecentListsTest, TheCountIsShownInEveryPassAlsoOfAListWithoutValues) {
  note(documents, "0");
  form.messages.serveHost = [&] { form.View1.setText(15, problemsColumn, "overwritten"); };
  MRUhist(form);
  EXPECT_EQ(cell(), "1");
}

TEST_F(RecentListsTest, EachFindingIsAddedToTheRunningTotalAndKept) {
  form.totalFound = 10;
  note(documents, "0");
  note(documents, "1");
  Texts kept;
  form.messages.serveHost = [&] {
    const std::string text = storedText(countKey, "reg-count");
    if (kept.empty() || kept.back() != text) {
      kept.push_back(text);
    }
  };
  MRUhist(form);
  EXPECT_EQ(kept, (Texts{"(none)", "11", "12"}));
  EXPECT_EQ(form.totalFound, 12);
  EXPECT_EQ(form.totalFoundText, "12");
  EXPECT_EQ(cell(), "2");
}

TEST_F(RecentListsTest, FindingsFollowThoseThatAreThere) {
  form.View2.add("before");
  form.Text1.setText("1");
  note(typedPaths, "url1");
  MRUhist(form);
  ASSERT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(form.View2.text(1, locationColumn), "before");
  EXPECT_EQ(fixture::findingOf(form, 2), finding("url1", typedPaths));
  EXPECT_EQ(form.Text1.text(), "2");
}

TEST_F(RecentListsTest, TheWorkListsStartEmptyAndEndWithTheLastList) {
  for (ListBox* list : {&form.List1, &form.List2, &form.List7}) {
    list->add("left over");
  }
  note(typedPaths, "url1");
  note(typedPaths + "\\Below", "url2");
  MRUhist(form);
  EXPECT_EQ(fixture::entriesOf(form.List1), Texts());
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"url1", "url2"}));
  EXPECT_EQ(fixture::entriesOf(form.List7), Texts());
  EXPECT_EQ(form.View2.count(), 2U);
}

TEST_F(RecentListsTest, AStopLeavesOutSubkeysAndAllValuesButTheFirstOfEachList) {
  note(documents, "0");
  note(documents, "1");
  note(documents + "\\.txt", "0");
  note(lastList, "0");
  form.messages.post([this] {
    form.Text2.setText("2");
    form.cancelRequested = true;
  });
  MRUhist(form);
  ASSERT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(fixture::findingOf(form, 2), finding("0", lastList));
}

TEST_F(RecentListsTest, TheStatusLineShowsTheCaptionOfTheStartupPrograms) {
  form.ntSpelling = 2;
  MRUhist(form);
  EXPECT_EQ(form.Label4.caption.get(), "Startup programs");
  EXPECT_EQ(form.ntSpelling, 0);
}

TEST_F(RecentListsTest, WhatTheUserExcludedIsAddedLikeAnyOther) {
  makeFile(form.programFolder + "\\exregscan.txt", "HKEY_CURRENT_USER\r\n");
  note(typedPaths, "url1");
  MRUhist(form);
  EXPECT_EQ(form.View2.count(), 1U);
  DeleteFileW(Wide(form.programFolder + "\\exregscan.txt").get());
}

}  // namespace
}  // namespace zelvreg
