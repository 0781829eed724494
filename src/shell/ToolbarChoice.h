// Whether the commands are shown as the small buttons of the tool bar.
#ifndef ZELVREG_SHELL_TOOLBAR_CHOICE_H
#define ZELVREG_SHELL_TOOLBAR_CHOICE_H

namespace zelvreg {

struct Form42;

// Takes over the stored choice.
void loadToolbarChoice(Form42& form);
// Stores what the user has chosen.
void ToolbarBox_Click(Form42& form);

}  // namespace zelvreg

#endif
