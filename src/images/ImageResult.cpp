#include "images/ImageResult.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <map>
#include <optional>
#include <utility>

#include "machine/base/AtomicFile.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using machine::MachineError;

// Seconds and nanoseconds.
using Time = std::pair<time_t, long>;

Time timeOf(const timespec& time) { return {time.tv_sec, time.tv_nsec}; }

constexpr const char* resultEnding = ".json";
constexpr const char* failureEnding = ".error";

fs::path named(const fs::path& folder, const fs::path& image, const char* ending) {
  return folder / (image.filename().string() + ending);
}

bool isThere(const fs::path& file) {
  std::error_code error;
  return fs::exists(fs::symlink_status(file, error));
}

bool beginsWith(const fs::path& file, std::string_view start) {
  const machine::FileDescriptor opened = machine::openPlainFile(file);
  std::string text(start.size(), '\0');
  return opened.isOpen() && machine::readAt(opened, 0, text.data(), text.size()) == text.size() &&
         text == start;
}

void requireOwn(const fs::path& file, std::string_view start, const fs::path& image) {
  if (isThere(file) && !beginsWith(file, start)) {
    throw MachineError(file.string() + ": is there and not of " + image.string() +
                       "; give each image a name of its own, name another folder, or replace it "
                       "with --again");
  }
}

// A result and a failure that stand beside each other would contradict each other.
void removeOther(const fs::path& file) {
  if (unlink(file.c_str()) != 0 && errno != ENOENT) {
    throw MachineError(file.string() + ": cannot be removed: " + std::strerror(errno) +
                       "; give yourself the right to write in its folder, and run this again");
  }
}

// When a file was last written, or anything else of it was changed; none if it is not there.
std::optional<Time> lastChange(const fs::path& file) {
  struct stat about {};
  if (stat(file.c_str(), &about) != 0) return std::nullopt;
  return std::max(timeOf(about.st_mtim), timeOf(about.st_ctim));
}

}  // namespace

ImageResult::ImageResult(const fs::path& folder, fs::path image, ResultStarts expected)
    : file(std::move(image)),
      kept(named(folder, file, resultEnding)),
      failure(named(folder, file, failureEnding)),
      starts(std::move(expected)) {}

void ImageResult::refuseOther() const {
  requireOwn(kept, starts.ofImage, file);
  requireOwn(failure, starts.ofFailure, file);
}

bool ImageResult::isNewerThan(const std::vector<fs::path>& files) const {
  struct stat about {};
  if (stat(kept.c_str(), &about) != 0 || !beginsWith(kept, starts.ofOptions)) return false;
  return std::ranges::all_of(files, [made = timeOf(about.st_mtim)](const fs::path& one) {
    const auto changed = lastChange(one);
    return changed && *changed < made;
  });
}

void ImageResult::keep(std::string_view content) const {
  machine::replaceFile(kept, content);
  removeOther(failure);
}

void ImageResult::keepFailure(std::string_view line) const {
  machine::replaceFile(failure, std::string(line) + "\n");
  removeOther(kept);
}

void ImageResult::removeFailure() const { removeOther(failure); }

void ImageResult::removeLeftovers() const {
  machine::removeLeftovers(kept);
  machine::removeLeftovers(failure);
}

void refuseNames(const std::vector<fs::path>& images) {
  std::map<fs::path, fs::path> known;
  for (const fs::path& image : images) {
    if (image.filename().string().size() + std::string_view(failureEnding).size() > NAME_MAX) {
      throw MachineError(image.string() +
                         ": its name is too long for that of a result; give it a shorter one");
    }
    const auto [first, isNew] = known.emplace(image.filename(), image);
    if (!isNew) {
      throw MachineError(first->second.string() + " and " + image.string() +
                         " have the same name and would share a result; give one another name, or "
                         "each a folder of results");
    }
  }
}

}  // namespace zelvreg::images
