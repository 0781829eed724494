// A process that starts programs for this one, and takes everything apart again when this one ends,
// however it ends.
#ifndef ZELVREG_IMAGES_KEEPER_H
#define ZELVREG_IMAGES_KEEPER_H

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "images/Channel.h"

namespace zelvreg::images {

// What a program said, and the status with which it ended; 127 if there is no such program.
struct ProgramEnd {
  int status = 0;
  std::string output;
  std::string complaint;
};

// It and what it starts are alone: they see no other process, have no network, and end with it.
// When the keeper goes, or this process does, what is mounted below the folder is unmounted, then
// the daemons are ended in the opposite order of their numbers, and then the file of make() is
// removed unless keep() was called. If its process is killed, all others end at once, and the file
// is removed when the keeper goes.
class Keeper {
 public:
  static constexpr std::size_t daemonCount = 2;

  // Starts the daemons, which are the same program and are each connected to this process by
  // standard input and output; without words there are none. The folder is one of ownMountFolder().
  // Throws MachineError.
  Keeper(std::filesystem::path folder, const std::vector<std::string>& daemonWords);
  ~Keeper();
  Keeper(const Keeper&) = delete;
  Keeper& operator=(const Keeper&) = delete;

  [[nodiscard]] Channel& daemon(std::size_t number) { return daemons.at(number); }

  // Runs a program to its end. It is looked for on the search path. Throws MachineError if the
  // keeper is gone.
  ProgramEnd run(const std::vector<std::string>& words);

  // The same with one that leaves a daemon behind, which ends when its file system is unmounted.
  // Nobody may hold a file of that open then.
  ProgramEnd mount(const std::vector<std::string>& words);

  // Makes a new, empty file. Throws MachineError, which says only why it cannot be made.
  void make(const std::filesystem::path& file);
  void keep();

  // Takes everything apart and ends. Throws MachineError if a daemon could not write everything.
  void finish();

 private:
  // The first end of the connection is this process's, the second one the keeper's.
  Keeper(std::filesystem::path folder, const std::vector<std::string>& daemonWords,
         std::pair<Channel, Channel> ends);

  ProgramEnd ask(char what, const std::vector<std::string>& words);
  void tell(char what, std::string_view text);
  void hearComplaint();
  [[noreturn]] static void isGone();

  Channel connection;
  std::vector<Channel> daemons;
  pid_t process = 0;
  std::filesystem::path unfinished;  // what make() has made, until keep()
};

}  // namespace zelvreg::images

#endif
