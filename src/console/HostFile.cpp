#include "console/HostFile.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "console/HostReplace.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

bool writeThrough(const fs::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  return file.good();
}

// A link must stay a link. Renaming a file to its name would replace it, and if it is that of
// standard output, for all programs.
bool isLinkOrDevice(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  return fs::exists(status) && !fs::is_regular_file(status);
}

}  // namespace

void writeHostFile(const std::string& path, std::string_view bytes) {
  const bool isWritten = isLinkOrDevice(hostPath(path)) ? writeThrough(hostPath(path), bytes)
                                                        : replaceHostFile(path, bytes);
  if (!isWritten) {
    throw std::runtime_error(path + " cannot be written; check the folder and the free disk space");
  }
}

std::string readHostFile(const std::string& path) {
  std::ifstream file(hostPath(path), std::ios::binary);
  std::ostringstream bytes;
  if (fs::is_directory(hostPath(path)) || !(bytes << file.rdbuf())) {
    throw std::runtime_error(path + " cannot be read; name a file that exists");
  }
  return bytes.str();
}

}  // namespace zelvreg::console
