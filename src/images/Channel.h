// Messages between this process and one that it has started.
#ifndef ZELVREG_IMAGES_CHANNEL_H
#define ZELVREG_IMAGES_CHANNEL_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "machine/base/FileDescriptor.h"

namespace zelvreg::images {

// One end of a connection. The other end is told when this one is closed, however its process ends.
class Channel {
 public:
  explicit Channel(machine::FileDescriptor end) : descriptor(std::move(end)) {}
  // Two ends that are connected. Throws MachineError.
  static std::pair<Channel, Channel> pair();

  // False if the other end is closed.
  [[nodiscard]] bool send(std::string_view bytes) const;
  // Up to and without this character, none if the other end was closed before it.
  std::optional<std::string> receiveUpTo(char last);

  // A message of any bytes, received whole, or not at all if the other end was closed.
  [[nodiscard]] bool sendMessage(std::string_view message) const;
  std::optional<std::string> receiveMessage();

  [[nodiscard]] int get() const { return descriptor.get(); }
  void close() { descriptor = machine::FileDescriptor(); }

 private:
  bool receiveMore();

  machine::FileDescriptor descriptor;
  std::string received;
};

}  // namespace zelvreg::images

#endif
