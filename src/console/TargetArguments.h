// The options that name the computer to work on.
#ifndef ZELVREG_CONSOLE_TARGET_ARGUMENTS_H
#define ZELVREG_CONSOLE_TARGET_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "console/CommandLine.h"

namespace zelvreg::console {

// As a user's name it stands for all users.
inline constexpr const char* everybody = "all";

// On Windows the program works on the computer that it runs on, and only all users can be named.
struct TargetArguments {
  std::vector<std::string> drives;
  std::string missingDrives = "unknown";

  // What the program is called by, and how its usage names the computer, with a blank in front.
  static const char* program();
  static const char* usage();
  // How a reader would call a command, for examples.
  static std::string callOf(const std::string& command);
  // How to name the computer, as a line of a footer; empty on Windows.
  static const char* advice();
  // Where to read on, as the footer of a help.
  static const char* manual();

  // `target` outlives the parsing.
  void addTo(CLI::App& app, Target& target);
  // Throws UsageError if no computer is named, or a drive is wrong.
  void applyTo(Target& target) const;
  // The same for the images that a command names itself. Throws UsageError if a computer is named
  // as well, or anything that would not be true of all images.
  void applyToImages(Target& target) const;
  // Decides whether an image may be written, when the command is known. Throws UsageError unless it
  // is said where a command writes that changes an image, and not said for one that does not.
  static void decideWriting(Options& options);

 private:
  std::vector<CLI::Option*> ofOneComputer;  // that many images do not take
  std::vector<CLI::Option*> ofDisks;        // that a machine folder does not take
};

}  // namespace zelvreg::console

#endif
