// Whole files as text, read and replaced.
#ifndef ZELVREG_RUNTIME_FILE_TEXT_H
#define ZELVREG_RUNTIME_FILE_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace zelvreg {

// The bytes of a file; none when it cannot be opened or read to its end.
std::optional<std::string> readFileText(const std::string& path);

// Puts a file of these bytes in the place of one that may be there: it is written beside it,
// under a name that nothing had, and renamed, so that the old or the new content stands at every
// moment. False, and the old file as it was, if any step fails.
bool replaceFileText(const std::string& path, std::string_view bytes);

// The same for a file with this text behind what it holds; a file that is not there is made.
bool appendFileText(const std::string& path, std::string_view bytes);
// And for one with this text over the beginning of what it holds.
bool overwriteFileText(const std::string& path, std::string_view bytes);

}  // namespace zelvreg

#endif
