// The exclusions page and what the exclusions do to the results.
#ifndef ZELVREG_EXCLUSIONS_EXCLUSION_LIST_H
#define ZELVREG_EXCLUSIONS_EXCLUSION_LIST_H

#include <cstddef>
#include <cstdint>

namespace zelvreg {

struct Form42;

// Fills View4 from the file, and below that from the policies, whose rows are locked: they are
// neither edited nor removed nor written to the file.
void loadExclusions(Form42& form);

// Fills View4 and removes every result whose full key begins with an entry. Wildcards work within
// the length of an entry; case does not matter; an empty entry removes all.
void Command29(Form42& form);

// What became of a change of the file. A failure has been told, unless all safeguards are lifted.
enum class ListChange : std::uint8_t { Done, Declined, Failed };

// Removes the highlighted rows after a question, as the page's button does.
ListChange removeHighlightedExclusions(Form42& form);

// The page: a new entry, an edit of the row in Text3, removal of the highlighted rows after a
// question.
void chameleonButton5_Click(Form42& form);
void chameleonButton8_Click(Form42& form);
void chameleonButton6_Click(Form42& form);
void View4_ItemClick(Form42& form, std::size_t row);

// Excludes the keys of the highlighted results and removes these from the list. View4 stays as it
// is. If the file cannot be written, a message says so and the results stay.
void chameleonButton9_Click(Form42& form);

// The dialog: OK, and either of the buttons that only close it.
void Form1_orubutton1_Click(Form42& form);
void closeExclusionDialog(Form42& form);

// "1" in Text6 rewrites the file from View4.
void Text6_Change(Form42& form);

}  // namespace zelvreg

#endif
