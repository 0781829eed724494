// Row 3: programs that are gone, in the lists of application paths, in the user's compatibility
// lists and in the values of the keys of Software.
#ifndef ZELVREG_SCANNERS_APPLICATION_PATHS_H
#define ZELVREG_SCANNERS_APPLICATION_PATHS_H

namespace zelvreg {

struct Form42;

// Seven passes with one kind of finding. They give the user access to every key of the application
// paths, in both spellings, and to the two compatibility lists. Once started, only fEnumKey can
// stop it.
void Command5(Form42& form);

}  // namespace zelvreg

#endif
