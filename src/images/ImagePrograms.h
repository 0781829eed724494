// The programs of others that an image needs.
#ifndef ZELVREG_IMAGES_IMAGE_PROGRAMS_H
#define ZELVREG_IMAGES_IMAGE_PROGRAMS_H

#include <string>
#include <string_view>

namespace zelvreg::images {

// One line that names the programs that are in none of these folders, which are separated by
// colons, and the packages that hold them; empty if all are there.
std::string missingPrograms(std::string_view folders);

// The same for the search path of this process.
std::string missingPrograms();

// One line that says why this process cannot use the kernel's support, and what to do; empty if it
// can.
std::string missingKernelSupport();

// Throws MachineError unless the programs and the kernel's support are there.
void requirePrograms();

}  // namespace zelvreg::images

#endif
