#include "machine/replay/LogFiles.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <system_error>

#include "machine/base/CaseFold.h"
#include "machine/base/MachineError.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

namespace fs = std::filesystem;

using IsWanted = std::function<bool(const std::u16string&)>;  // of a name in upper case

std::u16string upperName(const fs::path& file) {
  return upperCase(utf16(file.filename().string()));
}

// The entries of a folder whose upper-case names are wanted, sorted by these. Throws MachineError,
// a few words, if the folder cannot be read.
std::vector<fs::path> entriesOf(const fs::path& folder, const IsWanted& isWanted) {
  std::vector<fs::path> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    if (isWanted(upperName(entry->path()))) {
      found.push_back(entry->path());
    }
  }
  if (error) {
    throw MachineError(folder.string() + " cannot be read: " + error.message());
  }
  std::ranges::sort(found, [](const fs::path& first, const fs::path& second) {
    return std::pair(upperName(first), first) < std::pair(upperName(second), second);
  });
  return found;
}

bool isPlain(const fs::path& file) {
  std::error_code error;
  return fs::is_regular_file(fs::symlink_status(file, error));
}

// What cannot be looked at may hold anything, and so may the end of a link.
bool mayHoldAnything(const fs::path& file) {
  try {
    return !isPlain(file) ||
           MappedFile(file).bytes().find_first_not_of('\0') != std::string_view::npos;
  } catch (const MachineError&) {
    return true;
  }
}

// The first entry that may hold anything, or the folder if it cannot be read.
std::optional<fs::path> pendingIn(const fs::path& folder, const IsWanted& isContainer) {
  try {
    const std::vector<fs::path> found = entriesOf(folder, isContainer);
    const auto pending = std::ranges::find_if(found, mayHoldAnything);
    return pending == found.end() ? std::nullopt : std::optional(*pending);
  } catch (const MachineError&) {
    return folder;
  }
}

}  // namespace

LogFiles::LogFiles(const fs::path& hive) {
  const std::u16string name = upperName(hive);
  const auto isLog = [&name](const std::u16string& other) {
    return std::ranges::any_of(std::array{u".LOG", u".LOG1", u".LOG2"},
                               [&](const char16_t* ending) { return other == name + ending; });
  };
  for (const fs::path& log : entriesOf(hive.parent_path(), isLog)) {
    if (!isPlain(log)) {
      throw MachineError(log.filename().string() + " is no file that can be read");
    }
    readStamps.emplace_back(log, stampOf(log));
    files.emplace_back(log);
  }
}

std::vector<std::span<const std::byte>> LogFiles::contents() const {
  std::vector<std::span<const std::byte>> contents;
  contents.reserve(files.size());
  for (const MappedFile& file : files) {
    contents.push_back(std::as_bytes(std::span(file.bytes())));
  }
  return contents;
}

std::optional<fs::path> pendingTransactions(const fs::path& hive) {
  const std::u16string start = upperName(hive) + u"{";
  const auto isContainer = [](const std::u16string& name) {
    return name.ends_with(u".REGTRANS-MS");
  };
  std::optional<fs::path> pending = pendingIn(hive.parent_path(), [&](const std::u16string& name) {
    return name.starts_with(start) && isContainer(name);
  });
  const auto isFolder = [](const std::u16string& name) { return name == u"TXR"; };
  for (const fs::path& folder : entriesOf(hive.parent_path(), isFolder)) {
    std::error_code error;
    if (!pending && !isPlain(folder)) {
      pending = fs::is_directory(fs::symlink_status(folder, error)) ? pendingIn(folder, isContainer)
                                                                    : std::optional(folder);
    }
  }
  return pending;
}

}  // namespace zelvreg::machine
