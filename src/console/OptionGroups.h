// Groups of commands and options that are filled in more than one place, as the help names them.
#ifndef ZELVREG_CONSOLE_OPTION_GROUPS_H
#define ZELVREG_CONSOLE_OPTION_GROUPS_H

namespace zelvreg::console {

inline constexpr const char* outputGroup = "Output";
inline constexpr const char* installationGroup = "Languages and this installation";
inline constexpr const char* helpGroup = "Help";

}  // namespace zelvreg::console

#endif
