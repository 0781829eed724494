#include "console/HostReplace.h"
#include "machine/base/AtomicFile.h"

namespace zelvreg::console {

std::filesystem::path hostPath(const std::string& text) { return text; }

bool replaceHostFile(const std::string& path, std::string_view bytes) {
  machine::replaceFile(path, bytes);
  return true;
}

}  // namespace zelvreg::console
