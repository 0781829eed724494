#include "search/Search.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "search/SearchFixture.h"

namespace zelvreg::searching {
namespace {

// A form of which nothing is set up yet, but for the one of the fixture.
class SearchSetUp : public SearchFixture {
 protected:
  SearchSetUp() { Command24(fresh); }

  static Texts entries(const ComboBox& box) {
    Texts all;
    for (int position = 0; position < box.count(); ++position) {
      all.push_back(box.entry(position));
    }
    return all;
  }
  // The option that is on, from 1; 0 for none or several.
  static int mode(const Form42& form) {
    const std::array<bool, 4> options{form.Option1.value, form.Option2.value, form.Option3.value,
                                      form.Option4.value};
    const auto first = std::ranges::find(options, true);
    return std::ranges::count(options, true) == 1 ? static_cast<int>(first - options.begin()) + 1
                                                  : 0;
  }
  // The form after a start with one setting.
  void startWith(const std::string& name, const std::string& text) {
    setText(settingsKey, name, text);
    Command24(again);
  }

  Form42 fresh;
  Form42 again;
};

TEST_F(SearchSetUp, LooksForPathsInTheDataOfTheCurrentUser) {
  EXPECT_EQ(fresh.cboFind.text(), ":\\");
  EXPECT_EQ(fresh.cboRoot.text(), "HKEY_CURRENT_USER");
  EXPECT_TRUE(fresh.ChData.value);
  EXPECT_FALSE(fresh.ChKeys.value);
  EXPECT_FALSE(fresh.ChValues.value);
  EXPECT_TRUE(fresh.ChCase.value);
  EXPECT_EQ(mode(fresh), 1);
  EXPECT_EQ(fresh.cboFind.count(), 0);
}

TEST_F(SearchSetUp, OffersTheRootsThatHaveSubkeysAfterThatOfAllInTheirOrder) {
  Texts expected{"My Computer"};
  for (const char* name :
       {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_DYN_DATA", "HKEY_LOCAL_MACHINE",
        "HKEY_PERFORMANCE_DATA", "HKEY_USERS", "HKEY_CURRENT_CONFIG"}) {
    if (HasSubkeys(HiveFromName(name))) {
      expected.emplace_back(name);
    }
  }
  EXPECT_EQ(entries(fresh.cboRoot), expected);
  EXPECT_GE(expected.size(), 5U);
}

TEST_F(SearchSetUp, OffersTheTextsThatWereKept) {
  setText(settingsKey, "2", "second");
  setText(settingsKey, "19", "last");
  setText(settingsKey, "3", "");
  setText(settingsKey, "20", "one too many");
  setNumber(settingsKey, "4", 4);
  startWith("1", "First");
  EXPECT_EQ(entries(again.cboFind), (Texts{"First", "second", "last"}));
  EXPECT_EQ(again.cboFind.text(), ":\\");
}

TEST_F(SearchSetUp, TheAreaThatWasKeptGivesWayToTheCurrentUser) {
  startWith("lastSearchArea", "1");
  EXPECT_EQ(again.cboRoot.text(), "HKEY_CURRENT_USER");
}

// The texts that a box showed one after the other.
class ShownTexts : public ControlPeer {
 public:
  explicit ShownTexts(ComboBox& shown) : box(shown) { box.attach(this); }
  ShownTexts(const ShownTexts&) = delete;
  ShownTexts& operator=(const ShownTexts&) = delete;
  ~ShownTexts() override { box.attach(nullptr); }
  void changed(const Control& /*control*/, Change what, std::size_t /*row*/) override {
    if (what == Change::Text) {
      texts.push_back(box.text());
    }
  }
  Texts texts;

