// Whether a safety export that the user names may be restored.
#ifndef ZELVREG_CONSOLE_EXPORT_TRUST_H
#define ZELVREG_CONSOLE_EXPORT_TRUST_H

#include <string>

namespace zelvreg::console {

// A restore writes what the file says with the user's own rights. Throws std::runtime_error with
// one line if somebody else could have written the file, or replaced it.
void requireTrustedFile(const std::string& path);

}  // namespace zelvreg::console

#endif
