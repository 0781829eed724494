// Replacing files so that a reader, or the next run after a power cut, sees either all of the old
// content or all of the new.
#ifndef ZELVREG_MACHINE_BASE_ATOMIC_FILE_H
#define ZELVREG_MACHINE_BASE_ATOMIC_FILE_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/base/PlainFile.h"

namespace zelvreg::machine {

// New content written beside a file, on the disk, and not yet in its place. Several can be prepared
// before the first is put in place, since what fails nearly always fails here.
class AtomicFile {
 public:
  // Writes the content. The folder must exist; a link is followed to the file that it names. Throws
  // MachineError; no file is left over then.
  AtomicFile(const std::filesystem::path& file, std::string_view content);
  // The same for content that `write` puts into the file it is given, which is there and empty.
  // What `write` throws is passed on.
  using WriteContent = std::function<void(const std::filesystem::path& beside)>;
  AtomicFile(const std::filesystem::path& file, const WriteContent& write);
  // The file's present content, to be put under another name beside it. Where the file system can,
  // it is no copy but a second name of the file. The file must be the one that `stamp` was taken
  // of; MachineError if it is not.
  static AtomicFile copyOf(const std::filesystem::path& file, const FileStamp& stamp,
                           const std::filesystem::path& target);
  // Without replace() the old file stays.
  ~AtomicFile();
  AtomicFile(AtomicFile&& other) noexcept;
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  AtomicFile& operator=(AtomicFile&&) = delete;

  // Puts the new content in place. Throws MachineError; the old file stands then.
  void replace();
  // The same only as long as the old file is the one that `stamp` was taken of: MachineError if
  // somebody else has put another in its place, which stands then. A second name of the old file
  // must be there, since this one goes.
  void replaceJust(const FileStamp& stamp);

  [[nodiscard]] const std::filesystem::path& place() const { return target; }
  [[nodiscard]] const std::filesystem::path& beside() const { return written; }
  // Leaves the file beside for who reads the note that names it.
  void leave() { written.clear(); }

  // Whether a name is one that this class gives a file beside one of the name `target`.
  static bool isBeside(std::string_view name, std::string_view target);

 private:
  friend void replaceTogether(std::vector<AtomicFile>& files, const std::filesystem::path& note);

  // Makes an empty file beside `file` that only its owner may read.
  explicit AtomicFile(std::filesystem::path file);
  // Gives it the traits of the file that it is to replace, or those of a new one, and brings it to
  // the disk.
  void finish() const;
  void copyFrom(const std::filesystem::path& file) const;
  void wasReplaced();

  std::filesystem::path target;
  std::filesystem::path written;  // empty once it is in place
};

// Puts all of them in place, or none. `note` is a file of their folder that stands only while they
// are replaced: it names those that are still to come. Throws MachineError; the old files stand
// then, unless the first was in place already: in that case finishReplacing() brings the others.
void replaceTogether(std::vector<AtomicFile>& files, const std::filesystem::path& note);

// Ends what a process that was stopped in the middle of it has begun; whether there was anything.
// Nothing happens without a note. Throws MachineError; another call can end it then.
bool finishReplacing(const std::filesystem::path& note);

// Removes what a process that was stopped has left beside a file, whether that is there or not.
void removeLeftovers(const std::filesystem::path& file);

// Both steps at once.
void replaceFile(const std::filesystem::path& file, std::string_view content);

}  // namespace zelvreg::machine

#endif
