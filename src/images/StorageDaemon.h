// The daemon that shows what is in an image as plain files, told in its own language what to show.
#ifndef ZELVREG_IMAGES_STORAGE_DAEMON_H
#define ZELVREG_IMAGES_STORAGE_DAEMON_H

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "images/Channel.h"

namespace zelvreg::images {

class StorageDaemon {
 public:
  // The program and its words, with standard input and output connected to the channel.
  static std::vector<std::string> words();

  // Waits until it can be told something. Throws MachineError if it has ended.
  explicit StorageDaemon(Channel& daemon);

  // Adds a node, which is described with its name. Throws MachineError: the daemon's own words.
  void add(const nlohmann::json& node);

  // Shows a node as this file, which must be there.
  void show(std::string_view node, const std::filesystem::path& file, bool canBeWritten);

 private:
  void execute(std::string_view command, const nlohmann::json& arguments);
  nlohmann::json heard();

  Channel& connection;
};

}  // namespace zelvreg::images

#endif
