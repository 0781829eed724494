// Only the emulated computer can be without classes, let a call fail and be a 32-bit one.
#include "form/Form42.h"
#include "machine/Machine.h"
#include "scanners/KeptScannersFixture.h"

namespace zelvreg::serverPrograms {
namespace {

class ServerProgramsNativeTest : public ServerProgramsFixture {
 protected:
  ServerProgramsNativeTest() {
    removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID");
    removeKey("HKEY_CURRENT_USER\\Software\\Classes\\CLSID");
  }
};

TEST_F(ServerProgramsNativeTest, WithoutClassesTheWalkTurnsOnceOverNothing) {
  for (auto* scan : {Command14, Command18, Command19}) {
    scan(form);
    EXPECT_EQ(form.View2.count(), 0U);
    EXPECT_EQ(form.Label3.caption.get(), "Checking    1 / 0");
    EXPECT_EQ(form.Text1.text(), "0");
  }
  EXPECT_EQ(form.categoryFound, 2);
}

TEST_F(ServerProgramsNativeTest, WithoutClassesTheNamesAreTakenFromTheUsersRoot) {
  makeKey("HKEY_CURRENT_USER\\clsid\\" + classA);
  for (auto* scan : {Command14, Command18, Command19}) {
    scan(form);
    EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{classA}));
  }
}

TEST_F(ServerProgramsNativeTest, ButNotWhenTheClassesAreDenied) {
  makeKey("HKEY_CURRENT_USER\\clsid\\" + classA);
  makeKey(classKeys + classB);
  auto& faults = machine::Machine::current()->faults();
  for (auto* scan : {Command14, Command18, Command19}) {
    faults.clear();
    faults.fail(machine::ApiCall::RegOpenKey, 1, ERROR_ACCESS_DENIED);
    scan(form);
    EXPECT_EQ(form.List1.count(), 0);
  }
}

TEST_F(ServerProgramsNativeTest, NamesOfTheUsersRootAreReadAtTheirUsualPlace) {
  makeKey("HKEY_CURRENT_USER\\clsid\\" + classA);
  setText(classKeys32 + classA + "\\InprocServer32", "", gone);
  Command14(form);
  EXPECT_EQ(findings().size(), 1U);
}

class ServerPrograms32Test : public fixture::Computer32Fixture {
 protected:
  static void serve(const std::string& key, const std::string& server) {
    setText(classKeys + classA + key, "", server);
  }
};

TEST_F(ServerPrograms32Test, OnlyTheFirstScannerTakesTheSystemFolderAsSound) {
  const std::string program = "C:\\Windows\\System32\\Gone.exe";
  serve("\\InprocServer32", program);
  serve("\\toolboxbitmap32", program + ",101");
  Command14(form);
  EXPECT_EQ(form.View2.count(), 0U);
  for (auto* scan : {Command18, Command19}) {
    form.View2.clear();
    form.Text1.setText("0");
    scan(form);
    ASSERT_EQ(form.View2.count(), 1U);
    EXPECT_EQ(form.View2.text(1, badValueColumn), program);
  }
}

TEST_F(ServerPrograms32Test, TheResolvedTextKeepsItsCase) {
  serve("\\InprocServer32", "%SystemRoot%\\Gone.exe /x");
  Command14(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "C:\\Windows\\Gone.exe");
}

}  // namespace
}  // namespace zelvreg::serverPrograms
