#include "machine/hive/HiveLogs.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <vector>

#include "machine/base/CaseFold.h"
#include "machine/base/PlainFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {
namespace {

constexpr std::uint64_t headerSize = 512;

// The first bytes of a hive, of a log, and of the pages in a log.
struct Header {
  std::array<char, 4> kind{};
  std::uint32_t first = 0;   // a hive's and a log's sequence number; the size of a log's pages
  std::uint32_t second = 0;  // the hive's other sequence number
  std::uint32_t third = 0;   // the sequence number of a log's pages

  [[nodiscard]] bool is(std::string_view name) const { return std::ranges::equal(kind, name); }
};

Header headerAt(const FileDescriptor& file, std::uint64_t offset) {
  Header header;
  static_assert(sizeof header == 16);
  return readAt(file, offset, &header, sizeof header) == sizeof header ? header : Header();
}

// The highest sequence number of the pages in a log; 0 if there are none. Since Windows 8.1 a log
// is a row of groups of pages, before it was one such group under the log's own number.
std::uint32_t newestPages(const FileDescriptor& file) {
  const Header start = headerAt(file, 0);
  if (!start.is("regf")) {
    return 0;
  }
  std::uint64_t offset = headerSize;
  Header pages = headerAt(file, offset);
  if (pages.is("DIRT")) {
    return start.first;
  }
  std::uint32_t newest = 0;
  while (pages.is("HvLE") && pages.first >= sizeof pages) {
    newest = std::max(newest, pages.third);
    offset += pages.first;
    pages = headerAt(file, offset);
  }
  return newest;
}

std::vector<std::filesystem::path> logsOf(const std::filesystem::path& hive) {
  const std::u16string name = utf16(hive.filename().string());
  std::vector<std::filesystem::path> logs;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(hive.parent_path(), error)) {
    const std::u16string other = utf16(entry.path().filename().string());
    const bool isLog = std::ranges::any_of(
        std::array{u".LOG", u".LOG1", u".LOG2"},
        [&](const char16_t* ending) { return isSameName(other, name + ending); });
    if (isLog) {
      logs.push_back(entry.path());
    }
  }
  return logs;
}

}  // namespace

std::optional<std::string> whyUnclean(const std::filesystem::path& hive) {
  constexpr std::string_view advice =
      "; start that Windows once and shut it down (not with fast start-up), or only scan this disk";
  const Header header = headerAt(openPlainFile(hive), 0);
  std::string reason;
  if (header.first != header.second) {
    reason = ": Windows was not shut down cleanly, its newest content is in its logs";
  }
  for (const std::filesystem::path& log : logsOf(hive)) {
    const FileDescriptor file = openPlainFile(log);
    if (!file.isOpen()) {
      return log.string() + " is no file that can be read, so that it cannot be told whether " +
             hive.string() + " is whole; look what it is, or only scan this disk";
    }
    if (reason.empty() && newestPages(file) > header.second) {
      reason = ": its log " + log.filename().string() + " holds newer content";
    }
  }
  return reason.empty() ? std::nullopt : std::optional(hive.string() + reason.append(advice));
}

}  // namespace zelvreg::machine
