// The Windows that the program runs on.
#ifndef ZELVREG_CONSOLE_RUNNING_COMPUTER_H
#define ZELVREG_CONSOLE_RUNNING_COMPUTER_H

#include <memory>

#include "console/ActingProfile.h"
#include "console/Computer.h"

namespace zelvreg::console {

// As Computer::open() does; `calls` load the hives of those who are not signed in.
std::unique_ptr<Computer> openRunningComputer(const Target& target, Access access,
                                              const ProfileCalls& calls);

}  // namespace zelvreg::console

#endif
