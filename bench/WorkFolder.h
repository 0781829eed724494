// A folder for made machines.
#ifndef ZELVREG_BENCH_WORK_FOLDER_H
#define ZELVREG_BENCH_WORK_FOLDER_H

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace zelvreg::bench {

// A new folder among the temporary ones, gone with its content at the end. Throws if it cannot be
// made.
class WorkFolder {
 public:
  WorkFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zelvreg-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error(name + " cannot be made; set TMPDIR to a folder with room");
    }
    folder = name;
  }
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return folder; }

 private:
  std::filesystem::path folder;
};

}  // namespace zelvreg::bench

#endif
