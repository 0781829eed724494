#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "DiskMaker.h"
#include "MachineMaker.h"

namespace {

using namespace zelvreg::bench;

constexpr int failed = 2;

int fail(const std::string& message) {
  std::cerr << "zelvreg-make-machine: " << message.substr(0, message.find('\n')) << "\n";
  return failed;
}

}  // namespace

int main(int count, char** arguments) {
  std::string folder;
  std::string labelFile;
  MachineSize size;
  bool isDisk = false;
  try {
    CLI::App app("Makes a folder or a disk that stands for a Windows computer, for measuring.",
                 "zelvreg-make-machine");
    app.add_option("folder", folder, "a new or empty folder")->required();
    auto* kind = app.add_option_group("what is made")->require_option(1, 2);
    auto* keys = kind->add_option("--keys", size.keys, "a machine folder with so many keys")
                     ->check(CLI::Range(fewestKeys, mostKeys));
    kind->add_flag("--disk", isDisk,
                   "a disk with a hive SOFTWARE, for zelvreg --offline: with --keys that of such a "
                   "machine, else one of more than 64 MB");
    app.add_option("--seed", size.seed, "another number gives other content")
        ->capture_default_str();
    app.add_option("--labels", labelFile,
                   "write here which references are dead, alive, or cannot be decided");
    try {
      app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
      std::cout << app.help();
      return 0;
    }
    if (isDisk) {
      const DiskSize large{.seed = size.seed};
      const DiskSize ofMachine{.machineKeys = size.keys, .interfaces = 0, .seed = size.seed};
      makeDisk(folder, keys->count() > 0 ? ofMachine : large);
      return 0;
    }
    if (labelFile.empty()) {
      makeMachine(folder, size);
      return 0;
    }
    LabelFile labels(labelFile);
    makeMachine(folder, size, [&](const Label& label) { labels.add(label); });
    labels.finish();
    return 0;
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
