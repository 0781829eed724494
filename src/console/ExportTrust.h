// Whether a safety export that the user names may be restored.
#ifndef ZELVREG_CONSOLE_EXPORT_TRUST_H
#define ZELVREG_CONSOLE_EXPORT_TRUST_H

#include <string>

namespace zelvreg::console {

// A restore writes what the file says with the rights of the one who asks for it. Throws
// std::runtime_error with one line if somebody else could have written the file, or put another in
// its place.
void requireTrustedFile(const std::string& path);

}  // namespace zelvreg::console

#endif
