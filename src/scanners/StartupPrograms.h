// Row 14: programs that are started at log-on but are gone.
#ifndef ZELVREG_SCANNERS_STARTUP_PROGRAMS_H
#define ZELVREG_SCANNERS_STARTUP_PROGRAMS_H

namespace zelvreg {

struct Form42;

// Walks the four Run keys. A command is tested as FilePath cuts it, with its variables unexpanded.
// Runs to its end once started.
void runMRU(Form42& form);

}  // namespace zelvreg

#endif
