// For tests in which one call after the other fails once, on the emulated computer.
#ifndef ZELVREG_TESTS_SUPPORT_FAULT_SWEEP_H
#define ZELVREG_TESTS_SUPPORT_FAULT_SWEEP_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "support/CallNames.h"
#include "support/Sanitizer.h"

namespace zelvreg::fixture {

// How many calls lie between one that fails and the next. Sanitizers make each run ten times as
// long. So with them, after the first hundred, every fourth fails, unless ./test --all asks for
// all.
inline bool isEachTried() {
  return !areAddressesChecked || std::getenv("ZELVREG_RANDOM_MACHINES") != nullptr;
}

inline std::uint64_t stepAfter(std::uint64_t n) { return isEachTried() || n < 100 ? 1 : 4; }

// Thousands of runs write their files to the end: a folder in memory does not make them wait.
inline std::filesystem::path folderInMemory() {
  const std::filesystem::path memory = "/dev/shm";
  return access(memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path();
}

// A computer that is in each run as it was at first.
class MachineAnew {
 public:
  // From this folder, which stays as it is.
  machine::Machine& begin(const std::filesystem::path& first) {
    started.reset();
    home.emplace(folderInMemory());
    std::filesystem::copy(first, home->path(), std::filesystem::copy_options::recursive);
    started.emplace(home->path());
    return computer();
  }
  [[nodiscard]] machine::Machine& computer() const { return *started->machine; }
  [[nodiscard]] const TemporaryFolder& folder() const { return *home; }

  // What was half written when it failed.
  [[nodiscard]] bool hasHalfWritten() const {
    for (const auto& file : std::filesystem::recursive_directory_iterator(home->path())) {
      if (file.path().extension() == ".new") {
        return true;
      }
    }
    return false;
  }

 private:
  struct Started {
    std::unique_ptr<machine::Machine> machine;
    machine::Running inForce;
    explicit Started(const std::filesystem::path& folder)
        : machine(machine::Machine::open(folder)), inForce(*machine) {}
  };
  std::optional<TemporaryFolder> home;
  std::optional<Started> started;
};

// Tests that are made once for each kind of call.
class SweptCall : public ::testing::Test, public ::testing::WithParamInterface<std::size_t> {
 protected:
  const machine::ApiCall call = static_cast<machine::ApiCall>(GetParam());

  // Lets each call fail once. `run` is given the number of the one that is to fail, and gives how
  // many there were.
  template <typename Run>
  void failEachOnce(const Run& run) {
    bool isMade = true;
    for (std::uint64_t n = 1; isMade && !HasFailure(); n += stepAfter(n)) {
      SCOPED_TRACE("call " + std::to_string(n));
      isMade = run(n) >= n;
    }
  }
};

inline auto eachCall() { return ::testing::Range<std::size_t>(0, callNames.size()); }
inline std::string nameOfCall(const ::testing::TestParamInfo<std::size_t>& call) {
  return callNames.at(call.param);
}

}  // namespace zelvreg::fixture

#endif
