// How a file of the computer that the console program itself runs on is named and replaced.
#ifndef ZELVREG_CONSOLE_HOST_REPLACE_H
#define ZELVREG_CONSOLE_HOST_REPLACE_H

#include <filesystem>
#include <string>
#include <string_view>

namespace zelvreg::console {

// The path that a text of the command line names.
std::filesystem::path hostPath(const std::string& text);

// Puts a file of these bytes at a path where a plain file is, or nothing: it is written under a
// name of its own beside it and renamed, and keeps who may read and write the old one. False, or
// std::runtime_error with one line, if that fails; the old file stands then.
bool replaceHostFile(const std::string& path, std::string_view bytes);

}  // namespace zelvreg::console

#endif
