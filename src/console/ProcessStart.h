// What the console program does before it does anything else.
#ifndef ZELVREG_CONSOLE_PROCESS_START_H
#define ZELVREG_CONSOLE_PROCESS_START_H

namespace zelvreg::console {

// On Windows libraries are loaded from the system's folder only. Elsewhere a file that is cut short
// while it is read, or that cannot grow, ends the process with one line.
void beginProcess();

}  // namespace zelvreg::console

#endif
