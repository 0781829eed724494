// Three scanners for COM classes whose server is an executable that is gone. No row runs them. They
// count in categoryFound alone, not in the running total.
#ifndef ZELVREG_SCANNERS_SERVER_PROGRAMS_H
#define ZELVREG_SCANNERS_SERVER_PROGRAMS_H

namespace zelvreg {

struct Form42;

// Servers of the merged classes root. A server key with an empty default value is reported too.
// Sets categoryFound to 0 first.
void Command14(Form42& form);

// Servers of the machine's classes. Rows get the location, the text and the kind; root and key stay
// empty. Sets the attributes of each program to archive only.
void Command18(Form42& form);

// Executables that hold the toolbox bitmap of a class; each finding counts twice. Sets the
// attributes of each program to archive only.
void Command19(Form42& form);

}  // namespace zelvreg

#endif
