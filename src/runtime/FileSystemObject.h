// What the system's file object answers: whether a file or a folder is there, and text by lines.
// A path ends at its first NUL. Nothing here throws.
#ifndef ZELVREG_RUNTIME_FILE_SYSTEM_OBJECT_H
#define ZELVREG_RUNTIME_FILE_SYSTEM_OBJECT_H

#include <string>

#include "runtime/Shares.h"

namespace zelvreg::fileSystemObject {

// On a computer that is not running, a drive that is not at hand may hold anything: a path there
// counts as an existing file and as an existing folder.
bool fileExists(const std::string& path, Shares shares = Shares::Refused);
bool folderExists(const std::string& path, Shares shares = Shares::Refused);

// A text file in the machine's code page, or in marked UTF-8, read line by line; lines end in CR LF
// or LF, the last one with or without.
class TextStream {
 public:
  // A file that cannot be read gives a stream that is at its end.
  static TextStream openTextFile(const std::string& path);

  [[nodiscard]] bool atEndOfStream() const { return position >= content.size(); }
  // The next line without its end; the empty text at the end of the stream.
  std::string readLine();

 private:
  std::string content;
  std::size_t position = 0;
};

}  // namespace zelvreg::fileSystemObject

#endif
