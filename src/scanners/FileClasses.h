// Row 6: classes whose program is gone, and media types whose extension is not registered.
#ifndef ZELVREG_SCANNERS_FILE_CLASSES_H
#define ZELVREG_SCANNERS_FILE_CLASSES_H

namespace zelvreg {

struct Form42;

// Reports the classes whose open or edit command runs a missing program or holds nothing at all,
// then the media types. It ends at the next entry when cancelRequested is set; the running total is
// not saved then.
void Command12(Form42& form);

}  // namespace zelvreg

#endif
