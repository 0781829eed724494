// The texts of src/console/completions, with names between "@" for what is filled in.
#ifndef ZELVREG_CONSOLE_COMPLETION_SCRIPTS_H
#define ZELVREG_CONSOLE_COMPLETION_SCRIPTS_H

namespace zelvreg::console::completionScripts {

extern const char* const bash;
extern const char* const zsh;
extern const char* const fish;

}  // namespace zelvreg::console::completionScripts

#endif
