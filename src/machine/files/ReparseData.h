// What Windows keeps of a link, where the disk shows it.
#ifndef ZELVREG_MACHINE_FILES_REPARSE_DATA_H
#define ZELVREG_MACHINE_FILES_REPARSE_DATA_H

#include <string>

namespace zelvreg::machine {

// Whether a link of this system is one of Windows that leads to another volume than this drive, by
// its upper-case letter. A driver of NTFS knows no letters: if it finds the names of the target on
// its own volume, it shows them there.
bool leadsElsewhere(const std::string& link, char drive);

}  // namespace zelvreg::machine

#endif
