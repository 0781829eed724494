// Which calls to the system are about files, and which start processes.
#ifndef ZELVREG_TESTS_FAULTS_INJECTOR_FILE_CALLS_H
#define ZELVREG_TESTS_FAULTS_INJECTOR_FILE_CALLS_H

#include <cstdint>
#include <optional>
#include <string>

#include "Tracee.h"

namespace zelvreg::faults {

// Whose calls count.
struct Counted {
  std::string below;  // the folder that stands for a disk; calls of all processes about its files
  std::string
      mounts;  // where the program mounts something for itself; only its own calls; or empty
  std::string program;  // whose processes start others, which counts too
};

struct FileCall {
  std::string kind;         // of another program with its name in front: "qemu-img/read"
  std::string path;         // absolute; the first of two
  std::uint64_t bytes = 0;  // that it asks for
  int sizeArgument = -1;    // where it says so, if it may do less
  bool isOnDisk = false;
  bool takesSpace = false;  // of the disk
  bool isDoneEvenIfItFails = false;
};

// Makes the kernel stop this process and those that it will start at these calls, for their tracer.
// False if it cannot.
bool stopAtFileCalls();

// The call that the process has stopped at; none if it does not count.
std::optional<FileCall> fileCall(const Tracee& tracee, const Counted& counted);

}  // namespace zelvreg::faults

#endif
