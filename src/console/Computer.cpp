#include "console/Computer.h"

namespace zelvreg::console {

Access accessFor(Command command) {
  switch (command) {
    case Command::ListUndo:
    case Command::ListExclusions:
    case Command::ListLanguages:
      return Access::Shared;
    default:
      return Access::Alone;
  }
}

}  // namespace zelvreg::console
