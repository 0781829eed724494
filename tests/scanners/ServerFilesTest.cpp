#include "scanners/ServerFiles.h"

#include <algorithm>

#include "form/Form42.h"
#include "scanners/ServerFilesFixture.h"

namespace zelvreg::serverFiles {
namespace {

class ServerFilesTest : public ServerFilesFixture, public ::testing::WithParamInterface<Place> {
 protected:
  const Place& place = GetParam();
};

INSTANTIATE_TEST_SUITE_P(Places, ServerFilesTest,
                         ::testing::Values(ofClassesRoot, ofCurrentUser, ofUsers, ofMachine),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(ServerFilesTest, AClassWhoseServerIsGoneIsReported) {
  serve(place, classA, gone);
  serve(place, classB, there);
  place.scan(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(place, classA, goneResolved)}));
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_P(ServerFilesTest, OnlyTheServerInTheProcessIsJudged) {
  const std::string key = place.classesRoot + "\\CLSID\\" + classA;
  setText(key, "", gone);
  setText(key + "\\LocalServer32", "", gone);
  setText(key + "\\InprocServer", "", gone);
  setText(key + "\\InprocServer32", "Named", gone);
  place.scan(form);
  EXPECT_TRUE(findings().empty());
}

TEST_P(ServerFilesTest, AServerIsTakenWholeButForItsQuotes) {
  struct Case {
    std::string server;
    std::string reported;  // empty if it is not
  };
  const std::string named = "c:\\serverfilestest\\" + lowerCase(userName()) + ".dll";
  const std::vector<Case> cases{
      {"", ""},
      {"gone.dll", ""},
      {"C:gone.dll", ""},
      {there, ""},
      {"C:/ServerFilesTest/There.dll", ""},
      {"\"" + there + "\"", ""},
      {"\"" + there, ""},
      {"\"" + there + "\" /automation", ""},
      {"C:\\Server\"Files\"Test\\There.dll", ""},
      {"%SystemDrive%\\ServerFilesTest\\There.dll", ""},
      {there + " /automation", "c:\\serverfilestest\\there.dll /automation"},
      {there + ",1", "c:\\serverfilestest\\there.dll,1"},
      {"rundll32.exe " + there, "rundll32.exe c:\\serverfilestest\\there.dll"},
      {"C:\\ServerFilesTest", "c:\\serverfilestest"},
      {"\\gone.dll", "\\gone.dll"},
      {"\"" + gone + "\" /automation", goneResolved},
      {"C:\\ServerFilesTest\\\"Gone.dll\"", goneResolved},
      {"C:\\ServerFilesTest\\%NoSuchVariable%.dll", "c:\\serverfilestest\\%nosuchvariable%.dll"},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.server);
    form.View2.clear();
    serve(place, classA, tested.server);
    place.scan(form);
    std::vector<Texts> expected;
    if (!tested.reported.empty()) {
      expected.push_back(finding(place, classA, tested.reported));
    }
    EXPECT_EQ(findings(), expected);
  }
}

TEST_P(ServerFilesTest, AVariableBeforeTheSystemFolderIsResolved) {
  setText(serverOf(place, classA), "", "%SystemRoot%\\system32\\server files test.dll",
          REG_EXPAND_SZ);
  place.scan(form);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(lowerCase(findings()[0][0]), "c:\\windows\\sysnative\\server files test.dll");
}

TEST_P(ServerFilesTest, TheClassesOfTheOtherViewAreNotLookedAt) {
  setText(place.classesRoot + "\\Wow6432Node\\CLSID\\" + classA + "\\InprocServer32", "", gone);
  place.scan(form);
  EXPECT_TRUE(findings().empty());
}

TEST_P(ServerFilesTest, TheServerIsReadInThe64BitView) {
  serve(place, classA, there);
  setText(place.classesRoot + "\\Wow6432Node\\CLSID\\" + classA + "\\InprocServer32", "", gone);
  place.scan(form);
  EXPECT_TRUE(findings().empty());
}

TEST_P(ServerFilesTest, TheCellContinuesFromTheCountOfTheRowsBefore) {
  serve(place, classA, gone);
  serve(place, classB, gone);
  form.categoryFound = 40;
  Texts expected = cells();
  place.scan(form);
  const auto found = static_cast<std::int64_t>(form.View2.count());
  ASSERT_GE(found, 2);
  EXPECT_EQ(form.categoryFound, 40 + found);
  expected[place.row - 1] = decimal(40 + found);
  EXPECT_EQ(cells(), expected);
}

TEST_P(ServerFilesTest, EachFindingIsCountedInTheTotalAndKeptAtOnce) {
  serve(place, classA, gone);
  serve(place, classB, gone);
  bool isKept = true;
  form.messages.serveHost = [&] {
    const std::string expected = form.View2.count() == 0 ? "(none)" : rowCount();
    isKept = isKept && storedText(countKey, "reg-count") == expected;
  };
  place.scan(form);
  EXPECT_TRUE(isKept);
  EXPECT_EQ(form.totalFound, static_cast<std::int64_t>(form.View2.count()));
  EXPECT_EQ(form.totalFoundText, rowCount());
  EXPECT_EQ(storedText(countKey, "reg-count"), rowCount());
}

TEST_P(ServerFilesTest, EveryClassIsNamedInTheStatusLineAfterItsTest) {
  serve(place, classA, gone);
  makeKey(place.classesRoot + "\\CLSID\\" + classB);
  std::vector<std::pair<std::string, std::size_t>> shown;
  form.messages.serveHost = [&] { shown.emplace_back(form.Label3.caption, findings().size()); };
  place.scan(form);
  EXPECT_EQ(form.Label4.caption.get(), place.caption);
  for (const std::string& name : {classA, classB}) {
    const std::string text = place.rootName + "\\" + place.keyPrefix + name + "\\InprocServer32";
    EXPECT_EQ(std::ranges::count(shown, std::pair(text, std::size_t{1})), 1) << name;
  }
}

TEST_P(ServerFilesTest, TheListEndsWithTheClassesAlone) {
  serve(place, classA, there);
  serve(place, classB, gone);
  form.List1.add("left over");
  place.scan(form);
  const Texts entries = fixture::entriesOf(form.List1);
  EXPECT_EQ(std::ranges::count(entries, classA), 1);
  EXPECT_EQ(std::ranges::count(entries, classB), 1);
  EXPECT_EQ(std::ranges::count(entries, "left over"), 0);
  EXPECT_EQ(std::ranges::count(entries, usersHive), 0);
}

TEST_P(ServerFilesTest, AStopBeforeItLeavesNothingToTest) {
  serve(place, classA, gone);
  form.Text2.setText("2");
  place.scan(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count(), 0);
}

TEST_P(ServerFilesTest, AStopBetweenTwoClassesEndsTheWalk) {
  serve(place, classA, gone);
  serve(place, classB, gone);
  form.messages.serveHost = [&] {
    if (findings().size() == 1) {
      form.Text2.setText("2");
      form.cancelRequested = true;
    }
  };
  place.scan(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(place, classA, goneResolved)}));
}

TEST_P(ServerFilesTest, FindingsFollowThoseThatAreThere) {
  form.View2.add("before");
  serve(place, classA, gone);
  place.scan(form);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"before", "", "", "", "", ""}));
  EXPECT_EQ(findings().size(), 1U);
}

}  // namespace
}  // namespace zelvreg::serverFiles
