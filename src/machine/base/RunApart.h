// Work in a process of its own, so that a library that ends the process ends that one alone.
#ifndef ZELVREG_MACHINE_BASE_RUN_APART_H
#define ZELVREG_MACHINE_BASE_RUN_APART_H

#include <functional>
#include <string>

namespace zelvreg::machine {

// Gives what the work gives, which sees this process's memory as it is now and changes nothing in
// it; files that it writes are written. MachineError of the work is thrown here; one is thrown,
// too, if the work ends in any other way. The other process does not outlive this one, and holds
// the locks of this one as long as it works.
std::string runApart(const std::function<std::string()>& work);

}  // namespace zelvreg::machine

#endif
