// What the process knows of its surroundings.
#ifndef ZELVREG_RUNTIME_ENVIRONMENT_H
#define ZELVREG_RUNTIME_ENVIRONMENT_H

#include <string>

namespace zelvreg {

// The variable's text; empty when there is no such variable. Names are case-blind.
std::string environmentVariable(const char* name);

// The folder of the running program, without a backslash at its end.
std::string programFolder();

}  // namespace zelvreg

#endif
