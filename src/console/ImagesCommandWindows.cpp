#include <stdexcept>

#include "console/ImagesCommand.h"

namespace zelvreg::console {

bool canScanImages() { return false; }

int scanImages(const Options& /*options*/, std::istream& /*input*/, const Streams& /*streams*/) {
  throw std::logic_error("the command line refuses this command");
}

}  // namespace zelvreg::console
