// What the exclusions do to the results, and how a result becomes one.
#include <algorithm>
#include <iterator>
#include <random>

#include "exclusions/ExclusionFixture.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "support/UnrulyContents.h"

namespace zelvreg {
namespace {

class ExclusionListTest : public ExclusionFixture {
 protected:
  // The keys below HKEY_LOCAL_MACHINE that are left of these by an exclusion.
  Texts left(const std::string& entry, const Texts& keys) {
    write(entry + "\r\n");
    form.View2.clear();
    for (const std::string& key : keys) {
      addResult("HKEY_LOCAL_MACHINE", key);
    }
    Command29(form);
    return results();
  }
};

TEST_F(ExclusionListTest, TheListRereadsTheFileEachTime) {
  form.View4.add("old");
  write("HKEY_USERS\\b,c\r\n\"d\"\r\n");
  loadExclusions(form);
  EXPECT_EQ(entries(), (Texts{"HKEY_USERS\\b", "c", "d"}));
  write("123456789");
  loadExclusions(form);
  EXPECT_EQ(entries(), Texts());
}

TEST_F(ExclusionListTest, AnEntryTakesAllKeysThatBeginWithIt) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\Software\\a",
                 {"Software\\a", "Software\\b", "Software\\abc\\x", "Software", "x\\Software\\a"}),
            (Texts{"Software\\b", "Software", "x\\Software\\a"}));
}

TEST_F(ExclusionListTest, NeighboursThatAreTakenDoNotShieldEachOther) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a", {"a1", "a2", "a3", "b", "a4", "a5"}), (Texts{"b"}));
}

TEST_F(ExclusionListTest, LettersCountAlikeInBothCases) {
  EXPECT_EQ(left("hkey_local_machine\\SOFTWARE\\a", {"Software\\A", "b"}), (Texts{"b"}));
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\", {"Software\\A", "b"}), Texts());
  EXPECT_EQ(left("hkey_local_machine\\", {"Software\\A", "b"}), Texts());
}

TEST_F(ExclusionListTest, TheQueueIsServedWhileTheListIsWholeAndNotOnceCancelWasPressed) {
  const std::size_t count = 3 * mostUnservedRows;
  const Texts keys(count, "a");
  std::size_t served = 0;
  form.messages.serveHost = [&] {
    ++served;
    EXPECT_EQ(form.View2.count(), count);
  };
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a", keys), Texts());
  EXPECT_EQ(served, 3U);
  form.Text2.setText("2");
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a", keys), Texts());
  EXPECT_EQ(served, 3U);
}

TEST_F(ExclusionListTest, RowsThatChangeWhileTheQueueIsServedAreJudgedAgain) {
  form.messages.post([this] {
    form.View2.clear();
    for (std::size_t row = 0; row < mostUnservedRows; ++row) {
      addResult("HKEY_LOCAL_MACHINE", row == 1 ? "a" : "b");
    }
  });
  const Texts all = left("HKEY_LOCAL_MACHINE\\a", Texts(mostUnservedRows, "a"));
  EXPECT_EQ(all, Texts(mostUnservedRows - 1, "b"));
}

TEST_F(ExclusionListTest, AFileOfAnyBytesTakesSomeKeysOrNone) {
  for (const std::string& content : fixture::unrulyContents("a,*?#[]!-\" \r\n")) {
    for (const std::string& key : left(content, {"a", "Software\\a", "\xE4"})) {
      EXPECT_TRUE(key == "a" || key == "Software\\a" || key == "\xE4") << key;
    }
  }
  EXPECT_EQ(left(fixture::longLine('x'), {"a"}), (Texts{"a"}));
}

// Written here once more, entry by entry.
bool isTakenByAny(const Texts& entries, const std::string& key) {
  return std::ranges::any_of(entries, [&](const std::string& entry) {
    return ("hkey_local_machine\\" + key).starts_with(entry);
  });
}

