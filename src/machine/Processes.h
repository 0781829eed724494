// The programs that run on the emulated computer: as many as a test or a call has put there.
#ifndef ZELVREG_MACHINE_PROCESSES_H
#define ZELVREG_MACHINE_PROCESSES_H

#include <string>
#include <vector>

namespace zelvreg::machine {

struct Processes {
  std::vector<std::string> running;  // names of programs, as "regedit.exe"; the id is the place + 1
  std::vector<std::string> ended;    // names, in the order in which they were ended
  std::vector<std::string> started;  // command lines, or documents that were opened
};

}  // namespace zelvreg::machine

#endif
