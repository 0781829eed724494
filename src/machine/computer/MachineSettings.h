// The settings file of a machine folder, machine.ini.
#ifndef ZELVREG_MACHINE_COMPUTER_MACHINE_SETTINGS_H
#define ZELVREG_MACHINE_COMPUTER_MACHINE_SETTINGS_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvreg::machine {

struct MachineSettings {
  bool is64Bit = true;
  unsigned codePage = 1252;
  std::string user = "User";      // UTF-8, as all text here
  std::optional<SYSTEMTIME> now;  // local time at which the clock stands still
  bool hasSuite = false;
  std::vector<std::pair<std::string, std::string>> environment;  // in the order of the file
};

// Reads the file's content. Throws MachineError ("machine.ini:3: …") for every line that is not
// understood.
MachineSettings parseMachineSettings(std::string_view content);

// The lines of a text, without their ends (LF or CRLF) and without a mark of UTF-8 in front.
std::vector<std::string_view> linesOf(std::string_view content);

}  // namespace zelvreg::machine

#endif
