// What a program with windows does before it does anything else.
#ifndef ZELVREG_DESKTOP_PROCESS_START_H
#define ZELVREG_DESKTOP_PROCESS_START_H

namespace zelvreg::desktop {

// Libraries are loaded from the system's folder only, and the system's controls can be made.
void beginProcess();

}  // namespace zelvreg::desktop

#endif
