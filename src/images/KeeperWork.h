// What the keeper's process does.
#ifndef ZELVREG_IMAGES_KEEPER_WORK_H
#define ZELVREG_IMAGES_KEEPER_WORK_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "images/Channel.h"

namespace zelvreg::images {

// What the keeper is asked for: one of these letters, and what belongs to it.
namespace request {
inline constexpr char run = 'r';    // words, with a NUL between
inline constexpr char mount = 'm';  // the same
inline constexpr char make = 'f';   // a new file, which is removed at the end
inline constexpr char keep = 'k';   // not to remove it
inline constexpr char end = 'e';    // to take everything apart
}  // namespace request

// The answer to the first two, each a message: the status in digits, the output, the complaint. To
// `make` and `end`: the complaint.

struct KeeperStart {
  std::filesystem::path folder;
  bool hasOwnUsers;  // see OwnMounts.h
  std::vector<std::string> daemonWords;
  Channel connection;
  std::vector<Channel> daemons;
};

// Does it all and ends the process. It is the first one of its own view of the processes.
[[noreturn]] void workAsKeeper(KeeperStart start);

}  // namespace zelvreg::images

#endif
