// The dialog of one exclusion and that about the program: their captions, colours and ends.
#ifndef ZELVREG_SHELL_SMALL_FORMS_H
#define ZELVREG_SHELL_SMALL_FORMS_H

#include "form/Form42.h"

namespace zelvreg {

// Binds the presses of both forms.
void bindSmallForms(Form42& form);

// The load of the dialog in which an exclusion is typed, before it is shown.
void Form1_Load(Form42& form);

// Hides the main form and opens the dialog about the program until it is closed.
void chameleonButton18_Click(Form42& form);

}  // namespace zelvreg

#endif
