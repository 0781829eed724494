// The two places that a path of the system folder means: one for 64-bit programs and one for
// 32-bit programs.
#ifndef ZELVREG_EVIDENCE_VIEW_PATHS_H
#define ZELVREG_EVIDENCE_VIEW_PATHS_H

#include <string>
#include <vector>

#include "evidence/OwnerVariables.h"

namespace zelvreg {

struct ViewPath {
  std::string path;   // as this process reaches it
  bool isOwn = true;  // in the view of the text
};

// The path itself, unless it leads into the system folder of a 64-bit Windows; then that of its own
// view, and that of the other.
std::vector<ViewPath> viewPaths(const std::string& path, ProgramView view,
                                const std::string& windowsFolder);

}  // namespace zelvreg

#endif
