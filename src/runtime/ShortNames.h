// The short names that Windows makes up for old programs, as in "C:\PROGRA~1".
#ifndef ZELVREG_RUNTIME_SHORT_NAMES_H
#define ZELVREG_RUNTIME_SHORT_NAMES_H

#include <string>

namespace zelvreg {

// A path with its short names replaced, where it is known what they stand for. On Windows that is
// the path itself, since the system's calls take short names. On a mounted disk they are known if
// the driver of its file system tells them; a machine folder has none. Opens no file.
std::string withLongNames(const std::string& path);

}  // namespace zelvreg

#endif
