// How an automatic scan reports to the main window of the suite.
#ifndef ZELVREG_SHELL_SUITE_BRIDGE_H
#define ZELVREG_SHELL_SUITE_BRIDGE_H

#include <string>

namespace zelvreg {

struct Form42;

// Puts the text into a block of shared memory, in the computer's code page with missing characters
// replaced. Tells the suite's window, with the size in bytes. Ends the process if there is no such
// window.
void parentBridge(const Form42& form, const std::string& text);

// The tick: "r|" and the number of findings so far.
void Timer2_Timer(Form42& form);

}  // namespace zelvreg

#endif
