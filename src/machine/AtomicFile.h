// Replacing files so that a reader, or the next run after a power cut, sees either all of the old
// content or all of the new.
#ifndef ZELVREG_MACHINE_ATOMIC_FILE_H
#define ZELVREG_MACHINE_ATOMIC_FILE_H

#include <filesystem>
#include <string>
#include <string_view>

namespace zelvreg::machine {

// New content written beside a file, on the disk, and not yet in its place. Several can be prepared
// before the first is put in place, since what fails nearly always fails here.
class AtomicFile {
 public:
  // Writes the content. The folder must exist; a link is followed to the file that it names. Throws
  // MachineError; nothing is left behind then.
  AtomicFile(const std::filesystem::path& file, std::string_view content);
  // Without replace() the old file stays.
  ~AtomicFile();
  AtomicFile(AtomicFile&& other) noexcept;
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  AtomicFile& operator=(AtomicFile&&) = delete;

  // Puts the new content in place. Throws MachineError; the old file stands then.
  void replace();

 private:
  std::filesystem::path target;
  std::filesystem::path written;  // empty once it is in place
};

// Both steps at once.
void replaceFile(const std::filesystem::path& file, std::string_view content);

// The whole content of a file. Throws MachineError.
std::string readWholeFile(const std::filesystem::path& file);

}  // namespace zelvreg::machine

#endif
