// Whole computers and their twins, whose names and texts are written in another script: every
// command must say and do the same but for that. The Windows program takes no such folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "console/ScriptedComputer.h"
#include "repair/RandomMachine.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

// A result written in the script.
json in(const OtherScript& script, json result) {
  for (json& finding : result["findings"]) {
    for (const char* field : {"location", "badValue", "subKey"}) {
      finding[field] = script.writeCell(finding[field].get<std::string>());
    }
    for (json& place : finding["tested"]) {
      place = script.write(place.get<std::string>());
    }
  }
  if (result.contains("leftAlone")) {
    for (json& entry : result["leftAlone"]) {
      entry["place"] = script.write(entry["place"].get<std::string>());
    }
  }
  return result;
}

// Reasons are sentences with names in them.
json withoutReasons(json result) {
  if (result.contains("leftAlone")) {
    for (json& entry : result["leftAlone"]) {
      entry.erase("reason");
    }
  }
  return result;
}

// A line for each element of an array.
std::vector<std::string> linesOf(const json& array) {
  std::vector<std::string> lines;
  for (const json& element : array) {
    lines.push_back(element.dump());
  }
  std::ranges::sort(lines);
  return lines;
}

// What one result says and the other does not; empty if there is nothing.
std::string difference(const json& first, const json& second) {
  std::string text;
  for (const auto& [name, value] : first.items()) {
    const json whole = value.is_array() ? value : json::array({value});
    const json& other = second.at(name);
    const std::vector<std::string> here = linesOf(whole);
    const std::vector<std::string> there = linesOf(other.is_array() ? other : json::array({other}));
    std::vector<std::string> lines;
    std::ranges::set_difference(here, there, std::back_inserter(lines));
    lines.emplace_back("instead of");
    std::ranges::set_difference(there, here, std::back_inserter(lines));
    for (const std::string& line : lines) {
      text += lines.size() > 1 ? name + ": " + line + "\n" : "";
    }
  }
  return text;
}

json compared(const OtherScript& script, const json& result) {
  return withoutReasons(in(script, result));
}

// The rows of a report, each cell written in the script.
std::vector<std::string> reportIn(const OtherScript& script, const std::string& report) {
  constexpr std::string_view separator = "  |  ";
  std::vector<std::string> rows;
  for (const std::string_view line : split(report, "\r\n")) {
    if (contains(line, separator)) {
      std::string row;
      for (const std::string_view cell : split(line, separator)) {
        row.append(script.writeCell(std::string(cell))).append(separator);
      }
      rows.push_back(row);
    }
  }
  std::ranges::sort(rows);
  return rows;
}

// A field of the plain journal written in the script. One that fills its width may end within a
// word that would have stayed, so that word is left out.
std::string fieldIn(const OtherScript& script, std::string field, std::size_t width) {
  if (field.size() == width) {
    field.resize(field.find_last_of("\\ .|") + 1);
  }
  return script.writeCell(field);
}

// Whether two fields are the same as far as they go.
bool isSameStart(std::string_view first, std::string_view second) {
  return first.starts_with(second) || second.starts_with(first);
}

bool isTwin(const OtherScript& script, const JournalRecord& plain, const JournalRecord& twin) {
  return plain.kind == twin.kind && plain.hive == twin.hive &&
         isSameStart(twin.key, fieldIn(script, plain.key, 150)) &&
         isSameStart(twin.value, fieldIn(script, plain.value, 50)) &&
         isSameStart(twin.text, fieldIn(script, plain.text, 50));
}

class EveryScriptTest : public ::testing::TestWithParam<OtherScript> {
 protected:
  // The plain computer with this twin of it.
  void expectTwins(const fs::path& machine, const std::string& codePage) {
    ScriptedComputer first(machine, fixture::latinScript(), "1252");
    ScriptedComputer twin(machine, script, codePage);
    expectSameResults(first, twin, {"scan", "--json"});
    expectSameResults(first, twin, {"scan", "--json", "--as-described"});
    expectSameSearches(first, twin);
    expectSameReports(first, twin);
    expectSameExclusions(first, twin);
    expectSameModes(first, twin);
    expectSameRepair(first, twin);
  }

  void expectSameResults(ScriptedComputer& first, ScriptedComputer& twin,
                         const std::vector<std::string>& arguments) {
    std::vector<std::string> written;
    for (const std::string& argument : arguments) {
      written.push_back(argument.starts_with("HKEY_") ? twin.in(argument) : argument);
    }
    EXPECT_EQ(difference(compared(script, first.result(arguments)),
                         compared(fixture::latinScript(), twin.result(written))),
              "")
        << arguments.front();
  }

  void expectSameSearches(ScriptedComputer& first, ScriptedComputer& twin) {
    for (const char* text : {"northwind", "gone", ":\\", "HARBOUR", "atelier"}) {
      for (const char* how : {"any", "left", "right", "exact"}) {
        const auto search = [&](const std::string& sought) {
          return std::vector<std::string>{"search",   sought,   "--json", "--keys",
                                          "--values", "--data", "--mode", how};
        };
        EXPECT_EQ(difference(compared(script, first.result(search(text))),
                             compared(fixture::latinScript(), twin.result(search(twin.in(text))))),
                  "")
            << text << " " << how;
      }
    }
  }

