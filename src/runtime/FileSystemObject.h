// Does what the system's file object does: whether a file or a folder exists, and text line by
// line. A path ends at its first NUL. Nothing here throws.
#ifndef ZELVREG_RUNTIME_FILE_SYSTEM_OBJECT_H
#define ZELVREG_RUNTIME_FILE_SYSTEM_OBJECT_H

#include <string>

#include "runtime/Shares.h"

namespace zelvreg::fileSystemObject {

// What there is at a path. A path that `shares` forbids does not exist. On an offline disk nobody
// knows what is on a drive that was not given: a path there counts as an existing file and as an
// existing folder.
struct Answer {
  bool isFile = false;
  bool isFolder = false;
};
Answer ask(const std::string& path, Shares shares);
bool fileExists(const std::string& path, Shares shares = Shares::Refused);
bool folderExists(const std::string& path, Shares shares = Shares::Refused);

// A text file, encoded as runtime/OwnText.h tells, read line by line. Lines end in CR LF or LF; the
// last one may end without. The whole file is read when it is opened.
class TextStream {
 public:
  // If the file cannot be read, the stream is empty.
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
