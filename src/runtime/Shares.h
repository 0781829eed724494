// Paths that lead to another computer. Whoever opens one hands the user's credentials to a server
// that the path names, and registry texts name whatever somebody has written there.
#ifndef ZELVREG_RUNTIME_SHARES_H
#define ZELVREG_RUNTIME_SHARES_H

#include <string>
#include <string_view>

namespace zelvreg {

// Whether a call may follow a path to another computer.
enum class Shares { Refused, Asked };

// Whether a path, as the system's file calls take it, leads to another computer, or to a device
// that may: a server's name behind two separators, a drive that is remote, a path of devices other
// than a drive or a volume of this computer.
bool leadsToShare(std::string_view path);

// The question before each file call on a text that is not the program's own: what may not be
// opened counts as absent.
bool mayBeOpened(std::string_view path, Shares shares);

}  // namespace zelvreg

#endif
