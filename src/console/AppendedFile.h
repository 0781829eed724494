// A file of this system that several programs may add lines to at the same time.
#ifndef ZELVREG_CONSOLE_APPENDED_FILE_H
#define ZELVREG_CONSOLE_APPENDED_FILE_H

#include <cstdint>
#include <string>
#include <string_view>

namespace zelvreg::console {

class AppendedFile {
 public:
  // Makes the file if it is not there. Throws std::runtime_error with one line if it cannot be
  // opened.
  explicit AppendedFile(const std::string& path);
  ~AppendedFile();
  AppendedFile(const AppendedFile&) = delete;
  AppendedFile& operator=(const AppendedFile&) = delete;

  // Adds the bytes at the end in one call of the system, so that no other program's bytes come
  // between them. False if they could not be written, or not all of them.
  bool append(std::string_view bytes);

 private:
  std::intptr_t handle;
};

// Which process this is, for lines of several in one file.
std::uint32_t processNumber();

}  // namespace zelvreg::console

#endif
