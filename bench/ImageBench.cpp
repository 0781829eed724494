#include "ImageBench.h"

#include <cstdint>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Measure.h"
#include "Programs.h"
#include "WorkFolder.h"
#include "images/ImagePrograms.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

constexpr int problemsFound = 1;

void run(const char* name, std::vector<std::string> words) {
  const char* folders = std::getenv("PATH");
  const auto program =
      findProgram(name, std::string(folders == nullptr ? "" : folders) + ":/usr/sbin:/sbin");
  if (!program) {
    throw std::runtime_error(std::string(name) + " is not installed");
  }
  words.insert(words.begin(), program->string());
  runProgram(words, 0);
}

std::uint64_t sizeOf(const fs::path& folder) {
  std::uint64_t size = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    size += entry.is_regular_file() ? entry.file_size() : 0;
  }
  return size;
}

// A volume is mounted as long as this lives.
class Mounted {
 public:
  Mounted(const fs::path& volume, fs::path place) : folder(std::move(place)) {
    fs::create_directory(folder);
    run("ntfs-3g", {volume.string(), folder.string()});
  }
  ~Mounted() {
    try {
      run("umount", {folder.string()});
    } catch (const std::runtime_error& error) {
      std::cerr << error.what() << "\n";
    }
  }
  Mounted(const Mounted&) = delete;
  Mounted& operator=(const Mounted&) = delete;

  const fs::path folder;
};

double scanSeconds(const char* option, const fs::path& target) {
  return runProgram({zelvregProgram().string(), option, target.string(), "scan"}, problemsFound)
      .elapsed;
}

}  // namespace

std::optional<double> measureImage(const fs::path& disk, std::size_t pairs) {
  try {
    images::requirePrograms();
  } catch (const std::runtime_error& error) {
    std::cerr << error.what() << "\n";
    return std::nullopt;
  }
  const WorkFolder work;
  const fs::path volume = work.path() / "volume";
  const fs::path image = work.path() / "image.qcow2";
  std::ofstream(volume).flush();
  constexpr std::uint64_t room = 32 << 20;
  fs::resize_file(volume, 2 * sizeOf(disk) + room);
  run("mkntfs", {"-F", "-Q", "-q", "-s", "512", "-p", "0", "-H", "1", "-S", "1", volume.string()});
  {
    const Mounted mounted(volume, work.path() / "filled");
    fs::copy(disk, mounted.folder, fs::copy_options::recursive);
  }
  run("qemu-img", {"convert", "-f", "raw", "-O", "qcow2", volume.string(), image.string()});
  const Mounted mounted(volume, work.path() / "mounted");
  std::vector<double> added;
  for (std::size_t pair = 0; pair < pairs; ++pair) {
    const double folderSeconds = scanSeconds("--offline", mounted.folder);
    added.push_back(scanSeconds("--image", image) - folderSeconds);
  }
  return median(added);
}

}  // namespace zelvreg::bench
