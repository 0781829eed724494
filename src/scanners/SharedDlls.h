// Row 2: shared DLLs that are gone, in both views.
#ifndef ZELVREG_SCANNERS_SHARED_DLLS_H
#define ZELVREG_SCANNERS_SHARED_DLLS_H

namespace zelvreg {

struct Form42;

// Reports each shared DLL whose file is gone, and sets the attributes of those that exist to
// archive only. The second pass tests the names of the first again, before its own, and
// its fields go to the rows from the first one on. Once started, it runs to its end.
void Command2(Form42& form);

}  // namespace zelvreg

#endif
