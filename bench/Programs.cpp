#include "Programs.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <system_error>

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

double secondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// The child's side: it becomes the program, or ends.
[[noreturn]] void become(std::vector<std::string> words) {
  constexpr int cannotRun = 127;
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    dup2(nowhere, stream);
  }
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  execv(arguments.front(), arguments.data());
  _exit(cannotRun);
}

}  // namespace

ProgramTimes runProgram(const std::vector<std::string>& words, int highestStatus) {
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    become(words);
  }
  int status = 0;
  rusage usage{};
  const bool hasEnded = child > 0 && wait4(child, &status, 0, &usage) == child;
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (!hasEnded || !WIFEXITED(status) || WEXITSTATUS(status) > highestStatus) {
    throw std::runtime_error(words.front() + " does not run as it should; try it by hand");
  }
  return {elapsed.count(), secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime)};
}

ProgramTimes measureProgram(const std::vector<std::string>& words, std::size_t runs,
                            int highestStatus) {
  std::vector<double> elapsed;
  std::vector<double> processor;
  for (std::size_t run = 0; run < runs; ++run) {
    const ProgramTimes times = runProgram(words, highestStatus);
    elapsed.push_back(times.elapsed);
    processor.push_back(times.processor);
  }
  return {median(elapsed), median(processor)};
}

std::optional<fs::path> findProgram(std::string_view name, std::string_view folders) {
  while (!folders.empty()) {
    const std::string_view folder = folders.substr(0, folders.find(':'));
    folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    const fs::path file = fs::path(folder) / name;
    std::error_code ignored;
    if (fs::is_regular_file(file, ignored) && access(file.c_str(), X_OK) == 0) {
      return file;
    }
  }
  return std::nullopt;
}

fs::path zelvregProgram() {
  const std::string folder = fs::read_symlink("/proc/self/exe").parent_path().string();
  const auto program = findProgram("zelvreg", folder);
  if (!program) {
    throw std::runtime_error("zelvreg is not in " + folder + "; build it too");
  }
  return *program;
}

fs::path demoMachine() { return ZELVREG_DEMO_MACHINE; }

}  // namespace zelvreg::bench
