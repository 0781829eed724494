#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "console/ExportTrust.h"

namespace zelvreg::console {
namespace {

bool isOwnOrRoots(const struct stat& status) {
  return status.st_uid == 0 || status.st_uid == geteuid();
}

bool couldOthersWrite(const std::filesystem::path& path) {
  constexpr mode_t byOthers = S_IWGRP | S_IWOTH;
  struct stat file {};
  struct stat folder {};
  if (stat(path.c_str(), &file) != 0 || stat(path.parent_path().c_str(), &folder) != 0) {
    return true;
  }
  // In a folder with the sticky bit nobody can put another file in the place of this one.
  const bool isFolderOpen = (folder.st_mode & byOthers) != 0 && (folder.st_mode & S_ISVTX) == 0;
  return !isOwnOrRoots(file) || !isOwnOrRoots(folder) || (file.st_mode & byOthers) != 0 ||
         isFolderOpen;
}

}  // namespace

void requireTrustedFile(const std::string& path) {
  std::error_code error;
  // Where a link leads to counts.
  const std::filesystem::path file = std::filesystem::canonical(path, error);
  if (error || !std::filesystem::is_regular_file(file, error)) {
    throw std::runtime_error(path + " cannot be read; name a file that exists");
  }
  if (couldOthersWrite(file)) {
    throw std::runtime_error(path +
                             " could have been written by another user; copy it to a folder of "
                             "your own, look at it, and restore the copy");
  }
}

}  // namespace zelvreg::console
