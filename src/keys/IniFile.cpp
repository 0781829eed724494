#include "keys/IniFile.h"

#include "runtime/FileSystemObject.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

bool isHeaderOf(const std::string& line, const std::string& section) {
  return line.starts_with('[') && (contains(line, section + " ") || contains(line, section + "]"));
}

}  // namespace

void fReadIniFuzzy(const std::string& file, std::string& section, const std::string& key,
                   const std::string& fallback, std::string& result, LONG& rc, Shares shares) {
  result = fallback;
  rc = ERROR_FILE_NOT_FOUND;
  if (!mayBeOpened(file, shares)) {
    return;
  }
  const std::string wantedSection = upperCase(section);
  const std::string wantedKey = upperCase(key);
  std::string header;
  auto stream = fileSystemObject::TextStream::openTextFile(file);
  while (!stream.atEndOfStream()) {
    const std::string line = upperCase(trim(stream.readLine()));
    if (line.starts_with('[')) {
      if (!header.empty()) {
        return;
      }
      header = isHeaderOf(line, wantedSection) ? line : "";
    } else if (!header.empty() && line.starts_with(wantedKey) && contains(line, "=")) {
      result = line.substr(line.find('=') + 1);
      section = header.substr(1, header.find(']') - 1);
      rc = ERROR_SUCCESS;
      return;
    }
  }
}

}  // namespace zelvreg
