// Work in a process of its own that is killed at one of its system calls.
#ifndef ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H
#define ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace zelvreg::fixture {

#ifdef __SANITIZE_ADDRESS__
inline constexpr bool canBeTraced = false;  // the sanitizer's own checks at the end need to trace
#else
inline constexpr bool canBeTraced = true;
#endif

// Prepares and works in another process, which is killed at the n-th system call of its work.
// Whether it had ended by itself before.
template <typename Prepare, typename Work>
bool endsBeforeCall(int number, Prepare prepare, Work work) {
  const pid_t child = fork();
  if (child == 0) {
    prepare();
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    std::raise(SIGSTOP);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  // Each call stops twice, before and after.
  for (int stop = 0; stop < 2 * number && WIFSTOPPED(status); ++stop) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (!WIFSTOPPED(status)) {
    return true;
  }
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return false;
}

}  // namespace zelvreg::fixture

#endif
