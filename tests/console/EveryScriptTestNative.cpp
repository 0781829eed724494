// Whole computers and their twins, whose names and texts are written in another script: every
// command must say and do the same but for that. The Windows program takes no such folder.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>

#include "console/Commands.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "repair/RandomMachine.h"
#include "support/OtherScript.h"
#include "support/SourceFolder.h"
#include "support/WholeRegistry.h"
#include "text/Text.h"
#include "undo/JournalFile.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;
using fixture::OtherScript;
using nlohmann::json;

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A line of values in the registry editor's format: what stands between quotes is written.
std::string valueLineIn(const OtherScript& script, std::string_view line) {
  std::string result;
  std::string quoted;
  bool isQuoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (isQuoted && line[at] == '\\' && at + 1 < line.size()) {
      quoted += line.substr(at++, 2);
    } else if (line[at] != '"') {
      (isQuoted ? quoted : result) += line[at];
    } else {
      result += script.write(quoted) + "\"";
      quoted.clear();
      isQuoted = !isQuoted;
    }
  }
  return result;
}

std::string registryIn(const OtherScript& script, const std::string& text) {
  std::string result;
  for (const std::string_view line : split(text, "\n")) {
    result += line.starts_with("[") ? script.write(line) : valueLineIn(script, line);
    result += "\n";
  }
  return result;
}

// Lines of a path, a tab, and what is said of it.
std::string recordsIn(const OtherScript& script, const std::string& text) {
  std::string result;
  for (const std::string_view line : split(text, "\n")) {
    const std::size_t tab = std::min(line.find('\t'), line.size());
    result += script.write(line.substr(0, tab)) + std::string(line.substr(tab)) + "\n";
  }
  return result;
}

// A path of a machine folder's drive, whose letter stays.
std::string onDrive(const OtherScript& script, const std::string& name) {
  return name.substr(0, 1) + script.write(name.substr(1));
}

// The folder `from` of a computer as `to`, with all names written in the script.
void copyIn(const OtherScript& script, const fs::path& from, const fs::path& to,
            const std::string& codePage) {
  for (const auto& entry : fs::recursive_directory_iterator(from)) {
    const std::string name = fs::relative(entry.path(), from).string();
    if (name == "registry.reg") {
      writeFile(to / name, registryIn(script, readFile(entry.path())));
    } else if (name == "attributes.txt" || name == "security.txt") {
      writeFile(to / name, recordsIn(script, readFile(entry.path())));
    } else if (entry.is_directory()) {
      fs::create_directories(to / onDrive(script, name));
    } else if (entry.is_regular_file() && name.starts_with("C")) {
      writeFile(to / onDrive(script, name), readFile(entry.path()));
    }
  }
  writeFile(to / "machine.ini", "[machine]\nbits=64\nuser=" + script.write("Ann") +
                                    "\ncodepage=" + codePage + "\nnow=2026-01-31T13:45:06\n");
}

// One computer and what the commands say of it. Texts are those of the plain computer, which `of`
// writes in the script.
class ScriptedComputer {
 public:
  ScriptedComputer(const fs::path& from, const OtherScript& scriptOfTest,
                   const std::string& codePage)
      : script(scriptOfTest) {
    copyIn(script, from, folder.path(), codePage);
  }

  int run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"zelvreg", "--machine", folder.path().string()});
    std::vector<const char*> texts;
    for (const std::string& argument : arguments) {
      texts.push_back(argument.c_str());
    }
    out.str("");
    error.str("");
    const auto parsed = parseCommandLine(static_cast<int>(texts.size()), texts.data());
    const auto computer = Computer::open(parsed.options.target);
    return runCommand(parsed.options, *computer, {.out = out, .error = error});
  }

  json result(const std::vector<std::string>& arguments) {
    run(arguments);
    return json::parse(out.str());
  }
  std::string output(const std::vector<std::string>& arguments) {
    run(arguments);
    return out.str() + error.str();
  }
  [[nodiscard]] std::string in(std::string_view text) const { return script.write(text); }

  [[nodiscard]] fixture::WholeRegistry registry() const {
    return fixture::wholeRegistry(*machine::Machine::open(folder.path()));
  }
  // What the machine folder holds, as a computer whose texts are written in the script again.
  [[nodiscard]] fixture::WholeRegistry registryIn(const OtherScript& other) const {
    const fixture::TemporaryFolder copy;
    copyIn(other, folder.path(), copy.path(), "1252");
    return fixture::wholeRegistry(*machine::Machine::open(copy.path()));
  }
  [[nodiscard]] fs::path programFolder() const {
    return folder.path() / "C" / "Program Files (x86)" / "zelvreg";
  }
  [[nodiscard]] const fs::path& path() const { return folder.path(); }

 private:
  const OtherScript& script;
  const fixture::TemporaryFolder folder;
  std::ostringstream out;
  std::ostringstream error;
};

// A result written in the script.
json in(const OtherScript& script, json result) {
  for (json& finding : result["findings"]) {
    for (const char* field : {"location", "badValue", "subKey"}) {
      finding[field] = script.writeCell(finding[field].get<std::string>());
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

class EveryScriptTest : public ::testing::TestWithParam<OtherScript> {
 protected:
  // The plain computer with this twin of it.
  void expectTwins(const fs::path& machine, const std::string& codePage) {
    ScriptedComputer first(machine, fixture::latinScript(), "1252");
    ScriptedComputer twin(machine, script, codePage);
    expectSameResults(first, twin, {"scan", "--json"});
    expectSameResults(first, twin, {"scan", "--json", "--as-described"});
    expectSameSearches(first, twin);
    expectSameExclusions(first, twin);
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

  void expectSameExclusions(ScriptedComputer& first, ScriptedComputer& twin) {
    constexpr const char* excluded = "HKEY_LOCAL_MACHINE\\Software\\Northwind Studio";
    for (ScriptedComputer* computer : {&first, &twin}) {
      computer->run({"exclude", "add", computer->in(excluded)});
    }
    EXPECT_EQ(twin.output({"exclude", "list"}).find(twin.in("Northwind")) != std::string::npos,
              true);
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
    expectSameResults(first, twin, {"fix", "--json", "--yes"});
    EXPECT_EQ(fixture::firstDifference(first.registryIn(script), twin.registry()), "");
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

TEST_P(EveryScriptTest, MachinesMadeByChanceAreTheSameInIt) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    SCOPED_TRACE(seed);
    fixture::MachineBuilder builder;
    const fixture::RandomMachine machine(builder, seed);
    builder.start();
    builder.stop();
    expectTwins(builder.machineFolder().path(), "1252");
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
