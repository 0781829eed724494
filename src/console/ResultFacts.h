// What a result tells besides the findings: of which computer it is, when it was made and how whole
// it is.
#ifndef ZELVREG_CONSOLE_RESULT_FACTS_H
#define ZELVREG_CONSOLE_RESULT_FACTS_H

#include <string>
#include <vector>

#include "console/ComputerUser.h"

namespace zelvreg::console {

// As the computer's registry has it; a text that it does not have is empty.
struct ComputerFacts {
  std::string name;
  std::string identity;  // a digest of the number that Windows made at its installation
  std::string product;   // "Windows 10 Pro"
  std::string version;   // "10.0.19045"
  int bits = 64;
  unsigned codePage = 0;
};

// Of the computer whose registry answers now.
ComputerFacts factsOfComputer();

struct ResultFacts {
  std::string command;  // "scan" or "fix"
  ComputerFacts computer;
  std::vector<ComputerUser> users;    // as whom it was scanned
  std::vector<std::string> warnings;  // what standard error says
  std::vector<std::string> unseen;    // keys that could not be opened for lack of rights
  std::string started;                // in UTC, "2026-11-23T06:53:29Z"
  double seconds = 0;
  bool isComplete = true;
};

}  // namespace zelvreg::console

#endif
