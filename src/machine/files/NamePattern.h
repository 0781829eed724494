// Names with wildcards, as a search in a folder takes them.
#ifndef ZELVREG_MACHINE_FILES_NAME_PATTERN_H
#define ZELVREG_MACHINE_FILES_NAME_PATTERN_H

#include <string_view>

namespace zelvreg::machine {

// Whether a name fits. Both are upper case. "*" stands for any text, "?" for one character, or for
// none at the end of the name and in front of a dot; "*.*" fits names without a dot as well.
bool fitsPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace zelvreg::machine

#endif
