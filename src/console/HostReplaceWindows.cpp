#include "console/HostReplace.h"
#include "runtime/FileText.h"

namespace zelvreg::console {

bool replaceHostFile(const std::string& path, std::string_view bytes) {
  return replaceFileText(path, bytes);
}

}  // namespace zelvreg::console
