#include "machine/offline/Hibernation.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "machine/base/CaseFold.h"
#include "machine/base/HostName.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::machine {
namespace {

namespace fs = std::filesystem;

enum class Sleep : std::uint8_t { Awake, Hibernated, Unknown };

struct SleepingDrive {
  Sleep sleep = Sleep::Awake;
  fs::path file;
};

// Windows writes to no folder of that name, and a link tells of another disk.
Sleep sleepIn(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(file, error);
  if (fs::is_directory(status)) {
    return Sleep::Awake;
  }
  const FileDescriptor opened =
      fs::is_regular_file(status) ? openPlainFile(file) : FileDescriptor();
  std::array<char, 4> start{};
  errno = 0;
  if (!opened.isOpen() ||
      (readAt(opened, 0, start.data(), start.size()) < start.size() && errno != 0)) {
    return Sleep::Unknown;
  }
  const std::string_view signature(start.data(), start.size());
  return signature == "HIBR" || signature == "hibr" ? Sleep::Hibernated : Sleep::Awake;
}

// Names that differ in case only are files of their own for some drivers.
SleepingDrive sleepOf(const fs::path& drive) {
  SleepingDrive found;
  std::error_code error;
  for (fs::directory_iterator entry(drive, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const auto name = windowsName(entry->path().filename().string());
    const Sleep sleep =
        name && isSameName(*name, u"hiberfil.sys") ? sleepIn(entry->path()) : Sleep::Awake;
    if (sleep == Sleep::Hibernated) {
      return {sleep, entry->path()};
    }
    if (sleep == Sleep::Unknown) {
      found = {sleep, entry->path()};
    }
  }
  return error ? SleepingDrive{Sleep::Unknown, drive} : found;
}

std::optional<std::string> whyAsleep(const fs::path& drive) {
  const SleepingDrive found = sleepOf(drive);
  switch (found.sleep) {
    case Sleep::Hibernated:
      return found.file.string() +
             ": Windows is hibernated (fast start-up does that, too), and its newest content is "
             "there; start it and shut it down with \"shutdown /s /t 0\", or turn hibernation off "
             "with \"powercfg /h off\"";
    case Sleep::Unknown:
      return found.file.string() +
             " cannot be read, so that it cannot be told whether Windows is hibernated; look what "
             "it is, and give yourself the right to read it";
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<std::string> whyAsleep(const OfflineDisk& disk) {
  std::optional<std::string> reason = whyAsleep(disk.root);
  for (const auto& [letter, folder] : disk.drives) {
    if (!reason) {
      reason = whyAsleep(folder);
    }
  }
  return reason;
}

}  // namespace zelvreg::machine
