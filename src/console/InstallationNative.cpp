#include <filesystem>
#include <system_error>

#include "console/Installation.h"

namespace zelvreg::console {

namespace fs = std::filesystem;

std::string programFile() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).string();
}

// Beside the program in a build, below /usr/share when it is installed.
std::string languageFolder() {
  std::error_code error;
  const fs::path folder = fs::path(programFile()).parent_path();
  const fs::path beside = folder / "lang";
  return fs::exists(beside, error) ? beside : folder.parent_path() / "share/zelvreg/lang";
}

std::vector<std::string> filesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator file(folder, error), end; !error && file != end;
       file.increment(error)) {
    if (std::error_code ignored; file->is_regular_file(ignored)) {
      names.push_back(file->path().filename().string());
    }
  }
  return names;
}

}  // namespace zelvreg::console
