// The command that scans many images, each in a process of its own and into a result of its own.
#ifndef ZELVREG_CONSOLE_IMAGES_COMMAND_H
#define ZELVREG_CONSOLE_IMAGES_COMMAND_H

#include <istream>

#include "console/Commands.h"

namespace zelvreg::console {

// Whether there are images on this system; Windows works on the computer that it runs on.
bool canScanImages();

// Scans the images that were named, one after the other, but for those that have a newer result,
// and says one line of each. `input` is read where a list is to come from it. Gives nothingFound if
// each has a result, else `failed`. It can be ended at any time and called again: what has a result
// then keeps it. Throws std::runtime_error with one line if no image could be scanned here, if two
// would share a result, or if the user has stopped it.
int scanImages(const Options& options, std::istream& input, const Streams& streams);

}  // namespace zelvreg::console

#endif
