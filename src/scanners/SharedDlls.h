// Row 2: shared DLLs that are gone, in both views.
#ifndef ZELVREG_SCANNERS_SHARED_DLLS_H
#define ZELVREG_SCANNERS_SHARED_DLLS_H

namespace zelvreg {

struct Form42;

// Reports each shared DLL whose file is gone, and sets the attributes of those that exist to
// archive only. The second pass walks the names of the first once more, before its own, and
// its fields go to the rows from the first one on. Runs to its end once started.
void Command2(Form42& form);

}  // namespace zelvreg

#endif
