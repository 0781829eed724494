// Files of the computer that the console program itself runs on.
#ifndef ZELVREG_CONSOLE_HOST_FILE_H
#define ZELVREG_CONSOLE_HOST_FILE_H

#include <string>
#include <string_view>

namespace zelvreg::console {

// Puts a file of these bytes at the path; one that is there is replaced by writing beside it and
// renaming, so that the old file stands if that fails. A link, a pipe or a device stays what it is
// and is written through. Throws std::runtime_error with one line.
void writeHostFile(const std::string& path, std::string_view bytes);

// The bytes of a file. Throws std::runtime_error with one line.
std::string readHostFile(const std::string& path);

}  // namespace zelvreg::console

#endif
