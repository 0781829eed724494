// What sets the four places apart.
#include <algorithm>

#include "form/Form42.h"
#include "keys/AccountSids.h"
#include "scanners/ServerFilesFixture.h"

namespace zelvreg::serverFiles {
namespace {

class ServerFilesPlacesTest : public ServerFilesFixture {
 protected:
  bool isOpenToUser(const std::string& key) {
    return std::ranges::count(accessOfKey(key), user, &fixture::AccessRecord::sid) == 2;
  }

  std::vector<BYTE> user = lookUpSid(userName());
};

TEST_F(ServerFilesPlacesTest, TheClassesRootOpensEveryServerKeyToTheUserAndNoOther) {
  serve(ofClassesRoot, classA, gone);
  serve(ofClassesRoot, classB, there);
  cln7(form);
  EXPECT_TRUE(isOpenToUser(serverOf(ofClassesRoot, classA)));
  EXPECT_TRUE(isOpenToUser(serverOf(ofClassesRoot, classB)));
  EXPECT_FALSE(isOpenToUser(machineClasses + "\\CLSID\\" + classA));
}

TEST_F(ServerFilesPlacesTest, TheOtherThreeLeaveThePermissionsAlone) {
  for (const Place& place : {ofCurrentUser, ofUsers, ofMachine}) {
    SCOPED_TRACE(place.name);
    serve(place, classA, gone);
    const auto before = accessOfKey(serverOf(place, classA));
    place.scan(form);
    EXPECT_EQ(accessOfKey(serverOf(place, classA)), before);
  }
}

TEST_F(ServerFilesPlacesTest, OnlyTheClassesRootLooksForABackslashBetweenTheQuotes) {
  for (const Place& place : {ofClassesRoot, ofCurrentUser, ofUsers, ofMachine}) {
    SCOPED_TRACE(place.name);
    form.View2.clear();
    serve(place, classA, "\"gone.dll\" C:\\data");
    place.scan(form);
    std::vector<Texts> expected{finding(place, classA, "gone.dll")};
    if (place.row == ofClassesRoot.row) {
      expected.clear();
    }
    EXPECT_EQ(findings(), expected);
    removeClasses();
  }
}

TEST_F(ServerFilesPlacesTest, OnlyTheClassesRootIsReadDirectlySoThatAnyTextCounts) {
  const std::string texts = gone + std::string(2, '\0');
  for (const Place& place : {ofClassesRoot, ofCurrentUser, ofUsers, ofMachine}) {
    SCOPED_TRACE(place.name);
    form.View2.clear();
    setBytes(serverOf(place, classA), "", REG_MULTI_SZ, texts);
    place.scan(form);
    EXPECT_EQ(findings().size(), place.row == ofClassesRoot.row ? 1U : 0U);
    removeClasses();
  }
}

TEST_F(ServerFilesPlacesTest, TheOtherThreeBeginWithZeroInTheirCell) {
  for (const Place& place : {ofClassesRoot, ofCurrentUser, ofUsers, ofMachine}) {
    SCOPED_TRACE(place.name);
    form.categoryFound = 3;
    Texts seen;
    form.messages.serveHost = [&] { seen.push_back(form.View1.text(place.row, problemsColumn)); };
    serve(place, classA, there);
    place.scan(form);
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), place.row == ofClassesRoot.row ? "before" : "0");
  }
}

TEST_F(ServerFilesPlacesTest, WithoutClassesOfTheUserNothingIsFound) {
  emptyKey(userClasses + "\\CLSID");
  form.categoryFound = 3;
  form.List1.add("left over");
  cln8(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "0");
  EXPECT_EQ(form.categoryFound, 3);
  removeKey(userClasses + "\\CLSID");
  cln8(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "0");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(ServerFilesPlacesTest, OnlyTheFirstClassesHiveOfTheUsersIsScanned) {
  setText("HKEY_USERS\\" + laterUsersHive + "\\CLSID\\" + classB + "\\InprocServer32", "", gone);
  serve(ofUsers, classA, gone);
  cln9(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(ofUsers, classA, goneResolved)}));
}

TEST_F(ServerFilesPlacesTest, AlsoIfItHoldsNoClass) {
  setText("HKEY_USERS\\" + laterUsersHive + "\\CLSID\\" + classB + "\\InprocServer32", "", gone);
  makeKey("HKEY_USERS\\" + usersHive);
  cln9(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count(), 0);
}

TEST_F(ServerFilesPlacesTest, AClassesHiveIsKnownByItsNameInAnyCaseAndAnywhereInIt) {
  const std::string hive = "!ServerFilesTest-0_CLASSES.old";
  serve(ofUsers, classB, gone);
  setText("HKEY_USERS\\" + hive + "\\CLSID\\" + classA + "\\InprocServer32", "", gone);
  cln9(form);
  removeKey("HKEY_USERS\\" + hive);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0][4], hive + "\\CLSID\\" + classA + "\\InprocServer32");
}

TEST_F(ServerFilesPlacesTest, AClassesHiveThatTheListStillHoldsIsNotTaken) {
  form.List1.add("LeftOver_Classes");
  serve(ofUsers, classA, gone);
  cln9(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(ofUsers, classA, goneResolved)}));
}

TEST_F(ServerFilesPlacesTest, AUserWithoutTheEndingIsSkipped) {
  const std::string hive = "!ServerFilesTest-0-Classes";
  setText("HKEY_USERS\\" + hive + "\\CLSID\\" + classA + "\\InprocServer32", "", gone);
  serve(ofUsers, classB, gone);
  cln9(form);
  removeKey("HKEY_USERS\\" + hive);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(ofUsers, classB, goneResolved)}));
}

}  // namespace
}  // namespace zelvreg::serverFiles
