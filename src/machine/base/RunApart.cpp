#include "machine/base/RunApart.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <utility>

#include "machine/base/FileDescriptor.h"
#include "machine/base/PlainFile.h"

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

// An assertion's own words are kept for who asks for them, and its memory image is for the
// library's developers.
void beQuiet(const FileDescriptor& words) {
  dup2(words.get(), STDERR_FILENO);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

std::string lastLineOf(const FileDescriptor& words) {
  constexpr off_t longest = 4096;
  const off_t size = lseek(words.get(), 0, SEEK_END);
  const off_t start = size > longest ? size - longest : 0;
  std::string text(static_cast<std::size_t>(size < 0 ? 0 : size - start), '\0');
  text.resize(readAt(words, static_cast<std::uint64_t>(start), text.data(), text.size()));
  text.resize(text.find_last_not_of('\n') + 1);
  return text.substr(text.find_last_of('\n') + 1);
}

struct Ends {
  int answer;
  const FileDescriptor& words;
};

[[noreturn]] void workApart(const std::function<std::string()>& work, const Ends& ends,
                            pid_t parent) {
  const int pipe = ends.answer;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  beQuiet(ends.words);
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

WorkStopped::WorkStopped(int numberOfSignal, std::string wordsSaid)
    : MachineError("the library that changes hives stopped at its content"),
      signal(numberOfSignal),
      lastWords(std::move(wordsSaid)) {}

std::string runApart(const std::function<std::string()>& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) refuse(errno);
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const FileDescriptor words(memfd_create("words", MFD_CLOEXEC));
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) refuse(errno);
  if (child == 0) workApart(work, {.answer = writing.get(), .words = words}, parent);
  writing = FileDescriptor();
  const std::string answer = readAnswer(reading.get());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || answer.empty()) {
    throw WorkStopped(WIFSIGNALED(status) ? WTERMSIG(status) : 0, lastLineOf(words));
  }
  if (answer.front() == isRefusal) throw MachineError(answer.substr(1));
  return answer.substr(1);
}

}  // namespace zelvreg::machine
