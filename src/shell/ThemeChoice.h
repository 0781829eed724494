// Whether the windows are light or dark: as Windows is, or as the user has chosen.
#ifndef ZELVREG_SHELL_THEME_CHOICE_H
#define ZELVREG_SHELL_THEME_CHOICE_H

namespace zelvreg {

struct Form42;

// Fills cboTheme and takes over the stored choice. From then on a choice there is stored.
void loadThemeChoice(Form42& form);

// Whether the windows are to be dark now. Windows knows since version 10 what its user wants of
// programs; an older one wants them light.
bool isDarkWanted(const Form42& form);

}  // namespace zelvreg

#endif
