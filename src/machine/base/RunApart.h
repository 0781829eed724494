// Work in a process of its own, so that a library that ends the process ends that one alone.
#ifndef ZELVREG_MACHINE_BASE_RUN_APART_H
#define ZELVREG_MACHINE_BASE_RUN_APART_H

#include <functional>
#include <string>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

// Work that ended without an answer.
class WorkStopped : public MachineError {
 public:
  explicit WorkStopped(int numberOfSignal, std::string wordsSaid);

  int signal;             // that ended it, or 0
  std::string lastWords;  // the last line on its standard error, or empty
};

// Gives what the work gives, which sees this process's memory as it is now and changes nothing in
// it; files that it writes are written. What the work throws is thrown here, as a MachineError; a
// WorkStopped is thrown if the work ends in any other way. The other process does not outlive this
// one, and holds the locks of this one as long as it works.
std::string runApart(const std::function<std::string()>& work);

}  // namespace zelvreg::machine

#endif
