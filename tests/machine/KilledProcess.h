// Work in a process of its own that is killed at one of its system calls, or of which one fails.
#ifndef ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H
#define ZELVREG_TESTS_MACHINE_KILLED_PROCESS_H

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <exception>

#include "support/Sanitizer.h"

namespace zelvreg::fixture {

// The sanitizer's own checks at the end need to trace.
inline constexpr bool canBeTraced = !areAddressesChecked;

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

#ifdef __x86_64__

// Calls that work on files and may fail for a reason that lies in these.
inline bool isOnFiles(unsigned long long call) {
  constexpr std::array<unsigned long long, 27> calls{
      SYS_open,      SYS_openat,     SYS_read,      SYS_pread64,    SYS_write,     SYS_pwrite64,
      SYS_stat,      SYS_fstat,      SYS_lstat,     SYS_newfstatat, SYS_statx,     SYS_fsync,
      SYS_rename,    SYS_renameat,   SYS_renameat2, SYS_link,       SYS_unlink,    SYS_unlinkat,
      SYS_fchmod,    SYS_fchown,     SYS_fsetxattr, SYS_flistxattr, SYS_fgetxattr, SYS_ftruncate,
      SYS_utimensat, SYS_getdents64, SYS_sendfile};
  return std::ranges::find(calls, call) != calls.end();
}

enum class CallFailure { NoSuchCall, NotOnFiles, Done };

// Prepares and works in another process, whose n-th system call fails with this error and does
// nothing if it is one on files. `hasFailed` tells whether the work ended with an exception.
template <typename Prepare, typename Work>
CallFailure failCall(int number, int error, Prepare prepare, Work work, bool& hasFailed) {
  pid_t child = 0;
  int status = stopAtCall(child, number, prepare, work);
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
  const auto goTo = [&](int side) {
    __ptrace_syscall_info info{};
    while (WIFSTOPPED(status) && info.op != side) {
      ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
      waitpid(child, &status, 0);
      ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
    }
  };
  goTo(PTRACE_SYSCALL_INFO_ENTRY);
  user_regs_struct registers{};
  CallFailure result = CallFailure::NoSuchCall;
  if (WIFSTOPPED(status)) {
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    result = isOnFiles(registers.orig_rax) ? CallFailure::Done : CallFailure::NotOnFiles;
  }
  if (result == CallFailure::Done) {
    registers.orig_rax = ~0ULL;
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
    goTo(PTRACE_SYSCALL_INFO_EXIT);
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    registers.rax = static_cast<unsigned long long>(-static_cast<long long>(error));
    ptrace(PTRACE_SETREGS, child, nullptr, &registers);
  }
  while (WIFSTOPPED(status)) {
    // Its own signals reach it; those of a trace, which may be marked by a bit, do not.
    const int signal = WSTOPSIG(status) & ~0x80;
    ptrace(PTRACE_CONT, child, nullptr, signal == SIGTRAP ? 0 : signal);
    waitpid(child, &status, 0);
  }
  hasFailed = !WIFEXITED(status) || WEXITSTATUS(status) != 0;
  return result;
}

// The same for each call of the work in turn. `judge` hears which call it was, and whether the work
// ended with an exception. How many calls were on files.
template <typename Work, typename Judge>
int failEachCall(int error, Work work, const Judge& judge) {
  int failures = 0;
  CallFailure failure = CallFailure::Done;
  for (int call = 0; failure != CallFailure::NoSuchCall; ++call) {
    bool hasFailed = false;
    failure = failCall(
        call, error, [] {}, work, hasFailed);
    judge(call, hasFailed);
    failures += failure == CallFailure::Done ? 1 : 0;
  }
  return failures;
}

#endif

}  // namespace zelvreg::fixture

#endif
