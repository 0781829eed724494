// The registry search: the set-up of its controls, its start, and the test of one text.
#ifndef ZELVREG_SEARCH_SEARCH_H
#define ZELVREG_SEARCH_SEARCH_H

#include <string>

namespace zelvreg {

struct Form42;

// The entry of cboRoot that stands for all roots; always the first.
inline constexpr const char* allRootsName = "My Computer";

// Where the search's texts and choices are stored, below HKEY_CURRENT_USER. They are only read.
inline constexpr const char* searchSettingsKey =
    "Software\\VB and VBA Program Settings\\MIRE SOFTWARE\\Fix Registry Problems\\Search";

// Fills cboRoot with the roots that have subkeys and cboFind with the stored texts, and applies the
// stored choices. It always chooses the current user's root, and searches data.
void Command24(Form42& form);

// Whether a text matches that of cboFind, according to ChCase and the chosen option; without one
// nothing matches. Serves the queue.
void VerifyPattern(Form42& form, const std::string& text, bool& matched);

// Searches the root of cboRoot, or all of them, and lists in View2 what matches. Ends early once
// cancelRequested is set. Where searchCategory is 0, each root has the category of its own settings
// (2 the current user's, 3 all users', 4 the computer's) and other roots have none. With category 1
// only the key "clsid" is searched.
void cmdFind(Form42& form);

}  // namespace zelvreg

#endif
