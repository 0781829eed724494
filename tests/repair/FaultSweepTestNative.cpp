// Only calls to the emulated computer can be made to fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>

#include "form/Form42.h"
#include "keys/RegistryImport.h"
#include "registry/Hives.h"
#include "repair/EveryKindMachine.h"
#include "repair/ReachOfRepair.h"
#include "repair/RepairTable.h"
#include "scan/Findings.h"
#include "support/FaultSweep.h"
#include "support/RegistryContent.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

namespace fs = std::filesystem;
using fixture::RegistryContent;
using machine::ApiCall;

const std::set<std::string> noEntries;

struct EndlessTurn {};

// A scan of everything and the repair of all that it found, on a computer as it was at first.
class Session {
 public:
  explicit Session(fixture::EveryKindMachine& emulated) : everyKind(emulated) {
    everyKind.restart();
    form.dialogs.show = [this](const UserMessage& message) {
      ++(message.isQuestion ? questions : tellings);
      return message.isQuestion ? Answer::Yes : Answer::Ok;
    };
    form.messages.serveHost = [this] { turn(); };
  }

  [[nodiscard]] machine::FaultPlan& faults() const { return everyKind.computer().faults(); }
  [[nodiscard]] RegistryContent content() const {
    return fixture::registryContent(everyKind.computer());
  }
  [[nodiscard]] std::string repairCount() const {
    std::string text;
    GetRegString(HiveHandle::LocalMachine,
                 R"(software\zelvane\Zelvane Tuner Deluxe\statics\regscan)", "count", text);
    return text;
  }

  // False if it turned for ever.
  bool scanRows() {
    return ends([this] { fixture::scanAllRows(form); });
  }
  void scanTheRest() { fixture::scanWhatNoRowScans(form); }
  bool repair() {
    if (beforeRepair) {
      beforeRepair();
    }
    isRepairing = true;
    rowsLeft = form.View2.count();
    return ends([this] { form.cmd_fix.click(); });
  }

  // Brings back what the repair has taken.
  void importExport() {
    faults().clear();
    const fs::path folder = everyKind.programFolder() / "backup" / "registry";
    if (!fs::exists(folder)) {
      return;  // nothing could have been taken
    }
    for (const auto& file : fs::directory_iterator(folder)) {
      const RegistryImport result = importRegistryFile(form.programFolder + "\\backup\\registry\\" +
                                                       file.path().filename().string());
      EXPECT_TRUE(result.isDone) << result.message;
    }
  }

  Form42 form;
  std::function<void()> beforeRepair;
  int questions = 0;
  int tellings = 0;

 private:
  template <typename Work>
  bool ends(Work work) {
    turns = 0;
    try {
      work();
      return true;
    } catch (const EndlessTurn&) {
      return false;
    }
  }

  void turn() {
    constexpr int moreThanAnyRun = 5000;
    if (++turns > moreThanAnyRun) {
      throw EndlessTurn{};
    }
    if (isRepairing) {
      EXPECT_LE(form.View2.count(), rowsLeft);
      rowsLeft = form.View2.count();
    }
  }

  fixture::EveryKindMachine& everyKind;
  int turns = 0;
  bool isRepairing = false;
  std::size_t rowsLeft = 0;
};

bool hasRoutine(const Form42& form, std::size_t row) {
  const double code = leadingNumber(form.View2.text(row, kindCodeColumn));
  return repairKind(static_cast<int>(code)) != nullptr;
}

std::size_t rowsWithoutRoutine(const Form42& form) {
  std::size_t count = 0;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    count += hasRoutine(form, row) ? 0 : 1;
  }
  return count;
}

// A key whose neighbours could not be listed comes back as the finding spells it.
RegistryContent inLowerCase(const RegistryContent& content) {
  RegistryContent result;
  for (const auto& [name, value] : content) {
    result[lowerCase(name)] = value;
  }
  return result;
}

// The numbers of the first and the last call that fail.
struct Faults {
  std::uint64_t first = 1;
  std::uint64_t last = UINT64_MAX;
};

class FaultSweepTest : public ::testing::Test {
 protected:
  FaultSweepTest() : pristine(fixture::registryContent(everyKind.computer())) {}

  // What a scan owes whatever failed in it.
  void expectScanEnded(const Session& session) const {
    const Form42& form = session.form;
    EXPECT_EQ(form.Text2.text(), "0");
    EXPECT_EQ(form.Bar1.value(), 16);
    EXPECT_FALSE(form.Frame8.visible);
    EXPECT_TRUE(form.cmd_start.enabled);
    EXPECT_FALSE(form.cmd_cancel.enabled);
    EXPECT_EQ(form.cmd_fix.enabled, form.View2.count() > 0);
    EXPECT_EQ(form.totalFoundText, decimal(form.totalFound));
    for (std::size_t row = 1; row <= 16; ++row) {
      EXPECT_EQ(form.View1.text(row, 3), "Finished") << row;
      const bool isClean = leadingNumber(form.View1.text(row, 2)) == 0;
      EXPECT_EQ(form.View1.rowColor(row), isClean ? 0U : 255U) << row;
    }
  }

