// Replacing files so that a reader, or the next run after a power cut, sees either all of the old
// content or all of the new.
#ifndef ZELVREG_MACHINE_ATOMIC_FILE_H
#define ZELVREG_MACHINE_ATOMIC_FILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {

// New content written beside a file, on the disk, and not yet in its place. Several can be prepared
// before the first is put in place, since what fails nearly always fails here.
class AtomicFile {
 public:
  // Writes the content. The folder must exist; a link is followed to the file that it names. Throws
  // MachineError; nothing is left behind then.
  AtomicFile(const std::filesystem::path& file, std::string_view content);
  // The same for content that `write` puts into the file it is given, which is there and empty.
  // What `write` throws is passed on.
  using WriteContent = std::function<void(const std::filesystem::path& beside)>;
  AtomicFile(const std::filesystem::path& file, const WriteContent& write);
  // The file's present content, to be put under the name with ".bak" behind it. Where the file
  // system can, it is no copy but a second name of the file.
  static AtomicFile backupOf(const std::filesystem::path& file);
  // Without replace() the old file stays.
  ~AtomicFile();
  AtomicFile(AtomicFile&& other) noexcept;
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  AtomicFile& operator=(AtomicFile&&) = delete;

  // Puts the new content in place. Throws MachineError; the old file stands then.
  void replace();

 private:
  friend void replaceTogether(std::vector<AtomicFile>& files, const std::filesystem::path& note);

  // Makes an empty file beside `file` that only its owner may read.
  explicit AtomicFile(std::filesystem::path file);
  // Gives it the permissions of `model` and brings it to the disk.
  void finish(const std::filesystem::path& model) const;

  std::filesystem::path target;
  std::filesystem::path written;  // empty once it is in place
};

// Puts all of them in place, or none. `note` is a file of their folder that stands only while they
// are replaced: it names those that are still to come. Throws MachineError; the old files stand
// then, unless the first was in place already: in that case finishReplacing() brings the others.
void replaceTogether(std::vector<AtomicFile>& files, const std::filesystem::path& note);

// Ends what a process that was stopped in the middle of it has begun. Nothing happens without a
// note. Throws MachineError; another call can end it then.
void finishReplacing(const std::filesystem::path& note);

// Both steps at once.
void replaceFile(const std::filesystem::path& file, std::string_view content);

// The whole content of a file. Throws MachineError.
std::string readWholeFile(const std::filesystem::path& file);

}  // namespace zelvreg::machine

#endif
