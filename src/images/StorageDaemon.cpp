#include "images/StorageDaemon.h"

#include <tuple>

#include "machine/base/MachineError.h"

namespace zelvreg::images {

using Json = nlohmann::json;
using machine::MachineError;

std::vector<std::string> StorageDaemon::words() {
  return {"qemu-storage-daemon", "--chardev", "stdio,id=control", "--monitor", "chardev=control"};
}

StorageDaemon::StorageDaemon(Channel& daemon) : connection(daemon) {
  heard();  // its greeting
  execute("qmp_capabilities", Json::object());
}

Json StorageDaemon::heard() {
  const auto line = connection.receiveUpTo('\n');
  Json message = line ? Json::parse(*line, nullptr, false) : Json();
  if (!message.is_object()) {
    throw MachineError("qemu-storage-daemon was ended; run this again");
  }
  return message;
}

void StorageDaemon::execute(std::string_view command, const Json& arguments) {
  const Json request{{"execute", command}, {"arguments", arguments}};
  std::ignore = connection.send(request.dump() + "\n");
  // What happens on its side is told in between.
  Json answer = heard();
  while (answer.contains("event")) {
    answer = heard();
  }
  if (answer.contains("error")) {
    throw MachineError(answer["error"].value("desc", "qemu-storage-daemon refuses it"));
  }
}

void StorageDaemon::add(const Json& node) { execute("blockdev-add", node); }

void StorageDaemon::show(std::string_view node, const std::filesystem::path& file,
                         bool canBeWritten) {
  execute("block-export-add", {{"type", "fuse"},
                               {"id", node},
                               {"node-name", node},
                               {"mountpoint", file.string()},
                               {"writable", canBeWritten}});
}

}  // namespace zelvreg::images
