#include "images/Channel.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

#include "machine/base/MachineError.h"

namespace zelvreg::images {

using machine::FileDescriptor;

std::pair<Channel, Channel> Channel::pair() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw machine::MachineError(std::string("no connection can be made: ") + std::strerror(errno));
  }
  return {Channel(FileDescriptor(ends[0])), Channel(FileDescriptor(ends[1]))};
}

bool Channel::send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

bool Channel::receiveMore() {
  std::array<char, 4096> buffer{};
  for (;;) {
    const ssize_t got = read(get(), buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    received.append(buffer.data(), static_cast<std::size_t>(got));
    return true;
  }
}

std::optional<std::string> Channel::receiveUpTo(char last) {
  std::size_t end = received.find(last);
  while (end == std::string::npos) {
    if (!receiveMore()) return std::nullopt;
    end = received.find(last);
  }
  std::string text = received.substr(0, end);
  received.erase(0, end + 1);
  return text;
}

// Its size stands in front of a message.
bool Channel::sendMessage(std::string_view message) const {
  return send(std::to_string(message.size()) + ":") && send(message);
}

std::optional<std::string> Channel::receiveMessage() {
  const std::optional<std::string> digits = receiveUpTo(':');
  if (!digits) return std::nullopt;
  std::size_t size = 0;
  std::from_chars(digits->data(), digits->data() + digits->size(), size);
  while (received.size() < size) {
    if (!receiveMore()) return std::nullopt;
  }
  std::string message = received.substr(0, size);
  received.erase(0, size);
  return message;
}

}  // namespace zelvreg::images
