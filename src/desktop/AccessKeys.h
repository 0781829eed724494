// Access keys: the letters that, with Alt, press a control or choose it.
#ifndef ZELVREG_DESKTOP_ACCESS_KEYS_H
#define ZELVREG_DESKTOP_ACCESS_KEYS_H

#include <string>
#include <vector>

namespace zelvreg::desktop {

// Marks a letter of each caption with "&", one that no caption before it has: the beginning of a
// word if there is one, else any letter. A caption in a script that is not typed letter by letter
// gets a Latin letter behind it, as in "(A)", or a digit if there are no more. A caption whose
// letters are all taken has none; a mark that it brings stays. An "&" before a blank or at the end
// is a part of the text.
std::vector<std::string> withAccessKeys(const std::vector<std::string>& captions);

}  // namespace zelvreg::desktop

#endif
