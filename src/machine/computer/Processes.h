// The programs that run on the emulated computer: as many as a test or a call has put there.
#ifndef ZELVREG_MACHINE_COMPUTER_PROCESSES_H
#define ZELVREG_MACHINE_COMPUTER_PROCESSES_H

#include <string>
#include <vector>

namespace zelvreg::machine {

// What the process's token lets it do whatever access lists say. Each is off until it is enabled.
struct Privileges {
  bool backup = false;         // read keys that are opened for it
  bool restore = false;        // write and make such keys
  bool takeOwnership = false;  // become the owner of keys
};

struct Processes {
  Privileges privileges;             // of this one
  std::vector<std::string> running;  // names of programs, as "regedit.exe"; the id is the place + 1
  std::vector<std::string> ended;    // names, in the order in which they were ended
  std::vector<std::string> started;  // command lines, or documents that were opened
};

}  // namespace zelvreg::machine

#endif
