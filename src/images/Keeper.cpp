#include "images/Keeper.h"

#include <sched.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>

#include "images/KeeperWork.h"
#include "images/OwnMounts.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

using machine::MachineError;

// Like fork(), but the child is the first process of its own view, so that all others in it end
// with it, and it has no network.
pid_t forkAlone() {
  return static_cast<pid_t>(
      syscall(SYS_clone, CLONE_NEWPID | CLONE_NEWNET | SIGCHLD, nullptr, nullptr, nullptr, 0));
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : std::string(1, '\0')) + word;
  }
  return text;
}

}  // namespace

Keeper::Keeper(std::filesystem::path folder, const std::vector<std::string>& daemonWords)
    : Keeper(std::move(folder), daemonWords, Channel::pair()) {}

Keeper::Keeper(std::filesystem::path folder, const std::vector<std::string>& daemonWords,
               std::pair<Channel, Channel> ends)
    : connection(std::move(ends.first)) {
  std::vector<Channel> theirs;
  const std::size_t count = daemonWords.empty() ? 0 : daemonCount;
  for (std::size_t number = 0; number < count; ++number) {
    auto [near, far] = Channel::pair();
    daemons.push_back(std::move(near));
    theirs.push_back(std::move(far));
  }
  const bool needsOwnUsers = hasOwnUsers();
  process = forkAlone();
  if (process < 0) {
    throw MachineError(std::string("no process can be started for an image: ") +
                       std::strerror(errno) + "; mount the disk and give it with --offline");
  }
  if (process == 0) {
    workAsKeeper({.folder = std::move(folder),
                  .hasOwnUsers = needsOwnUsers,
                  .daemonWords = daemonWords,
                  .connection = std::move(ends.second),
                  .daemons = std::move(theirs)});
  }
}

Keeper::~Keeper() {
  connection.close();
  int status = 0;
  while (process > 0 && waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  // One that was killed could not remove it.
  if (WIFSIGNALED(status) && !unfinished.empty()) {
    unlink(unfinished.c_str());
  }
}

void Keeper::isGone() {
  throw MachineError("the process that holds the image mounted was ended; run this again");
}

void Keeper::tell(char what, std::string_view text) {
  if (!connection.sendMessage(what + std::string(text))) isGone();
}

ProgramEnd Keeper::ask(char what, const std::vector<std::string>& words) {
  tell(what, joined(words));
  const auto status = connection.receiveMessage();
  auto output = connection.receiveMessage();
  auto complaint = connection.receiveMessage();
  if (!complaint) isGone();
  ProgramEnd end{.output = std::move(*output), .complaint = std::move(*complaint)};
  std::from_chars(status->data(), status->data() + status->size(), end.status);
  return end;
}

ProgramEnd Keeper::run(const std::vector<std::string>& words) { return ask(request::run, words); }

ProgramEnd Keeper::mount(const std::vector<std::string>& words) {
  return ask(request::mount, words);
}

void Keeper::make(const std::filesystem::path& file) {
  tell(request::make, file.string());
  hearComplaint();
  unfinished = file;
}

void Keeper::keep() {
  unfinished.clear();
  tell(request::keep, "");
}

void Keeper::hearComplaint() {
  const auto complaint = connection.receiveMessage();
  if (!complaint) isGone();
  if (!complaint->empty()) throw MachineError(*complaint);
}

void Keeper::finish() {
  tell(request::end, "");
  hearComplaint();
}

}  // namespace zelvreg::images
