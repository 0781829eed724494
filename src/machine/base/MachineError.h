// What goes wrong with what a computer is kept in: its folder, its disk, one of their files.
#ifndef ZELVREG_MACHINE_BASE_MACHINE_ERROR_H
#define ZELVREG_MACHINE_BASE_MACHINE_ERROR_H

#include <stdexcept>

namespace zelvreg::machine {

// What is wrong with the folder, a file or an option, and what to do, in one line.
class MachineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace zelvreg::machine

#endif
