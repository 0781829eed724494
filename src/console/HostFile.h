// Files of the computer that the console program itself runs on.
#ifndef ZELVREG_CONSOLE_HOST_FILE_H
#define ZELVREG_CONSOLE_HOST_FILE_H

#include <string>
#include <string_view>

namespace zelvreg::console {

// Creates or replaces a file. The bytes are written to a new file, which is then renamed, so that
// the old file is unchanged if that fails. A link, a pipe or a device is written through and stays
// what it is. Throws std::runtime_error with one line.
void writeHostFile(const std::string& path, std::string_view bytes);

// The bytes of a file. Throws std::runtime_error with one line.
std::string readHostFile(const std::string& path);

}  // namespace zelvreg::console

#endif
