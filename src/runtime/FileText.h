// Whole files as text, read and replaced.
#ifndef ZELVREG_RUNTIME_FILE_TEXT_H
#define ZELVREG_RUNTIME_FILE_TEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The bytes of a file; none when it cannot be opened or read to its end.
std::optional<std::string> readFileText(const std::string& path);

// The bytes of a file that is to be changed: the empty text for one that is not there, none for one
// that is there but cannot be read, as what it holds must not be lost.
std::optional<std::string> contentToKeep(const std::string& path);

// Who may read a file that is written: those that the access list of the file that it replaces
// says, or for a new one that of its folder; or administrators and the system alone.
enum class FileReaders : std::uint8_t { OfItsFolder, Administrators };

// Puts a file of these bytes in the place of one that may be there: it is written beside it,
// under a name that nothing had, and renamed, so that the old or the new content stands at every
// moment. False, and the old file as it was, if any step fails.
bool replaceFileText(const std::string& path, std::string_view bytes,
                     FileReaders readers = FileReaders::OfItsFolder);

}  // namespace zelvreg

#endif
