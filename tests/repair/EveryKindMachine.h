// A computer on which a scan finds something of every kind that a repair knows: the demo machine
// with a little more in it.
#ifndef ZELVREG_TESTS_REPAIR_EVERY_KIND_MACHINE_H
#define ZELVREG_TESTS_REPAIR_EVERY_KIND_MACHINE_H

#include <filesystem>
#include <memory>
#include <optional>

#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::fixture {

class EveryKindMachine {
 public:
  // Makes the folder and puts the computer in force.
  EveryKindMachine();

  // The computer as it was at first, unless it was saved: nothing that a run did is kept, the
  // program's files included.
  machine::Machine& restart();
  void stop() { started.reset(); }
  [[nodiscard]] machine::Machine& computer() const { return *started->machine; }
  // The computer's folder and the program's folder on this system.
  [[nodiscard]] const std::filesystem::path& folder() const { return home.path(); }
  [[nodiscard]] std::filesystem::path programFolder() const;

 private:
  struct Started {
    std::unique_ptr<machine::Machine> machine;
    machine::Running inForce;
    explicit Started(const std::filesystem::path& folder)
        : machine(machine::Machine::open(folder)), inForce(*machine) {}
  };

  TemporaryFolder home;
  std::optional<Started> started;
};

// Loads the form and scans all rows.
void scanAllRows(Form42& form);
// Runs the scanners that no row runs, and ticks all that was found.
void scanWhatNoRowScans(Form42& form);

}  // namespace zelvreg::fixture

#endif
