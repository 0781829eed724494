// A whole computer written in another script, and the commands on it. Only the emulated
// computer can be created from a folder.
#ifndef ZELVREG_TESTS_CONSOLE_SCRIPTED_COMPUTER_H
#define ZELVREG_TESTS_CONSOLE_SCRIPTED_COMPUTER_H

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "console/CommandRun.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "runtime/OwnText.h"
#include "support/OtherScript.h"
#include "support/ParsedJson.h"
#include "support/WholeRegistry.h"
#include "text/Text.h"
#include "undo/JournalFile.h"

namespace zelvreg::console {

namespace fs = std::filesystem;
using fixture::OtherScript;
using nlohmann::json;

inline std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const fs::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A line of values in the registry editor's format: the text between quotes is written.
inline std::string valueLineIn(const OtherScript& script, std::string_view line) {
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

inline std::string registryIn(const OtherScript& script, const std::string& text) {
  std::string result;
  for (const std::string_view line : split(text, "\n")) {
    result += line.starts_with("[") ? script.write(line) : valueLineIn(script, line);
    result += "\n";
  }
  return result;
}

// Lines of a path, a tab, and what is said of it.
inline std::string recordsIn(const OtherScript& script, const std::string& text) {
  std::string result;
  for (const std::string_view line : split(text, "\n")) {
    const std::size_t tab = std::min(line.find('\t'), line.size());
    result += script.write(line.substr(0, tab)) + std::string(line.substr(tab)) + "\n";
  }
  return result;
}

// A path of a machine folder's drive, whose letter stays.
inline std::string onDrive(const OtherScript& script, const std::string& name) {
  return name.substr(0, 1) + script.write(name.substr(1));
}

// The folder `from` of a computer as `to`, with all names written in the script.
inline void copyIn(const OtherScript& script, const fs::path& from, const fs::path& to,
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

// One computer and what the commands say of it.
class ScriptedComputer : private CommandRun {
 public:
  ScriptedComputer(const fs::path& from, const OtherScript& scriptOfTest,
                   const std::string& codePage)
      : script(scriptOfTest) {
    copyIn(script, from, folder.path(), codePage);
  }

  int run(std::vector<std::string> arguments) {
    return onMachine(folder.path().string(), std::move(arguments));
  }

  // Without what twins need not have in common: time, code page, and names that no rule looks at.
  json result(const std::vector<std::string>& arguments) {
    run(arguments);
    json found = fixture::parsedJson(out.str());
    for (const char* member : {"started", "seconds", "computer", "users"}) {
      found.erase(member);
    }
    for (json& finding : found["findings"]) {
      finding.erase("user");
    }
    return found;
  }
  std::string output(const std::vector<std::string>& arguments) {
    run(arguments);
    return out.str();
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
  // A file that the program writes for itself, by the computer's code page.
  [[nodiscard]] std::string ownFile(const fs::path& path) const {
    const auto computer = machine::Machine::open(folder.path());
    const machine::Running inForce(*computer);
    return ownText(readFile(path));
  }
  // The records of the one journal.
  [[nodiscard]] std::vector<JournalRecord> journal() const {
    const auto computer = machine::Machine::open(folder.path());
    const machine::Running inForce(*computer);
    std::vector<JournalRecord> records;
    for (const auto& entry : fs::directory_iterator(programFolder())) {
      const std::string name = entry.path().filename().string();
      const bool isJournal = name.starts_with("31.01.2026");
      const std::string bytes = isJournal ? readFile(entry.path()) : "";
      for (std::size_t number = 1; number <= journalRecordCount(bytes); ++number) {
        records.push_back(journalRecordAt(bytes, number));
      }
    }
    return records;
  }
  [[nodiscard]] fs::path programFolder() const {
    return folder.path() / "C" / "Program Files (x86)" / "zelvreg";
  }
  [[nodiscard]] const fs::path& path() const { return folder.path(); }
  [[nodiscard]] const OtherScript& ownScript() const { return script; }

 private:
  const OtherScript& script;
  const fixture::TemporaryFolder folder;
};

}  // namespace zelvreg::console

#endif
