// Runs a program and makes one of its calls to the system fail, be cut short, or be its last.
//
// A tracer sees every call, also those that the libraries make within themselves (a library that
// is preloaded sees only what is called through it), and those of the processes that the program
// starts. A filter in the kernel stops it at calls about files alone, so that all else is as fast
// as ever.
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "FileCalls.h"
#include "Plan.h"
#include "Tracee.h"

namespace zelvreg::faults {
namespace {

constexpr const char* usage = R"(fault-injector --below DIR [OPTION...] PROGRAM [ARGUMENT...]
    Runs PROGRAM. Calls about files below DIR, which stands for a disk, are counted by kind, from 1;
    so are the processes that PROGRAM starts ("start" and "exec"). Of the programs that it starts
    the kind has their name in front. Ends with the status of PROGRAM, or 128 and the number of the
    signal that ended it.
    --mounts DIR          counts what PROGRAM itself does with files below DIR, too
    --log FILE            writes a line for each call: kind, number, bytes that it asked for, path
    --at KIND:N:DEED      what becomes of one call. DEED is the number of an error, or
                          "short" (half of what is asked for), "end" (nothing is read any more),
                          "before" or "after" (all processes are killed then),
                          "alone" (its process is killed before it)
    --room BYTES          the disk takes so many bytes more, and nothing new after that
    --gone N:ERROR        from the Nth call about a file of the disk on, all of these fail
)";

struct Arguments {
  Counted counted;
  std::string log;
  Plan plan;
  char** program = nullptr;
};

Arguments argumentsOf(char** arguments) {
  Arguments result;
  for (++arguments; *arguments != nullptr && **arguments == '-'; arguments += 2) {
    const std::string option = *arguments;
    const std::string value = arguments[1] == nullptr ? "" : arguments[1];
    if (option == "--below") {
      result.counted.below = value;
    } else if (option == "--mounts") {
      result.counted.mounts = value;
    } else if (option == "--log") {
      result.log = value;
    } else if (!result.plan.take(option, value)) {
      break;
    }
  }
  result.program = arguments;
  if (*arguments != nullptr) {
    std::error_code error;
    result.counted.program = std::filesystem::canonical(*arguments, error).string();
  }
  return result;
}

[[noreturn]] void startProgram(char** program) {
  ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
  raise(SIGSTOP);
  if (stopAtFileCalls()) {
    execvp(program[0], program);
  }
  std::perror(program[0]);
  _exit(126);
}

class Run {
 public:
  explicit Run(const Arguments& given) : arguments(given), plan(given.plan) {}

  int follow(pid_t program) {
    int status = 0;
    waitpid(program, &status, 0);
    ptrace(PTRACE_SETOPTIONS, program, nullptr,
           PTRACE_O_TRACESECCOMP | PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE |
               PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    ptrace(PTRACE_CONT, program, nullptr, nullptr);
    processes.insert(program);
    int result = 0;
    // Also those that were started a moment before all were killed: they hold locks until they end.
    for (pid_t process = 0; (process = waitpid(-1, &status, __WALL)) > 0;) {
      if (!WIFSTOPPED(status)) {
        processes.erase(process);
        if (process == program) {
          result = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        continue;
      }
      goOn(process, status);
    }
    return result;
  }

  [[nodiscard]] const std::string& log() const { return lines; }

 private:
  void goOn(pid_t process, int status) {
    processes.insert(process);
    if (isOver) {
      kill(process, SIGKILL);
      return;
    }
    const int signal = WSTOPSIG(status);
    const int event = status >> 16;
    if (event == PTRACE_EVENT_SECCOMP) {
      meet(process);
      return;
    }
    if (signal == (SIGTRAP | 0x80)) {
      meetEnd(process);
      return;
    }
    // A process that has just been started begins with a stop that is nobody's signal.
    const bool isOwn = event == 0 && signal != SIGTRAP && signal != SIGSTOP;
    ptrace(PTRACE_CONT, process, nullptr, isOwn ? signal : 0);
  }

  void meet(pid_t process) {
    Tracee tracee(process);
    const std::optional<FileCall> call = fileCall(tracee, arguments.counted);
    if (!call) {
      ptrace(PTRACE_CONT, process, nullptr, nullptr);
      return;
    }
    const std::uint64_t number = ++counts[call->kind];
    lines += call->kind + " " + std::to_string(number) + " " + std::to_string(call->bytes) + " " +
             call->path + "\n";
    const Deed deed = plan.next(*call, number);
    switch (deed.what) {
      case Deed::What::Fail:
        if (call->isDoneEvenIfItFails) {
          failing[process] = deed.number;
          ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
          return;
        }
        tracee.answer(-deed.number);
        break;
      case Deed::What::Shorten:
        tracee.setArgument(call->sizeArgument, static_cast<std::uint64_t>(deed.number));
        break;
      case Deed::What::End:
        tracee.answer(0);
        break;
      case Deed::What::KillBefore:
        killAll();
        return;
      case Deed::What::KillOne:
        kill(process, SIGKILL);
        return;
      case Deed::What::KillAfter:
        ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        return;
      case Deed::What::Nothing:
        break;
    }
    ptrace(PTRACE_CONT, process, nullptr, nullptr);
  }

  // A call has been done that is the last one, or that says that it failed.
  void meetEnd(pid_t process) {
    const auto found = failing.find(process);
    if (found == failing.end()) {
      killAll();
      return;
    }
    Tracee(process).setResult(-found->second);
    failing.erase(found);
    ptrace(PTRACE_CONT, process, nullptr, nullptr);
  }

  void killAll() {
    isOver = true;
    for (const pid_t process : processes) {
      kill(process, SIGKILL);
    }
  }

  const Arguments& arguments;
  Plan plan;
  std::set<pid_t> processes;
  std::map<pid_t, std::int64_t> failing;  // at the end of their calls, with which error
  bool isOver = false;
  std::map<std::string, std::uint64_t> counts;
  std::string lines;
};

int runGiven(char** given) {
  const Arguments arguments = argumentsOf(given);
  if (arguments.counted.below.empty() || arguments.counted.program.empty()) {
    std::cerr << usage;
    return 126;
  }
  const pid_t program = fork();
  if (program == 0) {
    startProgram(arguments.program);
  }
  Run run(arguments);
  const int status = run.follow(program);
  if (!arguments.log.empty()) {
    std::ofstream(arguments.log) << run.log();
  }
  return status;
}

}  // namespace
}  // namespace zelvreg::faults

int main(int /*count*/, char** arguments) { return zelvreg::faults::runGiven(arguments); }