  void expectSameReports(ScriptedComputer& first, ScriptedComputer& twin) {
    const auto report = [](ScriptedComputer& computer) {
      const fs::path file = computer.path() / "report.txt";
      computer.run({"scan", "--quiet", "--report", file.string()});
      return computer.ownFile(file);
    };
    const auto rows = reportIn(script, report(first));
    EXPECT_FALSE(rows.empty());
    EXPECT_EQ(reportIn(fixture::latinScript(), report(twin)), rows);
  }

  // As a tuning suite starts the program: what it finds is in a file for the suite.
  void expectSameModes(ScriptedComputer& first, ScriptedComputer& twin) {
    const auto found = [](ScriptedComputer& computer, const OtherScript& written) {
      computer.run({"w4"});
      std::vector<std::string> lines;
      const std::string text = computer.ownFile(computer.programFolder() / "regtmp.txt");
      for (const std::string_view line : split(text, "\r\n")) {
        lines.push_back(written.writeCell(std::string(line)));
      }
      std::ranges::sort(lines);
      return lines;
    };
    const auto lines = found(first, script);
    EXPECT_FALSE(lines.empty());
    EXPECT_EQ(found(twin, fixture::latinScript()), lines);
  }

  // But for what the width of a field cuts off, and for the order: words that stay sort before
  // letters of the script.
  void expectSameJournals(const ScriptedComputer& first, const ScriptedComputer& twin) {
    std::vector<JournalRecord> records = twin.journal();
    const std::vector<JournalRecord> expected = first.journal();
    EXPECT_FALSE(expected.empty());
    for (const JournalRecord& plain : expected) {
      const auto found = std::ranges::find_if(
          records, [&](const JournalRecord& record) { return isTwin(script, plain, record); });
      ASSERT_NE(found, records.end()) << plain.key << " " << plain.value << " " << plain.text;
      records.erase(found);
    }
    EXPECT_TRUE(records.empty());
  }

  void expectSameExclusions(ScriptedComputer& first, ScriptedComputer& twin) {
    constexpr const char* excluded = "HKEY_LOCAL_MACHINE\\Software\\Northwind Studio";
    for (ScriptedComputer* computer : {&first, &twin}) {
      computer->run({"exclude", "add", computer->in(excluded)});
    }
    EXPECT_TRUE(contains(twin.output({"exclude", "list"}), twin.in("Northwind")));
    expectSameResults(first, twin, {"scan", "--json"});
    for (ScriptedComputer* computer : {&first, &twin}) {
      computer->run({"exclude", "remove", "1"});
    }
    expectSameResults(first, twin, {"scan", "--json"});
  }

  void expectSameRepair(ScriptedComputer& first, ScriptedComputer& twin) {
    const fixture::WholeRegistry before = twin.registry();
    for (ScriptedComputer* computer : {&first, &twin}) {
      computer->run({"undo", "on"});
    }
    expectSameResults(first, twin, {"fix", "--all", "--json", "--yes"});
    EXPECT_EQ(fixture::firstDifference(first.registryIn(script), twin.registry()), "");
    expectSameJournals(first, twin);
    expectSameResults(first, twin, {"scan", "--json"});
    for (ScriptedComputer* computer : {&first, &twin}) {
      EXPECT_EQ(computer->run({"undo", "restore", "1"}), nothingFound);
    }
    EXPECT_EQ(fixture::firstDifference(before, twin.registry()), "");
  }

  const OtherScript& script = GetParam();
};

TEST_P(EveryScriptTest, TheDemoMachineIsTheSameInIt) {
  expectTwins(sourceFolder() + "/demo/machine", "1252");
}

TEST_P(EveryScriptTest, RandomMachinesAreTheSameInIt) {
  constexpr std::array pages{"1252", "932", "936", "949", "950", "1251", "1255", "65001"};
  // Each is eight computers here and is compared by every command.
  const std::uint32_t last = fixture::randomMachineCount() / 40;
  for (std::uint32_t seed = 1; seed <= last; ++seed) {
    SCOPED_TRACE(seed);
    fixture::MachineBuilder builder;
    const fixture::RandomMachine machine(builder, seed);
    builder.start();
    builder.stop();
    expectTwins(builder.machineFolder().path(), pages[seed % pages.size()]);
  }
}

TEST_P(EveryScriptTest, NothingThatAScanFindsDependsOnTheCodePage) {
  const std::string demo = sourceFolder() + "/demo/machine";
  const json found = ScriptedComputer(demo, script, "1252").result({"scan", "--json"});
  for (const char* page : {"932", "936", "949", "950", "1251", "1255", "65001"}) {
    const json others = ScriptedComputer(demo, script, page).result({"scan", "--json"});
    EXPECT_EQ(difference(found, others), "") << page;
  }
}

INSTANTIATE_TEST_SUITE_P(Scripts, EveryScriptTest, ::testing::ValuesIn(fixture::otherScripts()),
                         [](const auto& tested) { return tested.param.name(); });

}  // namespace
}  // namespace zelvreg::console
