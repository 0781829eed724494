// Paths that lead to another computer. Opening one sends the user's credentials to the server in
// the path, and anybody may have written the path into the registry. Nothing here opens a path or
// fails.
#ifndef ZELVREG_RUNTIME_SHARES_H
#define ZELVREG_RUNTIME_SHARES_H

#include <string>
#include <string_view>

namespace zelvreg {

// Whether a call may open a path that leads to another computer.
enum class Shares { Refused, Asked };

// Whether a path, as file calls of Windows read it, leads to another computer or to a device that
// may do so: a server's name after two separators, a remote drive, or a device path other than that
// of a drive or a volume of this computer.
bool leadsToShare(std::string_view path);

// Ask this before each file call on a text that is not the program's own. If it says no, treat the
// file as missing.
bool mayBeOpened(std::string_view path, Shares shares);

}  // namespace zelvreg

#endif
