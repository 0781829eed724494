// The options of the command that scans many images.
#ifndef ZELVREG_CONSOLE_IMAGES_ARGUMENTS_H
#define ZELVREG_CONSOLE_IMAGES_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <string>

#include "console/CommandLine.h"

namespace zelvreg::console {

// Where no image can be scanned, the command is known only so that it can be refused with a reason.
class ImagesArguments {
 public:
  // The group of commands that the help shows it in; empty where it shows none.
  static const char* group();

  // `options` outlives the parsing.
  void addTo(CLI::App& images, Options& options);
  // Throws UsageError if a category does not exist, or the time is wrong, or no image
  // can be scanned on this system.
  void applyTo(Options& options) const;

 private:
  std::string only;
  double seconds = 0;
  const CLI::Option* onlyOption = nullptr;
  const CLI::Option* timeOption = nullptr;
};

}  // namespace zelvreg::console

#endif