  void expectNothingRepaired(const Session& session, std::size_t countAtEntry) const {
    EXPECT_EQ(session.form.View2.count(), countAtEntry);
    EXPECT_EQ(session.content(), pristine);
    EXPECT_EQ(session.repairCount(), "40");
    EXPECT_EQ(session.tellings, 1);
  }

  void expectRepaired(Session& session, std::size_t countAtEntry, std::size_t withoutRoutine) {
    const Form42& form = session.form;
    EXPECT_GE(form.View2.count(), withoutRoutine);
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      EXPECT_FALSE(hasRoutine(form, row) && form.View2.isChecked(row)) << row;
    }
    EXPECT_EQ(form.Label3.caption.get(),
              form.View2.count() == 0 ? "" : rowCountText(form) + " Problem(s) Still There ");
    const auto repaired = static_cast<std::int64_t>(countAtEntry - form.View2.count());
    const std::string count = session.repairCount();
    if (count != decimal(40 + repaired)) {
      ++lostCounts;
      // A count that could not be read counts as none, one that could not be written stays.
      EXPECT_TRUE(count == "40" || count == decimal(repaired)) << count;
    }
  }

  // One session with the faults that are planned for it, judged. How often `call` was made is
  // noted. The registry is compared after the scan where that had a fault in it, and the export
  // brought back where the repair had one: without a fault the others are all alike.
  void run(Session& session, ApiCall call, const Faults& faults) {
    if (!session.scanRows()) {
      ++endlessScans;
      madeCalls = session.faults().calls(call);
      return;
    }
    expectScanEnded(session);
    session.scanTheRest();
    const std::uint64_t madeByScan = session.faults().calls(call);
    if (faults.first <= madeByScan) {
      EXPECT_EQ(fixture::changedEntries(pristine, session.content()), noEntries);
    }
    const std::size_t countAtEntry = session.form.View2.count();
    const std::size_t withoutRoutine = rowsWithoutRoutine(session.form);
    const fixture::ReachOfRepair reach(session.form, userSid());
    const bool isEnded = session.repair();
    madeCalls = session.faults().calls(call);
    session.faults().clear();
    EXPECT_EQ(session.form.Text2.text(), "0");
    EXPECT_EQ(session.questions, 1);
    expectNothingHalfWritten();
    if (session.form.isRepairStopped) {
      ++stoppedRepairs;
      expectNothingRepaired(session, countAtEntry);
      return;
    }
    if (isEnded) {
      expectRepaired(session, countAtEntry, withoutRoutine);
    } else {
      ++endlessRepairs;
      EXPECT_EQ(session.form.View2.count(), 0U);
    }
    for (const std::string& entry : fixture::changedEntries(pristine, session.content())) {
      EXPECT_TRUE(reach.holds(entry)) << entry;
    }
    if (faults.last > madeByScan) {
      session.importExport();
      EXPECT_EQ(fixture::changedEntries(inLowerCase(pristine), inLowerCase(session.content())),
                noEntries);
    }
  }

  // Of a file that is written beside another and renamed, nothing stays when that fails.
  void expectNothingHalfWritten() const {
    for (const auto& file : fs::recursive_directory_iterator(everyKind.programFolder())) {
      EXPECT_NE(file.path().extension(), ".new") << file.path();
    }
  }

  [[nodiscard]] std::string userSid() const {
    const std::string path =
        machine::Registry::pathOf(everyKind.computer().registry().currentUser());
    return path.substr(path.find('\\') + 1);
  }

  fixture::EveryKindMachine everyKind;
  const RegistryContent pristine;
  std::uint64_t madeCalls = 0;  // of the call in question, by the scan and the repair
  int lostCounts = 0;
  int endlessScans = 0;
  int endlessRepairs = 0;
  int stoppedRepairs = 0;
};

TEST_F(FaultSweepTest, TheComputerHasAFindingOfEveryKind) {
  Session session(everyKind);
  ASSERT_TRUE(session.scanRows());
  session.scanTheRest();
  std::multiset<int> codes;
  std::set<std::string> rootsOfTheSharedKind;
  for (std::size_t row = 1; row <= session.form.View2.count(); ++row) {
    const int code = static_cast<int>(leadingNumber(session.form.View2.text(row, kindCodeColumn)));
    codes.insert(code);
    if (code == 11) {
      rootsOfTheSharedKind.insert(session.form.View2.text(row, rootNameColumn));
    }
  }
  for (const int code : {1,  2,  3,  4,  5,  6,   7,   8,   9,   10,  11,  12,
                         13, 55, 56, 71, 72, 122, 133, 135, 144, 155, 166, 771}) {
    ASSERT_NE(repairKind(code), nullptr);
    EXPECT_GT(codes.count(code), 0U) << code;
  }
  EXPECT_EQ(rootsOfTheSharedKind,
            (std::set<std::string>{"HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"}));
}

