#include "machine/Drives.h"
#include "machine/Machine.h"
#include "runtime/DriveAtHand.h"

namespace zelvreg {

bool isDriveAtHand(const std::string& path) {
  const auto* machine = machine::Machine::current();
  return machine == nullptr || !machine->drives().isUnknown(path.c_str());
}

}  // namespace zelvreg
