#include <filesystem>
#include <stdexcept>

#include "console/ExportTrust.h"
#include "console/HostReplace.h"
#include "runtime/PrivateFiles.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {

void requireTrustedFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::path file = std::filesystem::absolute(hostPath(path), error);
  if (error || !std::filesystem::is_regular_file(file, error)) {
    throw std::runtime_error(path + " cannot be read; name a file that exists");
  }
  if (couldOthersWrite(utf8(reinterpret_cast<const char16_t*>(file.c_str())))) {
    throw std::runtime_error(path +
                             " could have been written by somebody who is no administrator; copy "
                             "it to a folder of administrators alone, look at it, and restore the "
                             "copy");
  }
}

}  // namespace zelvreg::console
