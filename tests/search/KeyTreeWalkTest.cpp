#include "search/KeyTreeWalk.h"

#include <algorithm>

#include "form/Form42.h"
#include "search/SearchFixture.h"

namespace zelvreg::searching {
namespace {

class KeyTreeWalkTest : public SearchFixture {
 protected:
  // Which names are tested instead of the data.
  void testNames(const std::string& text, bool ofKeys, bool ofValues) {
    form.ChData.value = false;
    form.ChKeys.value = ofKeys;
    form.ChValues.value = ofValues;
    form.cboFind.setText(text);
  }
};

TEST_F(KeyTreeWalkTest, GoesDepthFirstSubkeysBeforeTheKeysOwnValues) {
  setGone(userKey, "Own");
  setGone(userKey + "\\a", "A");
  setGone(userKey + "\\a\\deep", "Deep");
  setGone(userKey + "\\b", "B");
  Texts names;
  for (const Texts& row : found()) {
    names.push_back(row[1]);
  }
  EXPECT_EQ(names, (Texts{"Deep", "A", "B", "Own"}));
}

TEST_F(KeyTreeWalkTest, AKeyThatMatchesIsListedWithThePathInItsDefaultValue) {
  setText(userKey + "\\Needle", "", "\"C:\\Program Files (x86)\\X.exe\",1 \"%1\"");
  testNames("needle", true, false);
  EXPECT_EQ(found(), (std::vector<Texts>{{ownKey + "\\Needle", "c:\\program files (x86)\\x.exe", "",
                                          "HKEY_CURRENT_USER", ownKey + "\\Needle", ""}}));
}

TEST_F(KeyTreeWalkTest, ADefaultValueThatDoesNotBeginWithAQuotationMarkLosesItsMarksAlone) {
  setText(userKey + "\\Needle", "", " C:\\X.exe \"%1\",2 ");
  testNames("needle", true, false);
  EXPECT_EQ(found().at(0).at(1), "c:\\x.exe %1,2");
}

TEST_F(KeyTreeWalkTest, AMatchingNameIsNoProblem) {
  setText(userKey + "\\Needle", "Needle", "x");
  testNames("needle", true, true);
  EXPECT_EQ(found().size(), 2U);
  EXPECT_EQ(form.totalFound, 0);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "before");
}

TEST_F(KeyTreeWalkTest, AValueThatMatchesIsListedWithAPictureForItsType) {
  setText(userKey, "Needle1", "x");
  setText(userKey, "Needle2", "x", REG_EXPAND_SZ);
  setBytes(userKey, "Needle3", REG_BINARY, "x");
  setNumber(userKey, "Needle4", 1);
  setBytes(userKey, "Needle5", REG_NONE, "x");
  setText(userKey, "Other", "needle");
  testNames("needle", false, true);
  auto rows = found();
  std::ranges::sort(rows);
  const auto row = [](const std::string& name, const std::string& icon) {
    return Texts{ownKey + "\\" + name, "", "", "HKEY_CURRENT_USER", ownKey, icon};
  };
  EXPECT_EQ(rows,
            (std::vector<Texts>{row("Needle1", "ch"), row("Needle2", "ch"), row("Needle3", "ex"),
                                row("Needle4", "ex"), row("Needle5", "")}));
}

TEST_F(KeyTreeWalkTest, OnlyWhatIsAskedForIsTested) {
  setGone(userKey + "\\SearchTest", "SearchTest");
  form.cboFind.setText("searchtest");
  const auto count = [&](bool keys, bool values, bool data) {
    form.ChKeys.value = keys;
    form.ChValues.value = values;
    form.ChData.value = data;
    return found().size();
  };
  EXPECT_EQ(count(false, false, false), 0U);
  EXPECT_EQ(count(true, false, false), 1U);
  EXPECT_EQ(count(false, true, false), 1U);
  EXPECT_EQ(count(false, false, true), 1U);
  EXPECT_EQ(count(true, true, true), 3U);
}

TEST_F(KeyTreeWalkTest, DataOfNoOtherTypeThanTextAreTested) {
  const std::string path = std::string("C:\\SearchTest\\Gone.exe") + '\0';
  setBytes(userKey, "Expand", REG_EXPAND_SZ, path);
  setBytes(userKey, "Multi", REG_MULTI_SZ, path + '\0');
  setBytes(userKey, "Binary", REG_BINARY, path);
  EXPECT_TRUE(found().empty());
  setBytes(userKey, "Text", REG_SZ, path);
  EXPECT_EQ(found().size(), 1U);
}

// The name comes from the 32-bit view, the text and the repair from the other one.
TEST_F(KeyTreeWalkTest, AValueIsJudgedByItsTextInThe64BitView) {
  setGone(machineKey32, "Both");
  setText(machineKey, "Both", "C:\\SearchTest\\there.exe");
  setGone(machineKey32, "Only32");
  setGone(machineKey, "Only64");
  EXPECT_TRUE(found(HiveHandle::LocalMachine).empty());
  setGone(machineKey, "Both");
  setText(machineKey32, "Both", "no path");
  EXPECT_EQ(found(HiveHandle::LocalMachine).size(), 1U);
}

TEST_F(KeyTreeWalkTest, AFirstNameOfTwoBlanksIsTakenForNoNameAtAll) {
  setGone(userKey + "\\  ", "Run");
  setGone(userKey + "\\a", "Run");
  EXPECT_TRUE(found().empty());
}

TEST_F(KeyTreeWalkTest, AFirstValueOfTwoBlanksEndsItsKey) {
  setText(userKey, "  ", "C:\\SearchTest\\Gone.exe");
  setGone(userKey, "Run");
  EXPECT_TRUE(found().empty());
}

TEST_F(KeyTreeWalkTest, ACancelEndsTheKeysOfALevel) {
  makeKey(userKey + "\\Needle1");
  makeKey(userKey + "\\Needle2");
  testNames("needle", true, true);
  form.messages.serveHost = [&] { form.cancelRequested = form.View2.count() > 0; };
  EXPECT_EQ(found().size(), 1U);
}

TEST_F(KeyTreeWalkTest, ACancelEndsTheValuesOfAKey) {
  for (const char* name : {"Needle1", "Needle2", "Needle3"}) {
    setText(userKey, name, "x");
  }
  testNames("needle", false, true);
  // The second value is under test when the cancel is seen; it is still listed.
  form.messages.serveHost = [&] { form.cancelRequested = form.View2.count() > 0; };
  EXPECT_EQ(found().size(), 2U);
}

TEST_F(KeyTreeWalkTest, TheStatusShowsTheParentOrTheRoot) {
  makeKey(userKey + "\\a\\b");
  Texts shown;
  form.messages.serveHost = [&] {
    if (shown.empty() || shown.back() != form.Label3.caption.get()) {
      shown.push_back(form.Label3.caption);
    }
  };
  found();
  EXPECT_EQ(shown, (Texts{"\\Software", "1Keys scanned ", "\\" + ownKey, "\\" + ownKey + "\\a"}));
  shown.clear();
  form.cancelRequested = true;
  found(HiveHandle::CurrentUser, "Software");
  EXPECT_EQ(shown.front(), "HKEY_CURRENT_USER");
}

TEST_F(KeyTreeWalkTest, TheStatusShowsTheKeyOfATextThatIsTested) {
  setText(userKey + "\\a", "Run", "C:\\SearchTest\\there.exe");
  found();
  EXPECT_EQ(form.Label3.caption.get(), "HKEY_CURRENT_USER\\" + ownKey + "\\a");
}

TEST_F(KeyTreeWalkTest, EachFindingIsShownAndCountedAtOnce) {
  setGone(userKey + "\\a", "Run");
  setGone(userKey + "\\b", "Run");
  form.searchCategory = 2;
  Texts counts;
  form.messages.serveHost = [&] {
    const std::string count = form.View1.text(8, problemsColumn);
    if (counts.empty() || counts.back() != count) {
      counts.push_back(count);
    }
  };
  found();
  EXPECT_EQ(counts, (Texts{"before", "1"}));
  EXPECT_EQ(form.View1.text(8, problemsColumn), "2");
  EXPECT_EQ(form.View2.rowInView(), 2U);
  EXPECT_FALSE(form.View2.isChecked(2));
  EXPECT_EQ(form.Label4.caption.get(), "Current user settings");
  EXPECT_EQ(form.totalFoundText, "2");
  EXPECT_EQ(storedText(countKey, "reg-count"), "2");
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{"Run", "Run"}));
}

