#include "machine/base/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>

#include "machine/base/FileDescriptor.h"
#include "machine/base/FileTraits.h"
#include "machine/base/MachineError.h"

namespace zelvreg::machine {

namespace {

// Not to be found by chance: what bears it is removed without a question.
constexpr std::string_view mark = ".zelvreg-";
constexpr std::string_view unique = "XXXXXX";  // replaced by letters that no other file has
constexpr std::size_t longestName = 200;       // of the target, so that there is room for both

[[noreturn]] void refuseWrite(const std::filesystem::path& file, int error) {
  throw MachineError(file.string() + " cannot be written: " + std::strerror(error) +
                     "; make room or give the right to write there, and try again");
}

[[noreturn]] void refuseOther(const std::filesystem::path& file) {
  throw MachineError(file.string() +
                     ": was written by another program in the meantime; open the disk again");
}

std::filesystem::path behindLinks(const std::filesystem::path& file) {
  std::error_code error;
  std::filesystem::path real = std::filesystem::canonical(file, error);
  return error ? file : real;
}

int givePermissionsOfNewFile(int file) {
  const mode_t mask = umask(0);
  umask(mask);
  return fchmod(file, 0666 & ~mask) == 0 ? 0 : errno;
}

bool writeAll(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(file, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// A note may come with a folder from anybody: it may name nothing but a file of this folder, and
// one that was written to replace it.
void refuseOthers(const std::filesystem::path& note, const std::string& written,
                  const std::string& target) {
  const bool isPlain = target != "." && target != ".." &&
                       target.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
  if (!isPlain || target.empty() || !AtomicFile::isBeside(written, target)) {
    throw MachineError(note.string() +
                       ": names files that this program did not write; take it away, and rename "
                       "by hand what it lists if it is to be kept");
  }
}

}  // namespace

AtomicFile::AtomicFile(std::filesystem::path file) : target(std::move(file)) {
  std::string name = "." + target.filename().string().substr(0, longestName);
  name = (target.parent_path() / name.append(mark).append(unique)).string();
  const FileDescriptor out(mkostemp(name.data(), O_CLOEXEC));
  if (!out.isOpen()) refuseWrite(target, errno);
  written = name;
}

AtomicFile::AtomicFile(const std::filesystem::path& file, const WriteContent& write)
    : AtomicFile(behindLinks(file)) {
  write(written);
  finish();
}

AtomicFile::AtomicFile(const std::filesystem::path& file, std::string_view content)
    : AtomicFile(file, [&](const std::filesystem::path& beside) {
        const FileDescriptor out(open(beside.c_str(), O_WRONLY | O_CLOEXEC));
        if (!out.isOpen() || !writeAll(out.get(), content)) refuseWrite(file, errno);
      }) {}

AtomicFile AtomicFile::copyOf(const std::filesystem::path& file, const FileStamp& stamp,
                              const std::filesystem::path& target) {
  AtomicFile copy(target);
  unlink(copy.written.c_str());
  const bool isSecondName = link(file.c_str(), copy.written.c_str()) == 0;
  if (!isSecondName) copy.copyFrom(file);
  if (stampOf(isSecondName ? copy.written : file) != stamp) refuseOther(file);
  return copy;
}

void AtomicFile::copyFrom(const std::filesystem::path& file) const {
  std::error_code error;
  if (!std::filesystem::copy_file(file, written, error)) refuseWrite(target, error.value());
  const FileDescriptor original = openPlainFile(file);
  const FileDescriptor out = openPlainFile(written);
  int failure = original.isOpen() && out.isOpen() ? 0 : errno;
  if (failure == 0) failure = copyTraits(original.get(), out.get());
  if (failure == 0) failure = copyTimes(original.get(), out.get());
  if (failure == 0 && fsync(out.get()) != 0) failure = errno;
  if (failure != 0) refuseWrite(target, failure);
}

void AtomicFile::finish() const {
  const FileDescriptor out(open(written.c_str(), O_RDONLY | O_CLOEXEC));
  if (!out.isOpen()) refuseWrite(target, errno);
  const FileDescriptor old = openPlainFile(target);
  const int failure =
      old.isOpen() ? copyTraits(old.get(), out.get()) : givePermissionsOfNewFile(out.get());
  if (failure != 0) refuseWrite(target, failure);
  if (fsync(out.get()) != 0) refuseWrite(target, errno);
}

bool AtomicFile::isBeside(std::string_view name, std::string_view target) {
  const std::string start = "." + std::string(target.substr(0, longestName)).append(mark);
  return name.size() == start.size() + unique.size() && name.starts_with(start);
}

AtomicFile::~AtomicFile() {
  if (!written.empty()) unlink(written.c_str());
}

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : target(std::move(other.target)), written(std::exchange(other.written, {})) {}

void AtomicFile::replace() {
  if (rename(written.c_str(), target.c_str()) != 0) refuseWrite(target, errno);
  wasReplaced();
}

void AtomicFile::replaceJust(const FileStamp& stamp) {
  if (stampOf(target) != stamp) refuseOther(target);
  const auto exchange = [this] {
    return renameat2(AT_FDCWD, written.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0;
  };
  if (!exchange()) {
    // Not every file system can; what comes between these two calls is not seen there.
    replace();
    return;
  }
  // Between the two calls another file may have come, which must not go.
  if (stampOf(written) != stamp) {
    if (!exchange()) leave();
    refuseOther(target);
  }
  wasReplaced();
}

void AtomicFile::wasReplaced() {
  // A rename between two names of one file leaves both, and an exchange leaves the old file.
  unlink(written.c_str());
  written.clear();
  // Not every file system can write out a folder; the content itself is on the disk by now.
  const FileDescriptor folder(
      open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.isOpen()) fsync(folder.get());
}

void replaceTogether(std::vector<AtomicFile>& files, const std::filesystem::path& note) {
  if (files.size() < 2) {
    for (AtomicFile& file : files) file.replace();
    return;
  }
  // Relative, so that the folder may be moved in between.
  const std::filesystem::path folder = note.parent_path();
  std::string lines;
  for (const AtomicFile& file : files) {
    for (const std::filesystem::path& path : {file.written, file.target}) {
      std::error_code error;
      lines += std::filesystem::proximate(path, folder, error).string() + "\n";
      if (error) refuseWrite(note, error.value());
    }
  }
  replaceFile(note, lines);
  for (AtomicFile& file : files) {
    try {
      file.replace();
    } catch (const MachineError&) {
      if (&file == &files.front()) {
        unlink(note.c_str());
      } else {
        // They stay for finishReplacing().
        for (AtomicFile& left : files) left.written.clear();
      }
      throw;
    }
  }
  unlink(note.c_str());
}

bool finishReplacing(const std::filesystem::path& note) {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(note, error))) return false;
  const std::filesystem::path folder = note.parent_path();
  std::istringstream lines(readWholeFile(note));
  std::string written;
  std::string target;
  while (std::getline(lines, written) && std::getline(lines, target)) {
    refuseOthers(note, written, target);
    const std::filesystem::path beside = folder / written;
    if (!std::filesystem::exists(beside, error)) continue;  // in place already
    if (rename(beside.c_str(), (folder / target).c_str()) != 0) refuseWrite(folder / target, errno);
  }
  if (unlink(note.c_str()) != 0) refuseWrite(note, errno);
  return true;
}

void removeLeftovers(const std::filesystem::path& file) {
  const std::filesystem::path folder = file.parent_path();
  const std::string name = file.filename().string();
  std::vector<std::filesystem::path> leftovers;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (AtomicFile::isBeside(entry.path().filename().string(), name) &&
        std::filesystem::is_regular_file(entry.symlink_status(error))) {
      leftovers.push_back(entry.path());
    }
  }
  for (const std::filesystem::path& leftover : leftovers) unlink(leftover.c_str());
}

void replaceFile(const std::filesystem::path& file, std::string_view content) {
  AtomicFile(file, content).replace();
}

}  // namespace zelvreg::machine
