// Row 6: classes whose program is gone, and media types whose extension is not registered.
#ifndef ZELVREG_SCANNERS_FILE_CLASSES_H
#define ZELVREG_SCANNERS_FILE_CLASSES_H

namespace zelvreg {

struct Form42;

// Reports the classes whose open or edit command runs a missing program or is empty, then the media
// types. When cancelRequested is set, it ends at the next entry and does not save the running
// total.
void Command12(Form42& form);

}  // namespace zelvreg

#endif
