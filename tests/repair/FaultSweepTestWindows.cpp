// Only on Windows are there calls to Windows itself; FaultSweepTestNative.cpp makes those to the
// emulated computer fail.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <set>
#include <utility>

#include "repair/FaultSweepFixture.h"
#include "support/CallNames.h"
#include "support/FaultyCalls.h"
#include "support/ParsedJson.h"

namespace zelvreg {
namespace {

using fixture::Arguments;
using fixture::Ended;
using fixture::isFile;
using fixture::isOwn;
using fixture::Picture;
using fixture::withoutTimes;
using machine::ApiCall;
using nlohmann::json;

// A kind of call with what a busy computer, a failing disk or missing rights make of it.
struct Kind {
  ApiCall call;
  std::vector<LONG> codes;
};

const std::vector<Kind> kinds{
    {ApiCall::RegOpenKey, {ERROR_ACCESS_DENIED, ERROR_NO_SYSTEM_RESOURCES}},
    {ApiCall::RegCreateKey, {ERROR_ACCESS_DENIED, ERROR_NO_SYSTEM_RESOURCES}},
    {ApiCall::RegEnumKey, {ERROR_NOT_ENOUGH_MEMORY, ERROR_KEY_DELETED}},
    {ApiCall::RegEnumValue, {ERROR_NOT_ENOUGH_MEMORY, ERROR_KEY_DELETED}},
    {ApiCall::RegQueryValue, {ERROR_NOT_ENOUGH_MEMORY, ERROR_REGISTRY_IO_FAILED}},
    {ApiCall::RegSetValue, {ERROR_ACCESS_DENIED, ERROR_NO_SYSTEM_RESOURCES}},
    {ApiCall::RegDeleteKey, {ERROR_ACCESS_DENIED, ERROR_NOT_ENOUGH_MEMORY}},
    {ApiCall::RegDeleteValue, {ERROR_ACCESS_DENIED, ERROR_NOT_ENOUGH_MEMORY}},
    {ApiCall::RegGetKeySecurity, {ERROR_NOT_ENOUGH_MEMORY}},
    {ApiCall::RegSetKeySecurity, {ERROR_ACCESS_DENIED}},
    {ApiCall::GetFileSecurity, {ERROR_ACCESS_DENIED}},
    {ApiCall::SetFileSecurity, {ERROR_ACCESS_DENIED}},
    {ApiCall::CreateFile, {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}},
    {ApiCall::ReadFile, {ERROR_READ_FAULT, ERROR_LOCK_VIOLATION}},
    {ApiCall::WriteFile, {ERROR_DISK_FULL, ERROR_WRITE_FAULT}},
    {ApiCall::DeleteFile, {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}},
    {ApiCall::MoveFile, {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}},
    {ApiCall::CreateDirectory, {ERROR_ACCESS_DENIED, ERROR_DISK_FULL}},
    {ApiCall::GetFileAttributes, {ERROR_ACCESS_DENIED, ERROR_NOT_READY}},
    {ApiCall::SetFileAttributes, {ERROR_ACCESS_DENIED}},
    {ApiCall::FindFirstFile, {ERROR_ACCESS_DENIED, ERROR_NOT_READY}},
};

const std::string areas = "startup,dlls,file-extensions";
const std::string now = "2026-01-31T13:45:06Z";

struct Command {
  const char* name;
  Arguments words;
};

const std::vector<Command> commands{
    {"Scan", {"scan", "--json", "--only", areas, "--now", now}},
    {"Fix", {"fix", "--yes", "--json", "--only", areas, "--now", now}},
    {"Search", {"search", "faultsweep", "--data", "--json", "--in", "HKCU"}},
    {"UndoList", {"undo", "list"}},
    {"UndoRestore", {"undo", "restore", "1"}},
    {"UndoRestoreJournal", {"undo", "restore", "1", "--journal"}},
    {"UndoRemove", {"undo", "remove", "1"}},
    {"UndoOff", {"undo", "off"}},
    {"ExcludeAdd", {"exclude", "add", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Northwind"}},
    {"ExcludeList", {"exclude", "list"}},
    {"ExcludeRemove", {"exclude", "remove", "1", "--yes"}},
};

// Findings by what they are of; nothing if the output is no result.
std::optional<std::map<std::string, json>> findingsIn(const std::string& out) {
  if (!out.starts_with('{')) {
    return std::nullopt;
  }
  std::map<std::string, json> findings;
  for (const json& row : fixture::parsedJson(out)["findings"]) {
    std::string name;
    for (const char* field : {"location", "badValue", "kindCode", "rootName", "subKey"}) {
      name += row[field].dump() + " ";
    }
    findings[name] = row;
  }
  return findings;
}

class FaultSweepOnWindows : public fixture::FaultSweepFixture,
                            public ::testing::WithParamInterface<std::size_t> {
 protected:
  FaultSweepOnWindows() : command(commands[GetParam()]), start(picture()) {
    machine::FaultPlan none;
    ended = runFailing(command.words, none);
    for (const Kind& kind : kinds) {
      calls.push_back(static_cast<std::size_t>(none.calls(kind.call)));
    }
    after = picture();
    repairs = listOfRepairs();
    again = run(command.words);
    afterAgain = picture();
  }

  // One run with a fault in it, and the next without one.
  void tryFault(const Kind& kind, std::size_t n, LONG code) {
    restore(start);
    machine::FaultPlan plan;
    plan.fail(kind.call, n, code);
    const Ended got = runFailing(command.words, plan);
    const Picture left = picture();
    const std::size_t before = problems.size();
    judgeFiles(kind, left);
    judgeRegistry(left);
    judgeTold(got, left);
    if (isFix()) {
      judgeReturn(left);
      restore(left);
    }
    const Ended next = run(command.words);
    judgeNext(kind, next, picture());
    for (std::size_t number = before; number < problems.size(); ++number) {
      problems[number] = std::string(fixture::nameOf(kind.call)) + " " + std::to_string(n) +
                         " fails with " + std::to_string(code) + ": " + problems[number];
    }
    ++runs;
  }

  [[nodiscard]] bool isFix() const { return command.words.front() == "fix"; }
  [[nodiscard]] std::size_t goneIn(const Picture& left) const {
    return static_cast<std::size_t>(std::ranges::count_if(dead, [&](const std::string& entry) {
      return start.contains(entry) && !left.contains(entry);
    }));
  }
  std::string listOfRepairs() { return withoutTimes(run({"undo", "list"}).out); }

  const Command& command;
  const Picture start;
  Ended ended;
  Picture after;
  std::string repairs;  // that can be undone then
  Ended again;
  Picture afterAgain;
  std::vector<std::size_t> calls;  // of each kind, in a run without a fault
  std::vector<std::string> problems;
  std::size_t runs = 0;

 private:
  // Each entry is the old one or the new one.
  void judgeRegistry(const Picture& left) {
    std::set<std::string> entries;
    for (const Picture* one : {&start, &std::as_const(after), &left}) {
      for (const auto& [entry, content] : *one) {
        entries.insert(entry);
      }
    }
    for (const std::string& entry : entries) {
      const bool counts = !isFile(entry) && !isOwn(entry);
      if (counts && !isSame(entry, left, start) && !isSame(entry, left, after)) {
        problems.push_back("neither old nor new: " + entry);
      }
    }
  }

  static bool isSame(const std::string& entry, const Picture& one, const Picture& other) {
    const auto found = one.find(entry);
    const auto wanted = other.find(entry);
    return found == one.end() || wanted == other.end() ? found == one.end() && wanted == other.end()
                                                       : found->second == wanted->second;
  }

  // What was there is there and whole, and there is nothing but what the command makes.
  void judgeFiles(const Kind& kind, const Picture& left) {
    const Picture made = withoutTimes(after);
    for (const auto& [entry, content] : left) {
      const bool isBeside = entry.ends_with(".new");
      if (isBeside && kind.call != ApiCall::DeleteFile) {
        problems.push_back("left over: " + entry);
      } else if (isFile(entry) && !isBeside && !start.contains(entry) &&
                 !made.contains(withoutTimes(entry))) {
        problems.push_back("another file: " + entry);
      }
    }
    for (const auto& [entry, content] : start) {
      if (isFile(entry) && !isSame(entry, left, start) && !isSame(entry, left, after)) {
        problems.push_back("neither old nor new: " + entry);
      }
    }
  }

  // What has failed is told in a line or in rows; where nothing is told, all was done.
  void judgeTold(const Ended& got, const Picture& left) {
    if (got.status != console::nothingFound && got.status != console::problemsFound &&
        got.status != console::failed) {
      problems.push_back("status " + std::to_string(got.status));
    }
    const auto isNew = [this](const std::string& line) {
      return std::ranges::find(ended.lines, line) == ended.lines.end();
    };
    // A list may say it, too.
    const bool isTold =
        std::ranges::any_of(got.lines, isNew) || got.out.find("nothing: ") != std::string::npos;
    if (got.status == console::failed && !isTold) {
      problems.emplace_back("fails without a word");
    }
    const auto rows = findingsIn(got.out);
    if (isFix() && rows) {
      judgeCounts(fixture::parsedJson(got.out), left);
    }
    if (isTold) {
      return;
    }
    if (rows) {
      judgeRows(*rows);
    } else if (withoutTimes(got.out) != withoutTimes(ended.out) || got.status != ended.status) {
      problems.push_back("says nothing, but ends with " + std::to_string(got.status) + " and\n" +
                         got.out);
    }
    if (!rows) {
      judgeSettled(left, after, "says nothing, but ",
                   [](const std::string& /*entry*/) { return true; });
    } else if (isFix() && goneIn(left) > 0 && listOfRepairs() != repairs) {
      problems.push_back("says nothing, but the list of repairs is\n" + listOfRepairs());
    }
  }

  // A row that is missing was not found; one that is new is not sure, and none becomes surer.
  void judgeRows(const std::map<std::string, json>& rows) {
    const std::vector<std::string> bySureness{"unsure", "likely", "sure"};
    const auto sureness = [&](const json& row) {
      return std::ranges::find(bySureness, row["confidence"].get<std::string>()) -
             bySureness.begin();
    };
    const auto wanted = findingsIn(ended.out).value();
    for (const auto& [name, row] : rows) {
      const auto found = wanted.find(name);
      if (sureness(row) > (found == wanted.end() ? 0 : sureness(found->second))) {
        problems.push_back("says nothing, but has the row " + name + row["confidence"].dump());
      }
    }
  }

  // No success that did not happen, and none that is not told.
  void judgeCounts(const json& result, const Picture& left) {
    const auto told = result["outcome"]["gone"].get<std::size_t>();
    if (told != goneIn(left)) {
      problems.push_back("tells of " + std::to_string(told) + " that are gone, but " +
                         std::to_string(goneIn(left)) + " are");
    }
  }

  template <typename Counts>
  void judgeSettled(const Picture& left, const Picture& wanted, const std::string& when,
                    const Counts& counts) {
    const Picture one = withoutTimes(left);
    const Picture other = withoutTimes(wanted);
    for (const Picture* entries : {&one, &other}) {
      for (const auto& [entry, content] : *entries) {
        if (counts(entry) && !isSame(entry, one, other)) {
          problems.push_back(when + "not as it should be: " + entry);
        }
      }
    }
  }

  // What a repair has taken comes back from its safety export.
  void judgeReturn(const Picture& left) {
    const auto isTaken = [&](const auto& entry) {
      return !isFile(entry.first) && !isOwn(entry.first) && !left.contains(entry.first);
    };
    if (std::ranges::none_of(start, isTaken)) {
      return;
    }
    if (run({"undo", "restore-export", newestExport()}).status != console::nothingFound) {
      problems.push_back("its safety export does not come back: " + error.str());
    }
    judgeSettled(picture(), start, "after its undo ",
                 [](const std::string& entry) { return !isFile(entry) && !isOwn(entry); });
  }

  // The next run does what a run does on the computer as it was, or as it became.
  void judgeNext(const Kind& kind, const Ended& next, const Picture& left) {
    const std::size_t before = problems.size();
    judgeNextAs(kind, next, left, ended, after);
    if (problems.size() == before || isFix()) {
      return;
    }
    std::vector<std::string> asFirst(problems.begin() + static_cast<std::ptrdiff_t>(before),
                                     problems.end());
    problems.resize(before);
    judgeNextAs(kind, next, left, again, afterAgain);
    if (problems.size() > before) {
      problems.resize(before);
      problems.insert(problems.end(), asFirst.begin(), asFirst.end());
    }
  }

  void judgeNextAs(const Kind& kind, const Ended& next, const Picture& left, const Ended& wanted,
                   const Picture& wantedLeft) {
    // A repair that had done a part has less to do.
    const bool isSameOut = isFix() || withoutTimes(next.out) == withoutTimes(wanted.out);
    if (next.status != wanted.status || !isSameOut) {
      problems.push_back("next run has status " + std::to_string(next.status) + " and\n" +
                         next.out + (next.lines.empty() ? "" : next.lines.front()));
    }
    // What could not be deleted is the user's to delete; the command has said so.
    const bool looksAtFiles = !isFix() && kind.call != ApiCall::DeleteFile;
    judgeSettled(left, wantedLeft, "after the next run ", [&](const std::string& entry) {
      return isFile(entry) ? looksAtFiles : !isFix() || !isOwn(entry);
    });
  }
};

TEST(FaultyCallsTest, TheyFailAsPlannedUntilTheyAreGone) {
  machine::FaultPlan plan;
  plan.fail(ApiCall::GetFileAttributes, 2, ERROR_NOT_READY);
  plan.fail(ApiCall::RegOpenKey, 1, ERROR_KEY_DELETED);
  {
    const fixture::FaultyCalls faulty(plan);
    EXPECT_NE(GetFileAttributesW(L"C:\\"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesW(L"C:\\"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_READY));
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &key), ERROR_KEY_DELETED);
  }
  EXPECT_NE(GetFileAttributesW(L"C:\\"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(plan.calls(ApiCall::GetFileAttributes), 2U);
}

// How many calls of a kind fail, spread over all of them: as many as ZELVREG_FAULTS says. Each
// would take a quarter of an hour, and ./test --all runs each suite in several code pages.
std::size_t mostOfAKind() {
  const char* asked = std::getenv("ZELVREG_FAULTS");
  const bool takesLong = std::getenv("ZELVREG_RANDOM_MACHINES") != nullptr;
  return asked == nullptr ? (takesLong ? 9 : 3) : std::strtoul(asked, nullptr, 10);
}

TEST_P(FaultSweepOnWindows, AnySingleCallMayFail) {
  ASSERT_EQ(goneIn(after), isFix() ? dead.size() : 0U) << ended.out;
  ASSERT_NE(ended.status, console::failed) << ended.lines.front();
  std::size_t made = 0;
  for (std::size_t index = 0; index < kinds.size(); ++index) {
    const Kind& kind = kinds[index];
    const std::size_t count = std::min(calls[index], mostOfAKind());
    for (std::size_t place = 0; place < count; ++place) {
      const std::size_t n = place * calls[index] / count + 1;
      tryFault(kind, n, kind.codes[place % kind.codes.size()]);
    }
    made += calls[index];
  }
  std::string all;
  for (const std::string& problem : problems) {
    all += problem + "\n";
  }
  EXPECT_TRUE(problems.empty()) << all;
  std::cout << command.name << ": " << made << " calls, " << runs << " runs" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(Commands, FaultSweepOnWindows,
                         ::testing::Range<std::size_t>(0, commands.size()),
                         [](const auto& command) {
                           return std::string(commands[command.param].name);
                         });

}  // namespace
}  // namespace zelvreg
