// Only the emulated computer can be a 32-bit one, merges the two classes roots, lets a call
// fail and can be without classes of a user.
#include "form/Form42.h"
#include "machine/Machine.h"
#include "scanners/ServerFilesFixture.h"

namespace zelvreg::serverFiles {
namespace {

class ServerFilesNativeTest : public ServerFilesFixture {};

TEST_F(ServerFilesNativeTest, TheClassesRootHoldsTheUsersClassesToo) {
  serve(ofCurrentUser, classA, gone);
  serve(ofMachine, classB, gone);
  cln7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(ofClassesRoot, classA, goneResolved),
                                            finding(ofClassesRoot, classB, goneResolved)}));
}

TEST_F(ServerFilesNativeTest, AClassWhosePermissionsCannotBeChangedIsSkipped) {
  serve(ofClassesRoot, classA, gone);
  serve(ofClassesRoot, classB, gone);
  machine::Machine::current()->faults().fail(machine::ApiCall::RegSetKeySecurity, 1,
                                             ERROR_ACCESS_DENIED);
  cln7(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(ofClassesRoot, classB, goneResolved)}));
}

TEST_F(ServerFilesNativeTest, WithoutAClassesHiveOfAnyUserNothingIsFound) {
  const std::string hive = "HKEY_USERS\\S-1-5-21-1-1-1-1001_Classes";
  removeKey(hive);
  ASSERT_FALSE(hasKey(hive));
  setText("HKEY_USERS\\CLSID\\" + classA + "\\InprocServer32", "", gone);
  cln9(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_EQ(form.View1.text(9, problemsColumn), "0");
}

class ServerFiles32Test : public fixture::Computer32Fixture {};

TEST_F(ServerFiles32Test, NothingOfTheSystemFolderIsGoneAndTheCaseIsKept) {
  const std::string server = "\\CLSID\\{A}\\InprocServer32";
  for (const Place& place : {ofClassesRoot, ofCurrentUser, ofUsers, ofMachine}) {
    SCOPED_TRACE(place.name);
    form.View2.clear();
    setText(place.classesRoot + server, "", "C:\\Windows\\System32\\Gone.dll");
    place.scan(form);
    EXPECT_EQ(form.View2.count(), 0U);
    setText(place.classesRoot + server, "", "%SystemRoot%\\Gone.dll");
    place.scan(form);
    ASSERT_EQ(form.View2.count(), 1U);
    EXPECT_EQ(form.View2.text(1, locationColumn), "C:\\Windows\\Gone.dll");
  }
}

}  // namespace
}  // namespace zelvreg::serverFiles
