// The ends of all processes that a test has started, whosever children they were.
#ifndef ZELVREG_TESTS_MACHINE_ADOPTED_PROCESSES_H
#define ZELVREG_TESTS_MACHINE_ADOPTED_PROCESSES_H

#include <sys/prctl.h>
#include <sys/wait.h>

#include <cerrno>

namespace zelvreg::fixture {

// As long as it lives, processes that lose the one that started them come to this one: daemons,
// for instance, which still write what they hold when their file system has been unmounted.
class AdoptedProcesses {
 public:
  AdoptedProcesses() { prctl(PR_SET_CHILD_SUBREAPER, 1); }
  ~AdoptedProcesses() { prctl(PR_SET_CHILD_SUBREAPER, 0); }
  AdoptedProcesses(const AdoptedProcesses&) = delete;
  AdoptedProcesses& operator=(const AdoptedProcesses&) = delete;

  // Until each has ended.
  static void waitForAll() {
    while (wait(nullptr) > 0 || errno == EINTR) {
    }
  }
};

}  // namespace zelvreg::fixture

#endif
