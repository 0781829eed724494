#include "images/KeeperWork.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <tuple>

#include "machine/base/FileDescriptor.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::images {
namespace {

using machine::FileDescriptor;

constexpr int noSuchProgram = 127;
// Of a program's words no more than this is of use.
constexpr std::size_t mostOutput = 16U << 20;

// Where nobody has other groups, the kernel refuses even to give them up, and a driver that finds
// its privileges not dropped gives up itself.
void letGroupsBeGivenUp() {
  std::array<sock_filter, 4> rules{{
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_setgroups, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  }};
  const sock_fprog filter{.len = rules.size(), .filter = rules.data()};
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
}

struct Streams {
  int input;
  int output;
  int complaint;
};

[[noreturn]] void become(std::vector<std::string> words, const Streams& streams) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  dup2(streams.input, STDIN_FILENO);
  dup2(streams.output, STDOUT_FILENO);
  dup2(streams.complaint, STDERR_FILENO);
  execvp(arguments.front(), arguments.data());
  _exit(noSuchProgram);
}

std::string contentOf(const FileDescriptor& file) {
  const off_t size = lseek(file.get(), 0, SEEK_END);
  std::string text(std::min(static_cast<std::size_t>(std::max<off_t>(size, 0)), mostOutput), '\0');
  text.resize(machine::readAt(file, 0, text.data(), text.size()));
  return text;
}

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = text.find('\0');
    words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end, text.size() - 1) + 1);
  }
  return words;
}

class KeeperWork {
 public:
  explicit KeeperWork(KeeperStart given)
      : start(std::move(given)), nowhere(open("/dev/null", O_RDWR | O_CLOEXEC)) {}

  void go() {
    beAlone();
    for (const Channel& channel : start.daemons) {
      daemons.push_back(spawn(start.daemonWords, {channel.get(), channel.get(), nowhere.get()}));
    }
    start.daemons.clear();
    bool isAskedToEnd = false;
    while (!isAskedToEnd) {
      const auto message = start.connection.receiveMessage();
      if (!message || message->empty()) break;
      isAskedToEnd = message->front() == request::end;
      answer(message->front(), message->substr(1));
    }
    const std::string complaint = takeApart();
    if (isAskedToEnd) {
      std::ignore = start.connection.sendMessage(complaint);
    }
  }

 private:
  // Holds nothing of the process that it comes from, and no signal of its terminal reaches it.
  void beAlone() {
    setsid();
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      dup2(nowhere.get(), stream);
    }
    std::vector<int> kept{nowhere.get(), start.connection.get()};
    for (const Channel& channel : start.daemons) {
      kept.push_back(channel.get());
    }
    std::ranges::sort(kept);
    unsigned from = STDERR_FILENO + 1;
    for (const int descriptor : kept) {
      if (from < static_cast<unsigned>(descriptor)) {
        syscall(SYS_close_range, from, descriptor - 1, 0);
      }
      from = static_cast<unsigned>(descriptor) + 1;
    }
    syscall(SYS_close_range, from, ~0U, 0);
    if (start.hasOwnUsers) {
      letGroupsBeGivenUp();
    }
  }

  static pid_t spawn(std::vector<std::string> words, const Streams& streams) {
    const pid_t child = fork();
    if (child == 0) become(std::move(words), streams);
    return child;
  }

  void answer(char what, const std::string& text) {
    if (what == request::make) {
      std::ignore = start.connection.sendMessage(makeFile(text));
    } else if (what == request::keep) {
      removed.clear();
    } else if (what == request::run || what == request::mount) {
      const int status = runToItsEnd(wordsOf(text));
      mounted += what == request::mount && status == 0 ? 1 : 0;
    }
  }

  // A file that is there is not touched. This process makes it, so that it is never made and not
  // known to be removed.
  std::string makeFile(const std::string& file) {
    const FileDescriptor made(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!made.isOpen()) return std::strerror(errno);
    removed = file;
    return "";
  }

  int runToItsEnd(const std::vector<std::string>& words) {
    const FileDescriptor output(memfd_create("output", MFD_CLOEXEC));
    const FileDescriptor complaint(memfd_create("complaint", MFD_CLOEXEC));
    const int status = waitForEnd(spawn(words, {nowhere.get(), output.get(), complaint.get()}));
    std::ignore = start.connection.sendMessage(std::to_string(status));
    std::ignore = start.connection.sendMessage(contentOf(output));
    std::ignore = start.connection.sendMessage(contentOf(complaint));
    return status;
  }

  // A program may wait for something that never comes. It is not waited for when the process that
  // asked for it is gone.
  int waitForEnd(pid_t child) const {
    if (child < 0) return noSuchProgram;
    const FileDescriptor running(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    std::array<pollfd, 2> awaited{{{.fd = running.get(), .events = POLLIN, .revents = 0},
                                   {.fd = start.connection.get(), .events = 0, .revents = 0}}};
    while (poll(awaited.data(), awaited.size(), -1) < 0 && errno == EINTR) {
    }
    if (awaited[0].revents == 0) {
      kill(child, SIGKILL);
    }
    int ended = 0;
    while (waitpid(child, &ended, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(ended) ? WEXITSTATUS(ended) : noSuchProgram;
  }

  // Drivers write what they still hold when their file systems are unmounted, and daemons when they
  // are asked to end; each needs those before it.
  std::string takeApart() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(start.folder, error)) {
      if (entry.is_directory(error) && umount2(entry.path().c_str(), 0) != 0) {
        umount2(entry.path().c_str(), MNT_DETACH);
      }
    }
    std::string complaint;
    reapUntil([this] { return mounted <= 0; }, complaint);
    std::ranges::reverse(daemons);
    for (const pid_t& daemon : daemons) {
      if (daemon != gone) kill(daemon, SIGTERM);
      reapUntil([&daemon] { return daemon == gone; }, complaint);
    }
    if (!removed.empty()) {
      unlink(removed.c_str());
    }
    return complaint;
  }

  // Waits for the ends of processes, but not for ever: whoever is left then ends with this one.
  template <typename IsDone>
  void reapUntil(const IsDone& isDone, std::string& complaint) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isDone() && std::chrono::steady_clock::now() < end) {
      int status = 0;
      const pid_t ended = waitpid(-1, &status, WNOHANG);
      if (ended < 0 && errno != EINTR) break;
      if (ended > 0) {
        noteEnd(ended, status, complaint);
      } else {
        poll(nullptr, 0, 1);
      }
    }
    if (!isDone()) {
      complaint = "not everything that held it came to its end";
    }
  }

  void noteEnd(pid_t ended, int status, std::string& complaint) {
    const auto daemon = std::ranges::find(daemons, ended);
    if (daemon == daemons.end()) {
      --mounted;
    } else {
      *daemon = gone;
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
      complaint = "not everything could be written into it";
    }
  }

  static constexpr pid_t gone = -1;
  // Enough for a driver to write what it still holds.
  static constexpr std::chrono::seconds patience{60};

  KeeperStart start;
  FileDescriptor nowhere;
  std::vector<pid_t> daemons;
  int mounted = 0;
  std::string removed;
};

}  // namespace

void workAsKeeper(KeeperStart start) {
  KeeperWork(std::move(start)).go();
  _exit(0);
}

}  // namespace zelvreg::images
