// Loads the main form as state, ready for a scan.
#ifndef ZELVREG_SHELL_START_UP_H
#define ZELVREG_SHELL_START_UP_H

namespace zelvreg {

struct Form42;

// Binds every entry point of the form to its procedure. The form must outlive the clicks.
void bindClicks(Form42& form);

// The load of the form: binds the clicks, detects the system, applies language and color, creates
// the rows with the stored ticks, runs the scan of an automatic mode, shows the options page. A
// step that fails is skipped. An automatic mode ends the process from here.
void Form_Load(Form42& form);

}  // namespace zelvreg

#endif