TEST_F(ExclusionListTest, ManyEntriesTogetherTakeWhatEachOfThemTakes) {
  std::minstd_rand random(1);
  const auto anyName = [&random] {
    std::string name(random() % 4 + 1, ' ');
    std::ranges::generate(name, [&random] { return "ab\\!"[random() % 4]; });
    return name;
  };
  for (int round = 0; round < 20; ++round) {
    Texts entries(12);
    Texts keys(60);
    std::ranges::generate(entries, [&] { return "hkey_local_machine\\" + anyName() + "x"; });
    std::ranges::generate(keys, [&] { return anyName() + "x" + anyName(); });
    Texts wanted;
    std::string lines = entries[0];
    for (const std::string& entry : entries) {
      lines += "\r\n" + entry;
    }
    std::ranges::copy_if(keys, std::back_inserter(wanted),
                         [&](const std::string& key) { return !isTakenByAny(entries, key); });
    EXPECT_EQ(left(lines, keys), wanted) << lines;
  }
}

TEST_F(ExclusionListTest, AKeyShorterThanTheEntryStays) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\Software", {"Softwar"}), (Texts{"Softwar"}));
}

TEST_F(ExclusionListTest, OnlyTheRowsOwnRootCounts) {
  write("HKEY_USERS\\Software\r\n");
  addResult("HKEY_LOCAL_MACHINE", "Software\\a");
  addResult("HKEY_USERS", "Software\\b");
  Command29(form);
  EXPECT_EQ(results(), (Texts{"Software\\a"}));
}

TEST_F(ExclusionListTest, LocationAndBadValueDoNotCount) {
  write("bad value\r\nlocation\r\n");
  addResult("HKEY_USERS", "a");
  Command29(form);
  EXPECT_EQ(form.View4.count(), 2U);
  EXPECT_EQ(results(), (Texts{"a"}));
}

TEST_F(ExclusionListTest, WildcardsWorkWithinTheLengthOfTheEntry) {
  EXPECT_EQ(left("HKEY_?????_MACHINE\\a#", {"a1", "a22", "ab"}), (Texts{"ab"}));
  // The star has one letter to fit, being one itself.
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\*b", {"abc", "aab", "bbb"}), (Texts{"aab"}));
}

TEST_F(ExclusionListTest, ABracketListCountsWithAllItsLetters) {
  // A list that matches one letter is compared with up to four, unless a star takes the rest.
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\[ab]", {"b", "axyz", "c"}), (Texts{"axyz", "c"}));
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\[ab]*", {"a1234", "b1234", "c1234"}), (Texts{"c1234"}));
}

TEST_F(ExclusionListTest, AnEntryThatIsNoPatternTakesAll) {
  EXPECT_EQ(left("HKEY_USERS\\[a", {"a", "b"}), Texts());
}

TEST_F(ExclusionListTest, AnEmptyEntryTakesAll) {
  EXPECT_EQ(left("HKEY_USERS\\x\r\n", {"a", "b"}), Texts());
}

TEST_F(ExclusionListTest, AFileOfOneEmptyLineTakesNothing) {
  EXPECT_EQ(left("", {"a"}), (Texts{"a"}));
}

TEST_F(ExclusionListTest, AFileOfNineBytesTakesNothing) {
  EXPECT_EQ(left("HKEY_LO", {"a"}), (Texts{"a"}));
  EXPECT_EQ(left("HKEY_LOC", {"a"}), Texts());
}

TEST_F(ExclusionListTest, BothHalvesOfAnEntryWithACommaTake) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a,HKEY_LOCAL_MACHINE\\b", {"a1", "b1", "c1"}), (Texts{"c1"}));
}

TEST_F(ExclusionListTest, TheCountOfACategoryIsNotTouched) {
  form.View1.add("Fonts");
  showProblems(form, 1, 7);
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\", {"a", "b"}), Texts());
  std::string cells;
  for (std::size_t column = 0; column < form.View1.columnHeaders().size(); ++column) {
    cells += form.View1.text(1, column);
  }
  EXPECT_EQ(cells, "Fonts7");
}

TEST_F(ExclusionListTest, NorIsItWhenAResultIsExcluded) {
  form.View1.add("Fonts");
  showProblems(form, 1, 7);
  addResult("HKEY_USERS", "a");
  form.View2.select(1);
  form.chameleonButton9.click();
  EXPECT_EQ(results(), Texts());
  EXPECT_EQ(form.View1.text(1, problemsColumn), "7");
}

TEST_F(ExclusionListTest, BlanksAroundAnEntryDoNotCount) {
  EXPECT_EQ(left("\" HKEY_LOCAL_MACHINE\\a  \"", {"a", "b"}), (Texts{"b"}));
}

