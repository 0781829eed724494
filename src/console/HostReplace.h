// How a file of the computer that the console program itself runs on is named and replaced.
#ifndef ZELVREG_CONSOLE_HOST_REPLACE_H
#define ZELVREG_CONSOLE_HOST_REPLACE_H

#include <filesystem>
#include <string>
#include <string_view>

namespace zelvreg::console {

// The path that a text of the command line names.
std::filesystem::path hostPath(const std::string& text);
// And back.
inline std::string hostText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

// Creates a file, or replaces a plain one. The bytes are written to a new file beside it, which is
// then renamed and keeps the access rights of the old one. If that fails, the old file is
// unchanged, and the result is false or a std::runtime_error with one line.
bool replaceHostFile(const std::string& path, std::string_view bytes);

}  // namespace zelvreg::console

#endif
