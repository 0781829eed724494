#include "runtime/FileSystemObject.h"

#include <windows.h>

#include "runtime/DriveAtHand.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "text/Wide.h"

namespace zelvreg::fileSystemObject {

namespace {

// For a path that the last call did not find. Where it said plainly that nothing is there, the
// drive need not be asked for.
bool mayBeThere(const std::string& path) {
  const DWORD error = GetLastError();
  return error != static_cast<DWORD>(ERROR_FILE_NOT_FOUND) &&
         error != static_cast<DWORD>(ERROR_PATH_NOT_FOUND) && !isDriveAtHand(path);
}

}  // namespace

Answer ask(const std::string& path, Shares shares) {
  if (!mayBeOpened(path, shares)) {
    return {};
  }
  const DWORD attributes = GetFileAttributesW(Wide(path).get());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const bool isPossible = mayBeThere(path);
    return {isPossible, isPossible};
  }
  const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return {!isFolder, isFolder};
}

bool fileExists(const std::string& path, Shares shares) { return ask(path, shares).isFile; }

bool folderExists(const std::string& path, Shares shares) { return ask(path, shares).isFolder; }

TextStream TextStream::openTextFile(const std::string& path) {
  TextStream stream;
  stream.content = ownText(readFileText(path).value_or(""));
  return stream;
}

std::string TextStream::readLine() {
  const std::size_t end = content.find('\n', position);
  const bool hasEnd = end != std::string::npos;
  std::string line = content.substr(position, hasEnd ? end - position : end);
  position = hasEnd ? end + 1 : content.size();
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return line;
}

}  // namespace zelvreg::fileSystemObject
