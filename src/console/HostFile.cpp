#include "console/HostFile.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zelvreg::console {

void writeHostFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path beside = path + ".new";
  std::ofstream file(beside, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  std::error_code error;
  if (file.good()) {
    std::filesystem::rename(beside, path, error);
  }
  if (!file.good() || error) {
    std::filesystem::remove(beside, error);
    throw std::runtime_error(path + " cannot be written; check the folder and the room left");
  }
}

std::string readHostFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  if (std::filesystem::is_directory(path) || !(bytes << file.rdbuf())) {
    throw std::runtime_error(path + " cannot be read; name a file that is there");
  }
  return bytes.str();
}

}  // namespace zelvreg::console
