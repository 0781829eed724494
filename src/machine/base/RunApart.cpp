#include "machine/base/RunApart.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>

#include "machine/base/FileDescriptor.h"
#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

// The first byte of an answer.
constexpr char isResult = '+';
constexpr char isRefusal = '-';

void writeAnswer(int pipe, const std::string& answer) {
  std::size_t done = 0;
  while (done < answer.size()) {
    const ssize_t put = write(pipe, answer.data() + done, answer.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return;
    done += static_cast<std::size_t>(put);
  }
}

std::string readAnswer(int pipe) {
  std::string answer;
  std::array<char, 4096> buffer{};
  for (;;) {
    const ssize_t got = read(pipe, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return answer;
    answer.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

// An assertion's own words and its memory image are for the library's developers.
void beQuiet() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(nowhere, STDERR_FILENO);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

[[noreturn]] void workApart(const std::function<std::string()>& work, int pipe, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  beQuiet();
  try {
    writeAnswer(pipe, isResult + work());
  } catch (const std::exception& error) {
    writeAnswer(pipe, isRefusal + std::string(error.what()));
  }
  _exit(0);
}

[[noreturn]] void refuse(int error) {
  throw MachineError(std::string("no process can be started for it: ") + std::strerror(error));
}

}  // namespace

std::string runApart(const std::function<std::string()>& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) refuse(errno);
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) refuse(errno);
  if (child == 0) workApart(work, writing.get(), parent);
  writing = FileDescriptor();
  const std::string answer = readAnswer(reading.get());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || answer.empty()) {
    throw MachineError("the library that changes hives stopped at its content");
  }
  if (answer.front() == isRefusal) throw MachineError(answer.substr(1));
  return answer.substr(1);
}

}  // namespace zelvreg::machine
