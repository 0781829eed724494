// An emulated computer for one test: described line by line, then started, then asked.
//
//   class FontsTest : public MachineFixture {};
//
//   TEST_F(FontsTest, …) {
//     key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\Vendor)", R"("Name"="text")");
//     file(R"(C:\Windows\Fonts\arial.ttf)");
//     start();
//     … any Windows call …
//   }
#ifndef ZELVREG_TESTS_SUPPORT_MACHINE_FIXTURE_H
#define ZELVREG_TESTS_SUPPORT_MACHINE_FIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"

namespace zelvreg::fixture {

// All texts are UTF-8; paths are those of the emulated computer ("C:\Windows\x.txt"). What is said
// before start() makes the computer; file() and folder() work afterwards too. Drive C is always
// there. The clock stands at 2026-01-31 13:45:06.
class MachineBuilder {
 public:
  MachineBuilder() { home.makeFolder("C"); }

  // A key of the 64-bit view and its value lines as a .reg file has them, one "\n" between two.
  void key(std::string_view path, std::string_view valueLines = {}) {
    registryText.append("[").append(path).append("]\n").append(valueLines).append("\n\n");
  }
  // A line of [machine] ("bits", "32"), and one of [environment].
  void setting(const std::string& name, std::string_view value) { settingLines[name] = value; }
  void variable(const std::string& name, std::string_view value) { variableLines[name] = value; }
  // The list of a key or a file, as SDDL; and a file's attributes.
  void security(std::string_view path, std::string_view sddl) {
    securityText.append(path).append("\t").append(sddl).append("\n");
  }
  void attributes(std::string_view path, unsigned number) {
    attributesText.append(path).append("\t").append(std::to_string(number)).append("\n");
  }

  // A file or a folder with all folders above it.
  void file(std::string_view path, std::string_view content = {}) const {
    home.write(placeOf(path), content);
  }
  void folder(std::string_view path) const { home.makeFolder(placeOf(path)); }
  // The content of a file; the empty text if there is none (the case of its name matters).
  [[nodiscard]] std::string content(std::string_view path) const {
    return home.read(placeOf(path));
  }
  [[nodiscard]] bool has(std::string_view path) const { return home.has(placeOf(path)); }

  // Writes the folder, opens it and puts the machine in force until the builder is gone.
  machine::Machine& start() {
    writeFiles();
    return open();
  }
  // Saves, closes and opens the same folder again, as the next run of the program would.
  machine::Machine& restart() {
    startedMachine->machine->save();
    startedMachine.reset();
    return open();
  }
  void stop() { startedMachine.reset(); }

  // The started machine.
  [[nodiscard]] machine::Machine& computer() const { return *startedMachine->machine; }
  // The folder on this system: it has registry.reg, machine.ini and the others.
  [[nodiscard]] const TemporaryFolder& machineFolder() const { return home; }

 private:
  struct Started {
    std::unique_ptr<machine::Machine> machine;
    machine::Running inForce;
    explicit Started(const std::filesystem::path& folder)
        : machine(machine::Machine::open(folder)), inForce(*machine) {}
  };

  // "C:\a\b" is at "C/a/b".
  static std::string placeOf(std::string_view path) {
    std::string place(path.substr(0, 1));
    place += path.substr(2);
    for (char& letter : place) letter = letter == '\\' ? '/' : letter;
    return place;
  }

  static void appendLines(std::string& text, const std::map<std::string, std::string>& lines) {
    for (const auto& [name, value] : lines) text.append(name + "=" + value + "\n");
  }

  void writeFiles() const {
    std::string ini = "[machine]\n";
    appendLines(ini, settingLines);
    ini += "[environment]\n";
    appendLines(ini, variableLines);
    home.write("machine.ini", ini);
    home.write("registry.reg", "Windows Registry Editor Version 5.00\n\n" + registryText);
    if (!securityText.empty()) home.write("security.txt", securityText);
    if (!attributesText.empty()) home.write("attributes.txt", attributesText);
  }

  machine::Machine& open() {
    startedMachine.emplace(home.path());
    return *startedMachine->machine;
  }

  TemporaryFolder home;
  std::string registryText;
  std::map<std::string, std::string> settingLines{{"now", "2026-01-31T13:45:06"}};
  std::map<std::string, std::string> variableLines;
  std::string securityText;
  std::string attributesText;
  std::optional<Started> startedMachine;
};

// The same as a GoogleTest fixture.
class MachineFixture : public ::testing::Test, protected MachineBuilder {};

}  // namespace zelvreg::fixture

#endif
