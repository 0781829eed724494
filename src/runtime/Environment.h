// The environment of the process. Text is UTF-8.
#ifndef ZELVREG_RUNTIME_ENVIRONMENT_H
#define ZELVREG_RUNTIME_ENVIRONMENT_H

#include <string>

namespace zelvreg {

// The variable's text; empty if there is no such variable. Case does not matter in names.
std::string environmentVariable(const char* name);

// The full path of the running program.
std::string modulePath();
// The full path of the running program's folder, without a backslash at its end.
std::string programFolder();

}  // namespace zelvreg

#endif
