// Which program this is.
#ifndef ZELVREG_FORM_VERSION_H
#define ZELVREG_FORM_VERSION_H

namespace zelvreg {

// Major, minor and revision number with dots between them.
const char* programVersion();

}  // namespace zelvreg

#endif
