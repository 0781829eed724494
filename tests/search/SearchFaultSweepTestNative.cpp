// Only calls to the emulated computer can be made to fail.
#include <algorithm>
#include <map>

#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "search/Search.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/FaultSweep.h"
#include "support/MachineFixture.h"
#include "support/RegistryContent.h"

namespace zelvreg::searching {
namespace {

using fixture::RegistryContent;
// How sure each row is, by its fields.
using Rows = std::map<std::vector<std::string>, Confidence>;

// A search of the user's keys for paths, to its end.
struct Session {
  Session() {
    form.programFolder = "C:\\Own";
    bindClicks(form);
    createCategoryRows(form);
    Command24(form);
    form.cboFind.setText("sweep");
    form.ChCase.value = false;
    form.dialogs.show = [](const UserMessage&) { return Answer::Ok; };
    form.messages.serveHost = [this] {
      constexpr int moreThanAnySearch = 5000;
      if (++turns > moreThanAnySearch) {
        form.cancelRequested = true;
      }
    };
    cmdFind(form);
    lookAgain(form);
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows[fixture::findingOf(form, row)] = evidenceOf(form, row)->confidence;
    }
  }

  Form42 form;
  Rows rows;
  int turns = 0;
};

class SearchFaultSweepTest : public fixture::SweptCall {
 protected:
  SearchFaultSweepTest() {
    const std::string user = "HKEY_CURRENT_USER\\Software\\";
    first.key(user + "SearchSweep", R"("dead"="C:\\Sweep\\gone.exe")");
    first.key(user + "SearchSweep\\Inner\\Most",
              "\"dead too\"=\"C:\\\\Sweep\\\\gone.dll\"\n\"living\"=\"C:\\\\Sweep\\\\there.exe\"");
    // The program keeps its own settings below it.
    first.key("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node");
    // Without these nothing would be sure.
    for (const char* folder : {"Windows\\System32", "Windows\\Sysnative"}) {
      first.file("C:\\" + std::string(folder) + "\\there.dll");
    }
    first.folder("C:\\Program Files");
    first.folder("C:\\Program Files (x86)");
    first.file("C:\\Sweep\\there.exe");
    first.start();
    first.computer().save();
    pristine = fixture::registryContent(first.computer());
    first.stop();
    anew.begin(first.machineFolder().path());
    wanted = Session().rows;
  }

  std::uint64_t trySearch(std::uint64_t number) {
    machine::FaultPlan& faults = anew.begin(first.machineFolder().path()).faults();
    faults.fail(call, number, ERROR_ACCESS_DENIED);
    const Session session;
    const std::uint64_t made = faults.calls(call);
    faults.clear();
    EXPECT_FALSE(session.form.cancelRequested);
    // What could not be read is missing or in doubt, and nothing is there for it.
    for (const auto& [row, confidence] : session.rows) {
      const auto found = wanted.find(row);
      EXPECT_LE(confidence, found == wanted.end() ? Confidence::Unsure : found->second) << row[0];
    }
    EXPECT_EQ(fixture::changedEntries(pristine, fixture::registryContent(anew.computer())).size(),
              0U);
    EXPECT_EQ(Session().rows, wanted);
    return made;
  }

  fixture::MachineBuilder first;
  fixture::MachineAnew anew;
  RegistryContent pristine;
  Rows wanted;
};

TEST_P(SearchFaultSweepTest, WhatCannotBeReadIsNeverSurelyDead) {
  EXPECT_EQ(wanted.size(), 2U);
  EXPECT_TRUE(
      std::ranges::any_of(wanted, [](const auto& row) { return row.second == Confidence::Sure; }));
  failEachOnce([this](std::uint64_t number) { return trySearch(number); });
}

INSTANTIATE_TEST_SUITE_P(Calls, SearchFaultSweepTest, fixture::eachCall(), fixture::nameOfCall);

}  // namespace
}  // namespace zelvreg::searching
