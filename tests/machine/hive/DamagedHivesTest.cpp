// Real damaged hives; they are not part of the project, so the tests run only where the
// environment variable ZELVREG_REAL_HIVES names the folder that holds them.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "machine/base/MachineError.h"
#include "machine/hive/HiveFile.h"
#include "machine/registry/Registry.h"
#include "support/Sanitizer.h"

namespace zelvreg::fixture {
namespace {

constexpr unsigned mostSeconds = 10;
constexpr rlim_t mostMemory = rlim_t{1} << 30;

// Exit statuses that no sanitizer uses.
enum Outcome : int { readWhole = 40, refused = 41, failed = 42 };

constexpr bool limitsMemory = !areAddressesChecked;

// Reads every key and value of a hive in a process of its own, which may neither crash nor take
// long nor take much memory. The exit status, or 128 and the signal that ended it.
int readInAnotherProcess(const std::filesystem::path& file) {
  const pid_t child = fork();
  if (child == 0) {
    if (limitsMemory) {
      const rlimit limit{mostMemory, mostMemory};
      setrlimit(RLIMIT_AS, &limit);
    }
    alarm(mostSeconds);
    try {
      machine::Registry registry(64, "S-1-5-21-1-1-1-1001");
      registry.mount(registry.machineRoot(), u"SOFTWARE",
                     std::make_unique<machine::HiveFile>(file));
      registry.finishLoading();
      static_cast<void>(registry.count());
      _exit(readWhole);
    } catch (const machine::MachineError&) {
      _exit(refused);
    } catch (...) {
      _exit(failed);
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

TEST(DamagedHivesTest, EachIsReadOrRefusedInTimeAndInLittleMemory) {
  const char* folder = std::getenv("ZELVREG_REAL_HIVES");
  if (folder == nullptr) {
    GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder";
  }
  int count = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(std::filesystem::path(folder) / "bad")) {
    if (entry.is_regular_file()) {
      ++count;
      const int outcome = readInAnotherProcess(entry.path());
      EXPECT_TRUE(outcome == readWhole || outcome == refused)
          << entry.path() << " ended with " << outcome;
    }
  }
  EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace zelvreg::fixture
