#include "machine/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <utility>

#include "machine/FileDescriptor.h"
#include "machine/Machine.h"

namespace zelvreg::machine {

namespace {

constexpr mode_t permissionBits = 07777;

[[noreturn]] void refuseWrite(const std::filesystem::path& file, int error) {
  throw MachineError(file.string() + " cannot be written: " + std::strerror(error) +
                     "; make room or give the right to write there, and try again");
}

std::filesystem::path behindLinks(const std::filesystem::path& file) {
  std::error_code error;
  std::filesystem::path real = std::filesystem::canonical(file, error);
  return error ? file : real;
}

// The file keeps who may read and write it; a new one gets what the umask leaves.
bool copyPermissions(const std::filesystem::path& from, int to) {
  struct stat old {};
  if (stat(from.c_str(), &old) == 0) {
    // Giving a file to its old owner takes rights that an ordinary user need not have.
    [[maybe_unused]] const int ignored = fchown(to, old.st_uid, old.st_gid);
    return fchmod(to, old.st_mode & permissionBits) == 0;
  }
  const mode_t mask = umask(0);
  umask(mask);
  return fchmod(to, 0666 & ~mask) == 0;
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

// A folder may come from somebody else: its note moves files of that folder only.
void refuseOutside(const std::filesystem::path& note, const std::filesystem::path& name) {
  if (name.empty() || name != name.filename() || name == "..") {
    throw MachineError(note.string() + ": names " + name.string() +
                       ", which is no file of this folder; rename the files that it lists by hand "
                       "and delete it");
  }
}

}  // namespace

AtomicFile::AtomicFile(std::filesystem::path file) : target(std::move(file)) {
  std::string name =
      (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
  const FileDescriptor out(mkostemp(name.data(), O_CLOEXEC));
  if (!out.isOpen()) refuseWrite(target, errno);
  written = name;
}

AtomicFile::AtomicFile(const std::filesystem::path& file, const WriteContent& write)
    : AtomicFile(behindLinks(file)) {
  write(written);
  finish(target);
}

AtomicFile::AtomicFile(const std::filesystem::path& file, std::string_view content)
    : AtomicFile(file, [&](const std::filesystem::path& beside) {
        const FileDescriptor out(open(beside.c_str(), O_WRONLY | O_CLOEXEC));
        if (!out.isOpen() || !writeAll(out.get(), content)) refuseWrite(file, errno);
      }) {}

AtomicFile AtomicFile::backupOf(const std::filesystem::path& file) {
  const std::filesystem::path original = behindLinks(file);
  AtomicFile backup(std::filesystem::path(original.string() + ".bak"));
  unlink(backup.written.c_str());
  if (link(original.c_str(), backup.written.c_str()) == 0) return backup;
  std::error_code error;
  if (!std::filesystem::copy_file(original, backup.written, error)) {
    refuseWrite(backup.target, error.value());
  }
  backup.finish(original);
  return backup;
}

void AtomicFile::finish(const std::filesystem::path& model) const {
  const FileDescriptor out(open(written.c_str(), O_RDONLY | O_CLOEXEC));
  if (!out.isOpen() || !copyPermissions(model, out.get()) || fsync(out.get()) != 0) {
    refuseWrite(target, errno);
  }
}

AtomicFile::~AtomicFile() {
  if (!written.empty()) unlink(written.c_str());
}

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : target(std::move(other.target)), written(std::exchange(other.written, {})) {}

void AtomicFile::replace() {
  if (rename(written.c_str(), target.c_str()) != 0) refuseWrite(target, errno);
  // A rename between two names of one file leaves both.
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
      lines += std::filesystem::proximate(path, folder).string() + "\n";
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

void finishReplacing(const std::filesystem::path& note) {
  std::error_code error;
  if (!std::filesystem::exists(note, error)) return;
  const std::filesystem::path folder = note.parent_path();
  std::istringstream lines(readWholeFile(note));
  std::string written;
  std::string target;
  while (std::getline(lines, written) && std::getline(lines, target)) {
    refuseOutside(note, written);
    refuseOutside(note, target);
    const std::filesystem::path beside = folder / written;
    if (!std::filesystem::exists(beside, error)) continue;  // in place already
    if (rename(beside.c_str(), (folder / target).c_str()) != 0) refuseWrite(folder / target, errno);
  }
  if (unlink(note.c_str()) != 0) refuseWrite(note, errno);
}

void replaceFile(const std::filesystem::path& file, std::string_view content) {
  AtomicFile(file, content).replace();
}

std::string readWholeFile(const std::filesystem::path& file) {
  const FileDescriptor in(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  std::string content;
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t size = in.isOpen() ? read(in.get(), buffer.data(), buffer.size()) : -1;
    if (size == 0) return content;
    if (size < 0 && in.isOpen() && errno == EINTR) continue;
    if (size < 0) {
      throw MachineError(file.string() + " cannot be read: " + std::strerror(errno) +
                         "; check that it is a file and that you may read it");
    }
    content.append(buffer.data(), static_cast<std::size_t>(size));
  }
}

}  // namespace zelvreg::machine
