// Rows 7 to 10 as a scan runs them.
#include <algorithm>

#include "form/Form42.h"
#include "scan/ScanDriver.h"
#include "scanners/ServerFilesFixture.h"
#include "scanners/TypeLibraries.h"
#include "shell/StartUp.h"

namespace zelvreg::serverFiles {
namespace {

const std::string libraryName = "{ServerFilesTest-Library}";
const std::string libraryKey = machineClasses + "\\TypeLib\\" + libraryName;
const std::string missingLibrary = "{ServerFilesTest-Missing}";

class ClassRowsTest : public ServerFilesFixture {
 protected:
  ClassRowsTest() {
    removeKey(libraryKey);
    bindClicks(form);
  }
  ~ClassRowsTest() override { removeKey(libraryKey); }

  void scanRows(std::size_t first, std::size_t last) {
    for (std::size_t row = first; row <= last; ++row) {
      form.View1.setChecked(row, true);
    }
    runScan(form);
  }

  static void refer(const std::string& name) {
    setText(machineClasses + "\\CLSID\\" + name + "\\TypeLib", "", missingLibrary);
  }

  static void makeFindingOfEachRoutine() {
    setText(libraryKey + "\\1.0\\HELPDIR", "", "C:\\ServerFilesTest\\Gone");
    serve(ofMachine, classA, gone);
    refer(classA);
    serve(ofCurrentUser, classB, gone);
    serve(ofUsers, classA, gone);
  }

  Texts kinds() {
    Texts codes;
    for (const Texts& cellsOfFinding : findings()) {
      codes.push_back(cellsOfFinding[2]);
    }
    return codes;
  }

  std::int64_t countOfKinds(const Texts& codes) {
    std::int64_t count = 0;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      count += std::ranges::count(codes, form.View2.text(row, kindCodeColumn));
    }
    return count;
  }
};

TEST_F(ClassRowsTest, HelpFoldersComeBeforeServersAndThoseBeforeReferences) {
  setText(libraryKey + "\\1.0\\HELPDIR", "", "C:\\ServerFilesTest\\Gone");
  serve(ofMachine, classA, gone);
  refer(classA);
  scanRows(7, 7);
  EXPECT_EQ(kinds(), (Texts{"71", "8", "72"}));
}

TEST_F(ClassRowsTest, EachCellShowsTheSumOfTheRowsUpToIt) {
  makeFindingOfEachRoutine();
  scanRows(7, 10);
  std::int64_t sum = countOfKinds({"71", "8", "72"});
  EXPECT_GE(sum, 3);
  EXPECT_EQ(form.View1.text(7, problemsColumn), decimal(sum));
  for (const Place& place : {ofCurrentUser, ofUsers, ofMachine}) {
    const std::int64_t count = countOfKinds({place.kindCode});
    EXPECT_GE(count, 1) << place.name;
    sum += count;
    EXPECT_EQ(form.View1.text(place.row, problemsColumn), decimal(sum)) << place.name;
  }
  EXPECT_EQ(form.totalFound, sum);
}

TEST_F(ClassRowsTest, ARowWithoutFindingsShowsZeroAndTheSumContinuesAfterIt) {
  emptyKey(userClasses + "\\CLSID");
  serve(ofMachine, classA, gone);
  serve(ofUsers, classA, gone);
  scanRows(7, 9);
  EXPECT_EQ(form.View1.text(8, problemsColumn), "0");
  EXPECT_EQ(form.View1.text(9, problemsColumn), decimal(countOfKinds({"71", "8", "72"}) + 1));
}

TEST_F(ClassRowsTest, AnotherScanCountsFromTheStart) {
  makeFindingOfEachRoutine();
  scanRows(7, 10);
  const Texts first = cells();
  runScan(form);
  EXPECT_EQ(cells(), first);
}

TEST_F(ClassRowsTest, TheReferencesOfTheClassesThatTheServersLeftAreTested) {
  refer(classA);
  cln71(form);
  cln72(form);
  EXPECT_TRUE(findings().empty());
  cln7(form);
  cln72(form);
  EXPECT_EQ(kinds(), (Texts{"72"}));
}

TEST_F(ClassRowsTest, AStopEndsTheWalkOfTheListThatItCutShort) {
  for (const std::string& name : {classA, classB}) {
    serve(ofMachine, name, gone);
    refer(name);
  }
  form.messages.serveHost = [&] {
    const Texts entries = fixture::entriesOf(form.List1);
    if (std::ranges::count(entries, classA) == 1) {
      form.Text2.setText("2");
    }
  };
  scanRows(7, 10);
  EXPECT_EQ(kinds(), Texts{});
  EXPECT_EQ(form.View1.text(8, problemsColumn), "");
}

}  // namespace
}  // namespace zelvreg::serverFiles
