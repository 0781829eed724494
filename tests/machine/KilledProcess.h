// Work in a process of its own that is killed at one of its system calls.
#ifndef ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H
#define ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>

namespace zelvreg::fixture {

#ifdef __SANITIZE_ADDRESS__
inline constexpr bool canBeTraced = false;  // the sanitizer's own checks at the end need to trace
#else
inline constexpr bool canBeTraced = true;
#endif

// Starts work in another process, which stands at the n-th system call of it. Its status as
// waitpid() gives it: it is stopped, or it has ended before.
template <typename Prepare, typename Work>
int stopAtCall(pid_t& child, int number, Prepare prepare, Work work) {
  child = fork();
  if (child == 0) {
    prepare();
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    std::raise(SIGSTOP);
    try {
      work();
    } catch (const std::exception&) {
      _exit(1);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  // Each call stops twice, before and after; a signal on its way stops, too.
  for (int stop = 0; stop < 2 * number && WIFSTOPPED(status); ++stop) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  return status;
}

// Prepares and works in another process, which is killed at the n-th system call of its work.
// Whether it had ended by itself before.
template <typename Prepare, typename Work>
bool endsBeforeCall(int number, Prepare prepare, Work work) {
  pid_t child = 0;
  int status = stopAtCall(child, number, prepare, work);
  if (!WIFSTOPPED(status)) {
    return true;
  }
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return false;
}

// The same, but what disturbs it happens at that call, and the work goes on. `hasFailed` tells
// whether it ended with an exception.
template <typename Prepare, typename Work, typename Disturb>
bool endsAfterCall(int number, Prepare prepare, Work work, Disturb disturb, bool& hasFailed) {
  pid_t child = 0;
  int status = stopAtCall(child, number, prepare, work);
  const bool hasEnded = !WIFSTOPPED(status);
  disturb();
  while (WIFSTOPPED(status)) {
    ptrace(PTRACE_CONT, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  hasFailed = !hasEnded && WIFEXITED(status) && WEXITSTATUS(status) != 0;
  return hasEnded;
}

}  // namespace zelvreg::fixture

#endif
