// Bringing up the main form as state, ready for a scan.
#ifndef ZELVREG_SHELL_START_UP_H
#define ZELVREG_SHELL_START_UP_H

#include "form/Form42.h"

namespace zelvreg {

// Binds every entry point of the form to its procedure. The form must outlive the presses.
void bindClicks(Form42& form);

// The load of the form: binds the clicks, finds out the system, applies the language, creates the
// rows with the ticks that were kept. No step can stop it.
void Form_Load(Form42& form);

}  // namespace zelvreg

#endif
