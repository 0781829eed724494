// The language of the main form: the picker, the stored choice, the captions.
#ifndef ZELVREG_SHELL_LANGUAGES_H
#define ZELVREG_SHELL_LANGUAGES_H

#include <cstddef>

#include "widgets/Control.h"

namespace zelvreg {

struct Form42;

// Fills the picker from the list of languages; without the list it keeps its one entry.
void loadavlang(Form42& form);

// Reads the stored choice and gives its font and captions to the form. Without the file of that
// language the form keeps its captions.
void changelangoru(Form42& form);

// The two parts of this that every form of the program needs: the stored choice, and the font that
// the suite's settings name, in the language's charset.
void readLanguageChoice(Form42& form);
Font languageFont(const Form42& form);

// Finds out whether the current language matches the system's code page, which decides how menus
// are drawn.
void compareWithSystem(Form42& form);

// Lists the categories again in the language of the form, with the stored ticks. The status icons
// are lost.
void changeviewlang(Form42& form);

// Chooses the language of a picker entry, counted from 0, for the program and for its next start.
void lbllanguage_Click(Form42& form, std::size_t entry);
// Color the picker while the mouse moves: over an entry, and over none.
void lbllanguage_MouseMove(Form42& form, std::size_t entry);
void pictrlang_MouseMove(Form42& form);
// Shows or hides the picker.
void chameleonButton13_Click(Form42& form);

// Creates the sixteen rows of View1.
void createCategoryRows(Form42& form);

}  // namespace zelvreg

#endif
