// Four scanners that no row runs. They are kept because the system has them, behind buttons that
// are never shown; nothing else calls them. They count in categoryFound alone, not in the running
// total.
#ifndef ZELVREG_SCANNERS_KEPT_SCANNERS_H
#define ZELVREG_SCANNERS_KEPT_SCANNERS_H

namespace zelvreg {

struct Form42;

// COM servers of the merged classes root whose program is missing. A server key with an
// empty default value is reported too. Sets categoryFound to 0 first.
void Command14(Form42& form);

// Type libraries: reports the 32-bit file of the first numeric version and first locale of each
// library when it is gone, and sets the attributes of those that exist to archive only.
void Command16(Form42& form);

// COM servers of the machine's classes whose program is missing. Rows get the location, the text
// and the kind; root and key stay empty. Sets the attributes of each program to archive only.
void Command18(Form42& form);

// Executables that hold the toolbox bitmap of a class; each finding counts twice. Sets the
// attributes of each program to archive only.
void Command19(Form42& form);

}  // namespace zelvreg

#endif
