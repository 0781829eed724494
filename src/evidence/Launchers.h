// Programs that only open what their arguments name. A command is as alive as that.
#ifndef ZELVREG_EVIDENCE_LAUNCHERS_H
#define ZELVREG_EVIDENCE_LAUNCHERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

enum class TargetIs : std::uint8_t {
  Command,       // another command line, or a path
  Library,       // a file that the system loads, ".dll" added
  Product,       // of the system's installer, by its code
  ServiceGroup,  // of the service host
  Application,   // a component's surrogate, by its code
  Unclear,       // it cannot be told from the text
};

struct LaunchTarget {
  TargetIs kind;
  std::string text;
};

// What a program is told to open. std::nullopt for any other program, and for a launcher without
// an argument, which is then itself what the command names. `program` may be a path.
std::optional<LaunchTarget> launchTarget(std::string_view program, std::string_view arguments);

}  // namespace zelvreg

#endif
