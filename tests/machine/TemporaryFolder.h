// An empty folder of its own for one test, removed with everything in it when the test is over.
#ifndef ZELVREG_TESTS_MACHINE_TEMPORARY_FOLDER_H
#define ZELVREG_TESTS_MACHINE_TEMPORARY_FOLDER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace zelvreg::fixture {

class TemporaryFolder {
 public:
  TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
  // Below this folder.
  explicit TemporaryFolder(const std::filesystem::path& above) {
    std::string name = (above / "zelvreg-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder: " + name);
    folder = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return folder; }

  // Writes a file, making the folders above it. `name` is relative, with "/".
  void write(std::string_view name, std::string_view content) const {
    const std::filesystem::path file = folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
  }

  // The bytes of a file; the empty text if it is not there.
  [[nodiscard]] std::string read(std::string_view name) const {
    std::ifstream file(folder / name, std::ios::binary | std::ios::ate);
    std::string content(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
    file.seekg(0).read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
  }

  void makeFolder(std::string_view name) const {
    std::filesystem::create_directories(folder / name);
  }

  [[nodiscard]] bool has(std::string_view name) const {
    return std::filesystem::exists(std::filesystem::symlink_status(folder / name));
  }

 private:
  std::filesystem::path folder;
};

}  // namespace zelvreg::fixture

#endif
