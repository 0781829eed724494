// Ends the process from the middle of a procedure.
#ifndef ZELVREG_FORM_PROCESS_END_H
#define ZELVREG_FORM_PROCESS_END_H

namespace zelvreg {

struct Form42;

// Unwinds to the front end, which ends the process. Nothing else catches it.
struct ProcessEnd {};

// Tells the front end, which may end the process at once; otherwise throws ProcessEnd.
[[noreturn]] void endProcess(const Form42& form);

}  // namespace zelvreg

#endif
