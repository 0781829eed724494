// Calls of the tests' program to Windows that fail as planned.
#ifndef ZELVREG_TESTS_SUPPORT_FAULTY_CALLS_H
#define ZELVREG_TESTS_SUPPORT_FAULTY_CALLS_H

#include "machine/base/FaultPlan.h"

namespace zelvreg::fixture {

// As long as it is there, the calls of this thread about files and the registry ask a plan first:
// all that this program calls through its table of imports, the static part of the C++ library
// included. What the system's own libraries call among themselves goes on as ever, and so do calls
// of which the plan knows no kind. One at a time.
class FaultyCalls {
 public:
  // The plan stays the caller's.
  explicit FaultyCalls(machine::FaultPlan& plan);
  FaultyCalls(const FaultyCalls&) = delete;
  FaultyCalls& operator=(const FaultyCalls&) = delete;
  ~FaultyCalls();
};

}  // namespace zelvreg::fixture

#endif
