// Reads and replaces whole files. Content is bytes, whatever they mean; a path is UTF-8. Failures
// are return values: nothing here throws.
#ifndef ZELVREG_RUNTIME_FILE_TEXT_H
#define ZELVREG_RUNTIME_FILE_TEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The bytes of a file; std::nullopt if it cannot be opened or read to its end.
std::optional<std::string> readFileText(const std::string& path);

// Whether there is no file of this name. False also if that cannot be told, such as on a disk that
// answers with an error.
bool isSurelyMissing(const std::string& path);

// Deletes a file, which may be missing. False if it is still there, or may be.
bool deleteFile(const std::string& path);

// The bytes of a file that is to be changed. Empty if there is no such file. std::nullopt if there
// is one but it cannot be read: then it must not be replaced.
std::optional<std::string> contentToKeep(const std::string& path);

// Who may read a file that is written. OfItsFolder: it keeps the access list of the file that it
// replaces, or a new file inherits that of its folder. Administrators: only Administrators and
// SYSTEM.
enum class FileReaders : std::uint8_t { OfItsFolder, Administrators };

// Creates or replaces a file. The bytes are written to a new file beside it, under an unused name,
// which is then renamed: at every moment the old or the new content is there. If any step fails,
// the old file is unchanged and the result is false.
bool replaceFileText(const std::string& path, std::string_view bytes,
                     FileReaders readers = FileReaders::OfItsFolder);

}  // namespace zelvreg

#endif
