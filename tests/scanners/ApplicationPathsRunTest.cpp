// One run over all places: its order, what it counts and shows, and how it is stopped.
#include "form/Form42.h"
#include "scanners/ApplicationPathsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;
using fixture::Texts;

// Appends what differs from the last one.
template <typename Item>
void note(std::vector<Item>& seen, const Item& item) {
  if (seen.empty() || seen.back() != item) {
    seen.push_back(item);
  }
}

class ApplicationPathsRunTest : public fixture::ApplicationPathsFixture {
 protected:
  // One finding in each place.
  void fillAllPlaces() {
    setText(appPaths + "\\One.exe", "", gone);
    setText(appPaths32 + "\\Two.exe", "", gone);
    setText(store, goneResolved, "");
    setText(layers, goneResolved, "");
    for (const std::string& key : {own, own32, ownOfUser}) {
      setText(key, "Program", gone);
    }
  }
};

TEST_F(ApplicationPathsRunTest, ThePlacesAreWalkedInTheirOrder) {
  fillAllPlaces();
  Command5(form);
  EXPECT_EQ(findings(),
            (Rows{inAppPaths(goneResolved, "One.exe", appPathsReported),
                  inAppPaths(goneResolved, "Two.exe", appPaths32Reported),
                  named(goneResolved, user, storeReported),
                  named(goneResolved, user, layersReported), named("Program", machine, ownReported),
                  named("Program", machine, own32Reported), named("Program", user, ownReported)}));
}

TEST_F(ApplicationPathsRunTest, TheCountOfAllPlacesIsShownAsItGrows) {
  fillAllPlaces();
  Texts shown;
  form.messages.serveHost = [&] { note(shown, shownCount()); };
  Command5(form);
  note(shown, shownCount());
  EXPECT_EQ(shown, (Texts{"", "1", "2", "3", "4", "5", "6", "7"}));
}

TEST_F(ApplicationPathsRunTest, TheRunningTotalContinuesAndIsSavedWithEachFinding) {
  fillAllPlaces();
  form.totalFound = 40;
  Texts saved;
  form.messages.serveHost = [&] { note(saved, storedText(countKey, "reg-count")); };
  Command5(form);
  note(saved, storedText(countKey, "reg-count"));
  EXPECT_EQ(saved, (Texts{"(none)", "41", "42", "43", "44", "45", "46", "47"}));
  EXPECT_EQ(form.totalFound, 47);
  EXPECT_EQ(form.totalFoundText, "47");
}

TEST_F(ApplicationPathsRunTest, WithoutFindingsTheTotalIsNotSaved) {
  Command5(form);
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(ApplicationPathsRunTest, WithoutFindingsZeroIsShownAfterEachListButTheLastAndAtTheEnd) {
  setText(appPaths + "\\One.exe", "", there);
  setText(appPaths32 + "\\Two.exe", "", there);
  setText(store, there, "");
  setText(layers, there, "");
  Texts shown;
  form.messages.serveHost = [&] {
    shown.push_back(shownCount());
    form.View1.setText(3, problemsColumn, "");
  };
  Command5(form);
  EXPECT_EQ(shownCount(), "0");
  // The names of a list of one are asked for twice, and it has two turns, the names of the
  // compatibility lists being asked for without serving the queue.
  ASSERT_GT(shown.size(), 14U);
  EXPECT_EQ(Texts(shown.begin(), shown.begin() + 14),
            (Texts{"", "", "", "", "0", "", "", "", "0", "", "0", "", "", ""}));
  EXPECT_EQ(Texts(shown.begin() + 14, shown.end()), Texts(shown.size() - 14, ""));
}

TEST_F(ApplicationPathsRunTest, AFindingKeepsTheZeroAway) {
  setText(appPaths + "\\One.exe", "", gone);
  Command5(form);
  EXPECT_EQ(shownCount(), "1");
}

TEST_F(ApplicationPathsRunTest, TheListOfBadValuesBeginsAgainWithEachKeyOfSoftware) {
  fillAllPlaces();
  form.List2.add("left over");
  std::vector<Texts> seen;
  form.messages.serveHost = [&] { note(seen, fixture::entriesOf(form.List2)); };
  Command5(form);
  note(seen, fixture::entriesOf(form.List2));
  const std::string program = goneResolved;
  const Texts key{"ApplicationPathsTest"};
  EXPECT_EQ(seen, (std::vector<Texts>{{},
                                      {"One.exe"},
                                      {"One.exe", "Two.exe"},
                                      {"One.exe", "Two.exe", program},
                                      {"One.exe", "Two.exe", program, program},
                                      {},
                                      key,
                                      {},
                                      key,
                                      {},
                                      key}));
}

TEST_F(ApplicationPathsRunTest, TheNamesOfOnePlaceAreNotWalkedInTheNext) {
  makeKey(appPaths + "\\One.exe");
  setText(appPaths + "\\One.exe", "Path", "");
  setText(own, "Program", gone);
  form.List1.add("left over");
  Command5(form);
  EXPECT_EQ(findings(), Rows{named("Program", machine, ownReported)});
}

TEST_F(ApplicationPathsRunTest, TheNumberOfRowsIsLeftForTheNextScanner) {
  setText(store, gone, "");
  form.View2.add("font");
  form.Text1.setText("1");
  Command5(form);
  EXPECT_EQ(form.Text1.text(), std::to_string(form.View2.count()));
  EXPECT_GE(form.View2.count(), 2U);
}

TEST_F(ApplicationPathsRunTest, TheStatusLineNamesTheCategoryAndTheKeyUnderWalk) {
  setText(appPaths + "\\One.exe", "", there);
  Texts names;
  form.messages.serveHost = [&] { names.push_back(form.Label3.caption.get()); };
  Command5(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid Application path");
  EXPECT_EQ(names.at(1), "One.exe");
}

TEST_F(ApplicationPathsRunTest, AStopEmptiesTheListsOfKeysButNotThoseOfValues) {
  fillAllPlaces();
  form.Text2.setText("2");
  Command5(form);
  EXPECT_EQ(findings(), (Rows{named(goneResolved, user, storeReported),
                              named(goneResolved, user, layersReported)}));
  EXPECT_TRUE(isGranted(appPaths));
  EXPECT_FALSE(isGranted(appPaths + "\\One.exe"));
}

TEST_F(ApplicationPathsRunTest, AStopEndsTheListUnderWalk) {
  setText(store, "C:\\a gone.exe", "");
  setText(store, "C:\\b gone.exe", "");
  setText(ownOfUser, "Program", gone);
  form.messages.serveHost = [&] {
    if (form.List7.text(0) == "C:\\a gone.exe") {
      form.Text2.setText("2");
    }
  };
  Command5(form);
  EXPECT_EQ(findings(), (Rows{named("C:\\a gone.exe", user, storeReported)}));
}

}  // namespace
}  // namespace zelvreg