TEST_F(KeyTreeWalkTest, AKeyThatIsDeletedUnderTheWalkIsSkipped) {
  setGone(userKey + "\\a", "Run");
  setGone(userKey + "\\b\\deep", "Run");
  setGone(userKey + "\\c", "Run");
  form.messages.serveHost = [&] {
    if (form.View2.count() == 1) {
      removeKey(userKey + "\\b");
    }
  };
  EXPECT_EQ(found().size(), 2U);
}

TEST_F(KeyTreeWalkTest, AKeyThatIsMadeAnewUnderTheWalkIsReadAsItIsNow) {
  makeKey(userKey + "\\a\\b");
  setGone(userKey + "\\a", "Old");
  bool isNew = false;
  form.messages.serveHost = [&] {
    if (!isNew && form.Label3.caption.get() == "\\" + ownKey + "\\a") {
      isNew = true;
      removeKey(userKey + "\\a");
      setGone(userKey + "\\a", "New");
    }
  };
  const auto rows = found();
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows.at(0).at(1), "New");
}

TEST_F(KeyTreeWalkTest, TheKeyUnderWorkMayBeDeletedWithAllAboveIt) {
  setGone(userKey + "\\a\\b", "Run");
  form.messages.serveHost = [&] {
    if (form.Label3.caption.get() == "\\" + ownKey + "\\a") {
      removeKey(userKey);
    }
  };
  EXPECT_TRUE(found().empty());
}

}  // namespace
}  // namespace zelvreg::searching
