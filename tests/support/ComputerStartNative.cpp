#include <filesystem>
#include <optional>

#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "support/ComputerFixture.h"
#include "support/SourceFolder.h"

namespace zelvreg::fixture {
namespace {

class EmulatedComputer : public RunningComputer {
 public:
  explicit EmulatedComputer(int bits) {
    home.makeFolder("C/Windows/System32");
    home.makeFolder("C/Windows/SysWOW64");
    home.write("machine.ini",
               "[machine]\nbits=" + std::to_string(bits) + "\nnow=2026-01-31T13:45:06\n");
    std::filesystem::copy_file(sourceFolder() + "/tests/fixtures/conformance/registry.reg",
                               home.path() / "registry.reg");
    machine = machine::Machine::open(home.path());
    running.emplace(*machine);
  }

 private:
  fixture::TemporaryFolder home;
  std::unique_ptr<machine::Machine> machine;
  std::optional<machine::Running> running;
};

}  // namespace

std::unique_ptr<RunningComputer> RunningComputer::start(int bits) {
  return std::make_unique<EmulatedComputer>(bits);
}

}  // namespace zelvreg::fixture