TEST_F(FaultSweepTest, WithoutAFaultAllRowsWithARoutineGoButThoseThatStayForAReason) {
  Session session(everyKind);
  run(session, ApiCall::RegOpenKey, {});
  const RepairOutcome& outcome = session.form.repairOutcome;
  EXPECT_EQ(session.form.View2.count(),
            rowsWithoutRoutine(session.form) + outcome.leftAlone + outcome.noEffect);
  EXPECT_GT(outcome.gone, outcome.leftAlone + outcome.noEffect);
  EXPECT_EQ(outcome.failed, 0U);
  EXPECT_EQ(lostCounts + endlessScans + endlessRepairs + stoppedRepairs, 0);
  EXPECT_GT(madeCalls, 0U);
}

// Takes all rows off the list but those of a kind.
void keepOnly(Form42& form, const char* kind) {
  for (std::size_t row = form.View2.count(); row > 0; --row) {
    if (form.View2.text(row, kindCodeColumn) != kind) {
      form.View2.remove(row);
    }
  }
}

TEST_F(FaultSweepTest, AListThatEndsWithItsSnapInsEndsTheRepairWhateverFails) {
  for (const bool fails : {false, true}) {
    Session session(everyKind);
    session.form.safeguardChoices = {{&Safeguards::protects, false, "--no-protect"}};
    session.scanRows();
    keepOnly(session.form, "55");
    ASSERT_EQ(session.form.View2.count(), 1U);
    if (fails) {
      session.faults().failFrom(ApiCall::RegDeleteValue, 1, ERROR_ACCESS_DENIED);
    }
    EXPECT_TRUE(session.repair());
    EXPECT_EQ(session.form.View2.count(), 0U);
    EXPECT_EQ(fixture::changedEntries(pristine, session.content()).empty(), fails);
    EXPECT_EQ(session.repairCount(), "41");
  }
}

class FaultSweepOfACall : public FaultSweepTest, public ::testing::WithParamInterface<std::size_t> {
 protected:
  const ApiCall call = static_cast<ApiCall>(GetParam());

  // The calls that write the safety export, the journal and its entry, or tell what they replace;
  // and those that read what is excluded.
  [[nodiscard]] bool stopsRepairs() const {
    constexpr std::array calls{
        ApiCall::RegOpenKey,        ApiCall::RegEnumKey,        ApiCall::RegEnumValue,
        ApiCall::RegGetKeySecurity, ApiCall::RegCreateKey,      ApiCall::RegSetValue,
        ApiCall::CreateFile,        ApiCall::WriteFile,         ApiCall::MoveFile,
        ApiCall::CreateDirectory,   ApiCall::GetFileAttributes, ApiCall::ReadFile};
    return std::ranges::find(calls, call) != calls.end();
  }

  static void failAllOf(const Session& session, ApiCall call) {
    // No denial: a computer that denies all keys does not delete one either.
    session.faults().failFrom(call, 1, ERROR_NOT_ENOUGH_MEMORY);
  }
};

TEST_P(FaultSweepOfACall, AnySingleOneMayFail) {
  bool isMade = true;
  for (std::uint64_t n = 1; isMade && !HasFailure(); n += fixture::stepAfter(n)) {
    SCOPED_TRACE("call " + std::to_string(n));
    Session session(everyKind);
    session.faults().fail(call, n, ERROR_ACCESS_DENIED);
    run(session, call, {.first = n, .last = n});
    isMade = madeCalls >= n;
  }
  EXPECT_EQ(endlessScans, 0);
  EXPECT_EQ(endlessRepairs, 0);
  // Where not each call fails, the one that stops a repair may not be among them.
  if (fixture::isEachTried() || stoppedRepairs > 0) {
    EXPECT_EQ(stoppedRepairs > 0, stopsRepairs()) << stoppedRepairs;
  }
  // The one read, or the opening and the write, of the counter.
  EXPECT_LE(lostCounts, 2);
}

TEST_P(FaultSweepOfACall, AllMayFailFromTheStart) {
  Session session(everyKind);
  failAllOf(session, call);
  run(session, call, {});
  EXPECT_EQ(endlessScans, 0);
}

TEST_P(FaultSweepOfACall, AllMayFailFromTheRepairOn) {
  Session session(everyKind);
  session.beforeRepair = [&] { failAllOf(session, call); };
  run(session, call, {});
  EXPECT_EQ(endlessRepairs, 0);
}

INSTANTIATE_TEST_SUITE_P(Calls, FaultSweepOfACall, fixture::eachCall(), fixture::nameOfCall);

}  // namespace
}  // namespace zelvreg
