// The exclusion dialog and the About dialog: their captions, their colors, and closing them.
#ifndef ZELVREG_SHELL_SMALL_FORMS_H
#define ZELVREG_SHELL_SMALL_FORMS_H

namespace zelvreg {

struct Form42;

// Binds the clicks of both forms.
void bindSmallForms(Form42& form);

// The load of the dialog in which an exclusion is typed, before it is shown.
void Form1_Load(Form42& form);

// Hides the main form and shows the About dialog until it is closed.
void chameleonButton18_Click(Form42& form);

}  // namespace zelvreg

#endif