 private:
  ComboBox& box;
};

TEST_F(SearchSetUp, OnlyAnAreaAboveNothingIsTakenBeforeItGivesWay) {
  struct Area {
    const char* kept;
    Texts shown;
  };
  const std::string first = fresh.cboRoot.entry(1);
  for (const Area& area : {Area{"1", {first, "HKEY_CURRENT_USER"}},
                           Area{"0", {"HKEY_CURRENT_USER"}}, Area{"-1", {"HKEY_CURRENT_USER"}},
                           Area{"99", {"HKEY_CURRENT_USER"}}, Area{"x", {"HKEY_CURRENT_USER"}}}) {
    setText(settingsKey, "lastSearchArea", area.kept);
    Form42 started;
    const ShownTexts shown(started.cboRoot);
    Command24(started);
    EXPECT_EQ(shown.texts, area.shown) << area.kept;
  }
}

TEST_F(SearchSetUp, TakesTheModeThatWasKeptOrElseTheFirst) {
  for (const int kept : {2, 3, 4}) {
    startWith("lastMode", std::to_string(kept));
    EXPECT_EQ(mode(again), kept);
  }
  for (const char* wrong : {"0", "5", "-1", "x", ""}) {
    startWith("lastMode", wrong);
    EXPECT_EQ(mode(again), 1) << wrong;
  }
}

TEST_F(SearchSetUp, TakesWhetherCapitalsCountAsItWasKept) {
  startWith("lastCase", "0");
  EXPECT_FALSE(again.ChCase.value);
  startWith("lastCase", "1");
  startWith("lastCase", "x");
  EXPECT_TRUE(again.ChCase.value);
}

TEST_F(SearchSetUp, TypingHasNoEffect) {
  EXPECT_FALSE(fresh.cboFind.onChange);
  fresh.cboFind.setText("typed");
  EXPECT_EQ(fresh.cboFind.count(), 0);
}

struct Match {
  int mode;
  bool matchesCase;
  const char* sought;
  const char* text;
  bool isMatched;
};

class VerifyPatternTest : public ::testing::TestWithParam<Match> {};

TEST_P(VerifyPatternTest, SaysWhetherATextMatches) {
  const Match& match = GetParam();
  Form42 form;
  const std::array<OptionButton*, 4> options{&form.Option1, &form.Option2, &form.Option3,
                                             &form.Option4};
  if (match.mode > 0) {
    options[static_cast<std::size_t>(match.mode - 1)]->value = true;
  }
  form.ChCase.value = match.matchesCase;
  form.cboFind.setText(match.sought);
  int yields = 0;
  form.messages.serveHost = [&yields] { ++yields; };
  bool matched = !match.isMatched;
  VerifyPattern(form, match.text, matched);
  EXPECT_EQ(matched, match.isMatched)
      << match.mode << " '" << match.sought << "' '" << match.text << "'";
  EXPECT_EQ(yields, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, VerifyPatternTest,
    ::testing::Values(Match{1, true, "ab", "xaby", true}, Match{1, true, "ab", "xAby", false},
                      Match{1, false, "aB", "xAby", true}, Match{1, true, "", "anything", true},
                      Match{1, true, "", "", true}, Match{2, true, "ab", "abx", true},
                      Match{2, true, "ab", "xab", false}, Match{2, true, "abc", "ab", false},
                      Match{2, false, "AB", "abx", true}, Match{3, true, "ab", "xab", true},
                      Match{3, true, "ab", "abx", false}, Match{3, true, "abc", "bc", false},
                      Match{3, false, "AB", "xab", true}, Match{4, true, "ab", "ab", true},
                      Match{4, true, "ab", "abx", false}, Match{4, true, "ab", "Ab", false},
                      Match{4, false, "ab", "Ab", true}, Match{0, true, "ab", "ab", false},
                      Match{0, true, "", "", false},
                      // A path has its mark in whatever case it is written.
                      Match{1, true, ":\\", "C:\\FOLDER", true},
                      Match{1, true, ":\\", "C:FOLDER", false}));

class CmdFindTest : public SearchFixture {
 protected:
  CmdFindTest() { form.cboFind.setText("searchtest"); }

  // The rows of the test's own keys: a user of the system has others.
  std::size_t ownRows() {
    std::size_t count = 0;
    for (const Texts& row : rows()) {
      count += row[4].starts_with(ownKey) ? 1 : 0;
    }
    return count;
  }
};

TEST_F(CmdFindTest, ListsDeadPathsOfTheChosenRootWithItsCategory) {
  setGone(userKey, "Run");
  cmdFind(form);
  EXPECT_EQ(rows(), (std::vector<Texts>{{gone, "Run", "11", "HKEY_CURRENT_USER", ownKey, "h"}}));
  EXPECT_EQ(form.totalFound, 1);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "1");
  EXPECT_EQ(form.View1.text(7, problemsColumn), "before");
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
  EXPECT_EQ(form.Label3.caption.get(), "1 Problem(s) Found ");
  EXPECT_EQ(form.Label4.caption.get(), "Total Problems Found");
}

TEST_F(CmdFindTest, ASearchThatFindsNothingSaysSoInItsCategory) {
  form.totalFound = 5;
  cmdFind(form);
  EXPECT_EQ(form.totalFound, 0);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "0");
  EXPECT_EQ(form.Label3.caption.get(), "0 Problem(s) Found ");
}

TEST_F(CmdFindTest, TheTotalThatIsKeptNextIsThatOfTheSearch) {
  form.totalFound = 5;
  form.totalFoundText = "5";
  cmdFind(form);
  saveTotalFound(form);
  EXPECT_EQ(storedText(countKey, "reg-count"), "0");
}

TEST_F(CmdFindTest, RowsFromBeforeStayAndAreCountedInTheEnd) {
  form.View2.add("from before");
  setGone(userKey, "Run");
  cmdFind(form);
  EXPECT_EQ(form.View2.count(), 2U);
  EXPECT_EQ(form.Label3.caption.get(), "2 Problem(s) Found ");
  EXPECT_EQ(form.View1.text(8, problemsColumn), "1");
}

TEST_F(CmdFindTest, ClassesAreSearchedBelowTheirOwnKeyAlone) {
  setGone(userKey, "Run");
  setGone("HKEY_CURRENT_USER\\clsid\\SearchTest", "Run");
  form.searchCategory = 1;
  cmdFind(form);
  removeKey("HKEY_CURRENT_USER\\clsid");
  EXPECT_EQ(
      rows(),
      (std::vector<Texts>{{gone, "Run", "8", "HKEY_CURRENT_USER", "clsid\\SearchTest", "g"}}));
  EXPECT_EQ(form.View1.text(7, problemsColumn), "1");
}

TEST_F(CmdFindTest, ACategoryThatIsSetIsKept) {
  setGone(userKey, "Run");
  form.searchCategory = 4;
  cmdFind(form);
  EXPECT_EQ(rows().at(0), (Texts{gone, "Run", "13", "HKEY_CURRENT_USER", ownKey, "j"}));
  EXPECT_EQ(form.View1.text(10, problemsColumn), "1");
}

TEST_F(CmdFindTest, AnUnknownCategoryLeavesRowsThatNoRepairTakes) {
  setGone(userKey, "Run");
  form.searchCategory = 9;
  form.Label4.caption = "before";
  EXPECT_EQ(found(), (std::vector<Texts>{{gone, "Run", "", "HKEY_CURRENT_USER", ownKey, ""}}));
  EXPECT_EQ(form.Label4.caption.get(), "before");
}

TEST_F(CmdFindTest, EachRootOfAllHasTheCategoryOfItsOwn) {
  setGone(userKey, "Run");
  Form42 all;
  for (const Category& category : categories()) {
    all.View1.add(category.valueName);
  }
  // Without the large ones.
  for (const char* name : {"My Computer", "HKEY_CURRENT_USER", "HKEY_USERS"}) {
    all.cboRoot.add(name);
  }
  all.cboRoot.setListIndex(0);
  all.cboFind.setText("searchtest");
  all.ChData.value = true;
  all.Option1.value = true;
  cmdFind(all);
  ASSERT_EQ(all.View2.count(), 2U);
  EXPECT_EQ(all.View2.text(1, kindCodeColumn), "11");
  EXPECT_EQ(all.View2.text(2, kindCodeColumn), "12");
  EXPECT_EQ(all.View2.text(2, rootNameColumn), "HKEY_USERS");
  EXPECT_TRUE(all.View2.text(2, subKeyColumn).ends_with("\\" + ownKey));
  EXPECT_EQ(all.View1.text(8, problemsColumn), "1");
  EXPECT_EQ(all.View1.text(9, problemsColumn), "1");
  EXPECT_EQ(all.totalFound, 2);
}

TEST_F(CmdFindTest, TheQueueIsServedAfterEachOfAllRootsAndACancelThereIsTheLast) {
  Form42 all;
  for (const char* name : {"My Computer", "no root", "none either", "nor this"}) {
    all.cboRoot.add(name);
  }
  all.cboRoot.setListIndex(0);
  int yields = 0;
  all.messages.serveHost = [&] { ++yields; };
  cmdFind(all);
  EXPECT_EQ(yields, 3);
  all.messages.serveHost = [&] {
    ++yields;
    all.cancelRequested = true;
  };
  cmdFind(all);
  EXPECT_EQ(yields, 4);
}

TEST_F(CmdFindTest, AnUnknownRootHasNoKeys) {
  Form42 none;
  none.ChKeys.value = true;
  none.Option1.value = true;
  cmdFind(none);
  EXPECT_EQ(none.View2.count(), 0U);
}

TEST_F(CmdFindTest, ATextThatIsNewIsAddedAndChosen) {
  form.cboFind.setText("zzz");
  cmdFind(form);
  EXPECT_EQ(form.cboFind.listIndex(), 0);
  cmdFind(form);
  EXPECT_EQ(form.cboFind.count(), 1);
}

TEST_F(CmdFindTest, ATextWithCapitalsIsAddedEachTimeAndSearchedForAsTyped) {
  form.cboFind.setText("ZzZ");
  cmdFind(form);
  cmdFind(form);
  EXPECT_EQ(form.cboFind.count(), 2);
  EXPECT_EQ(form.cboFind.text(), "ZzZ");
}

TEST_F(CmdFindTest, ACancelEndsTheWalkAndKeepsWhatWasFound) {
  setGone(userKey + "\\a", "Run");
  setGone(userKey + "\\b", "Run");
  form.messages.serveHost = [&] { form.cancelRequested = form.View2.count() > 0; };
  cmdFind(form);
  EXPECT_EQ(ownRows(), 1U);
  EXPECT_EQ(form.Label4.caption.get(), "Total Problems Found");
}

TEST_F(CmdFindTest, ACancelFromBeforeStopsTheSearch) {
  setGone(userKey, "Run");
  form.cancelRequested = true;
  cmdFind(form);
  EXPECT_EQ(ownRows(), 0U);
}

}  // namespace
}  // namespace zelvreg::searching
