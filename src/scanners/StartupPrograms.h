// Row 14: programs that run at log-on but no longer exist.
#ifndef ZELVREG_SCANNERS_STARTUP_PROGRAMS_H
#define ZELVREG_SCANNERS_STARTUP_PROGRAMS_H

namespace zelvreg {

struct Form42;

// Walks the four Run keys. A command is tested as FilePath cuts it. Its variables are not expanded.
// Once started, it runs to its end.
void runMRU(Form42& form);

}  // namespace zelvreg

#endif