TEST_F(ExclusionListTest, NorDoBlanksAfterAKey) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a?", {"a ", "ab"}), (Texts{"a "}));
}

TEST_F(ExclusionListTest, EntriesStayInForceForTheNextRuns) {
  EXPECT_EQ(left("HKEY_LOCAL_MACHINE\\a", {"a"}), Texts());
  addResult("HKEY_LOCAL_MACHINE", "a");
  Command29(form);
  EXPECT_EQ(results(), Texts());
  EXPECT_EQ(content(), "HKEY_LOCAL_MACHINE\\a\r\n");
}

TEST_F(ExclusionListTest, HighlightedResultsBecomeLinesAndGo) {
  write("first line\r\n");
  for (const char* key : {"a", "b", "c", "d"}) {
    addResult("HKEY_USERS", key);
  }
  form.View2.setChecked(1, true);
  form.View2.setSelected(2, true);
  form.View2.setSelected(3, true);
  form.chameleonButton9.click();
  EXPECT_EQ(content(), "first line\r\nHKEY_USERS\\b\r\nHKEY_USERS\\c\r\n");
  EXPECT_EQ(results(), (Texts{"a", "d"}));
  EXPECT_EQ(entries(), Texts());
}

TEST_F(ExclusionListTest, TheMenuExcludesAsTheButtonDoes) {
  addResult("HKEY_USERS", "a");
  form.View2.select(1);
  form.g.click();
  EXPECT_EQ(content(), "HKEY_USERS\\a\r\n");
  EXPECT_EQ(results(), Texts());
}

TEST_F(ExclusionListTest, NoHighlightExcludesNothing) {
  addResult("HKEY_USERS", "a");
  form.View2.setChecked(1, true);
  form.chameleonButton9.click();
  EXPECT_EQ(content(), "(none)");
  EXPECT_EQ(results(), (Texts{"a"}));
}

// One of an administrator behind one of the user.
class PolicyExclusionTest : public ExclusionListTest {
 protected:
  PolicyExclusionTest() {
    emptyKey(policies);
    setText(policies, "1", "HKEY_LOCAL_MACHINE\\Set");
    write("HKEY_LOCAL_MACHINE\\Own\r\n");
    loadExclusions(form);
  }
  ~PolicyExclusionTest() override { removeKey(policies); }

  const std::string policies =
      "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg\\Exclusions";
};

TEST_F(PolicyExclusionTest, ItFollowsThoseOfTheFileAndTakesRowsLikeThem) {
  EXPECT_EQ(entries(), (Texts{"HKEY_LOCAL_MACHINE\\Own", "HKEY_LOCAL_MACHINE\\Set"}));
  EXPECT_FALSE(form.View4.isLocked(1));
  EXPECT_TRUE(form.View4.isLocked(2));
  for (const char* key : {"Own\\x", "Set\\x", "Other"}) {
    addResult("HKEY_LOCAL_MACHINE", key);
  }
  Command29(form);
  EXPECT_EQ(results(), (Texts{"Other"}));
}

TEST_F(PolicyExclusionTest, ItCanBeNeitherEditedNorRemoved) {
  form.dialogs.show = [](const UserMessage&) { return Answer::Yes; };
  View4_ItemClick(form, 2);
  EXPECT_FALSE(form.chameleonButton6.enabled);
  EXPECT_FALSE(form.chameleonButton8.enabled);
  form.View4.setSelected(1, true);
  form.View4.setSelected(2, true);
  form.chameleonButton6.click();
  EXPECT_EQ(entries(), (Texts{"HKEY_LOCAL_MACHINE\\Set"}));
  View4_ItemClick(form, 1);
  EXPECT_FALSE(form.chameleonButton6.enabled);
}

TEST_F(PolicyExclusionTest, ItIsNotWrittenToTheFile) {
  View4_ItemClick(form, 1);
  EXPECT_TRUE(form.chameleonButton8.enabled);
  form.chameleonButton8.click();
  form.Form1.Text1.setText("HKEY_LOCAL_MACHINE\\New");
  Form1_orubutton1_Click(form);
  EXPECT_EQ(content(), "HKEY_LOCAL_MACHINE\\New\r\n");
}

}  // namespace
}  // namespace zelvreg
