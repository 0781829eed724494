#include "machine/Machine.h"
#include "machine/files/Drives.h"
#include "runtime/DriveAtHand.h"
#include "unicode/Unicode.h"

namespace zelvreg {

bool isDriveAtHand(const std::string& path) {
  const auto* machine = machine::Machine::current();
  return machine == nullptr || !machine->drives().isUnknown(utf16(path));
}

}  // namespace zelvreg
