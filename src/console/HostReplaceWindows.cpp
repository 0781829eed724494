#include "console/HostReplace.h"
#include "runtime/FileText.h"
#include "text/Wide.h"

namespace zelvreg::console {

std::filesystem::path hostPath(const std::string& text) { return Wide(text).get(); }

bool replaceHostFile(const std::string& path, std::string_view bytes) {
  return replaceFileText(path, bytes);
}

}  // namespace zelvreg::console
