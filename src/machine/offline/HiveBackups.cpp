#include "machine/offline/HiveBackups.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

constexpr std::string_view timeForm = "dddd-dd-ddTdd-dd-dd";

std::string timeText(std::time_t time) {
  std::tm parts{};
  gmtime_r(&time, &parts);
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H-%M-%S", &parts)};
}

// Several of one second are told apart by a number, "…-06.2".
bool isOlderBackup(std::string_view name, const std::string& hiveName) {
  const std::string start = hiveName + ".bak-";
  if (!name.starts_with(start)) return false;
  name.remove_prefix(start.size());
  const std::string_view time = name.substr(0, timeForm.size());
  const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
  const bool isTime = time.size() == timeForm.size() &&
                      std::ranges::equal(time, timeForm, [&](char letter, char form) {
                        return form == 'd' ? isDigit(letter) : letter == form;
                      });
  name.remove_prefix(time.size());
  return isTime && (name.empty() || (name.size() > 1 && name.front() == '.' &&
                                     std::ranges::all_of(name.substr(1), isDigit)));
}

struct OlderBackup {
  FileStamp stamp;
  std::filesystem::path file;
};

// The oldest first.
std::vector<OlderBackup> olderBackups(const std::filesystem::path& hive) {
  std::vector<OlderBackup> backups;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(hive.parent_path(), error)) {
    if (isOlderBackup(entry.path().filename().string(), hive.filename().string()) &&
        std::filesystem::is_regular_file(entry.symlink_status(error))) {
      backups.push_back({stampOf(entry.path()), entry.path()});
    }
  }
  const auto age = [](const OlderBackup& backup) {
    return std::tuple(backup.stamp[2], backup.stamp[3], backup.file);
  };
  std::ranges::sort(backups, {}, age);
  return backups;
}

}  // namespace

std::filesystem::path backupOf(const std::filesystem::path& hive) {
  return std::filesystem::path(hive) += ".bak";
}

std::filesystem::path setBackupAside(const std::filesystem::path& hive, const FileStamp& stamp) {
  const std::filesystem::path backup = backupOf(hive);
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::symlink_status(backup, error);
  if (status.type() == std::filesystem::file_type::none) {
    throw MachineError(backup.string() + " cannot be read: " + error.message() +
                       "; give the right to read there, and try again");
  }
  const bool isFile = std::filesystem::is_regular_file(status);
  const FileStamp there = stampOf(backup);
  if (!isFile || there == stamp) return {};
  const std::filesystem::path named = std::filesystem::path(backup) +=
      "-" + timeText(static_cast<std::time_t>(there[2]));
  std::filesystem::path aside = named;
  constexpr int mostInOneSecond = 1000;
  for (int number = 2; number < mostInOneSecond; ++number) {
    if (renameat2(AT_FDCWD, backup.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
      return aside;
    }
    const int failure = errno;
    const bool isThere = std::filesystem::exists(std::filesystem::symlink_status(aside, error));
    // Not every file system can refuse to replace; nobody but this program makes such names.
    if (!isThere && rename(backup.c_str(), aside.c_str()) == 0) return aside;
    if (!isThere) {
      throw MachineError(aside.string() + " cannot be written: " + std::strerror(failure) +
                         "; give the right to write there, and try again");
    }
    aside = std::filesystem::path(named) += "." + std::to_string(number);
  }
  throw MachineError(backup.string() + ": there are too many older backups; move them elsewhere");
}

void thinBackups(const std::filesystem::path& hive, std::size_t kept) {
  std::vector<OlderBackup> backups = olderBackups(hive);
  if (kept > 0 && !backups.empty()) {
    backups.erase(backups.begin());
    --kept;
  }
  for (std::size_t at = 0; at + kept < backups.size(); ++at) unlink(backups[at].file.c_str());
}

}  // namespace zelvreg::machine
