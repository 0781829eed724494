// Programs of this system that make what a test works on.
#ifndef ZELVREG_TESTS_MACHINE_PROGRAM_RUN_H
#define ZELVREG_TESTS_MACHINE_PROGRAM_RUN_H

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <vector>

namespace zelvreg::fixture {

// Whether the program could be run and ended well; it is quiet. `input` is the file that it reads
// its standard input from.
inline bool run(std::vector<std::string> words, const std::string& input = "/dev/null") {
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t files{};
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, 0, input.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files, 2, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const bool isStarted =
      posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ) == 0;
  posix_spawn_file_actions_destroy(&files);
  int status = 1;
  return isStarted && waitpid(child, &status, 0) == child && status == 0;
}

}  // namespace zelvreg::fixture

#endif
