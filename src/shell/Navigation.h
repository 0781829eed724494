// Moving between the pages, and the buttons that click other buttons.
#ifndef ZELVREG_SHELL_NAVIGATION_H
#define ZELVREG_SHELL_NAVIGATION_H

#include <cstddef>

namespace zelvreg {

class Button;
struct Form42;

// The options page and the exclusions page.
void orubutton4_Click(Form42& form);
void chameleonButton7_Click(Form42& form);

// Next and Back through options, exclusions, scan; they do nothing at the ends.
void chameleonButton10_Click(Form42& form);
void chameleonButton11_Click(Form42& form);

// Opens the options page, not a search.
void cmd_search_Click(Form42& form);
void cmd_exclud_Click(Form42& form);

// The tool bar's buttons by their index, from 1; separators do nothing.
void Toolbar1_ButtonClick(Form42& form, std::size_t index);
// The command that a button of the tool bar stands for; null for a gap or another number.
const Button* commandOfToolbar(const Form42& form, std::size_t index);

// Stores the ticks and ends the process.
void chameleonButton4_Click(Form42& form);

// Starts the search. Its progress and its Cancel button are those of a scan. Nothing happens while
// either runs. A cancel from before does not count.
void cmdFind_Click(Form42& form);

void View1_ItemClick(Form42& form, std::size_t row);
// Shows all results if the row last clicked has problems and no scan runs.
void View1_DblClick(Form42& form);

}  // namespace zelvreg

#endif
