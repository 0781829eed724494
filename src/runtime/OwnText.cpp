#include "runtime/OwnText.h"

#include <algorithm>

#include "runtime/CodePageText.h"
#include "runtime/FileText.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// Line by line: the end of a line is no second byte in any code page, and half a character before
// it must not take the next line along.
std::string linesOfCodePage(std::string_view bytes, UINT codePage) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    text += textOfCodePage(bytes.substr(0, end), codePage);
    text += bytes.substr(end, 1);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return text;
}

std::string markedUtf8(std::string_view text) { return std::string(utf8Mark).append(text); }

}  // namespace

std::string ownBytes(std::string_view text) {
  const auto bytes = exactCodePageBytes(text);
  // Bytes that look like the mark would be read as UTF-8.
  return bytes && !bytes->starts_with(utf8Mark) ? *bytes : markedUtf8(text);
}

std::string ownText(std::string_view bytes, UINT codePage) {
  // By way of UTF-16, so that what is no UTF-8 becomes text as well.
  return bytes.starts_with(utf8Mark) ? utf8(utf16(bytes.substr(utf8Mark.size())))
                                     : linesOfCodePage(bytes, codePage);
}

std::string appendedOwnBytes(std::string_view bytes, std::string_view text) {
  const std::string whole = ownText(bytes).append(text);
  std::string appended(bytes);
  appended += bytes.starts_with(utf8Mark) ? std::string(text) : codePageBytes(text);
  return ownText(appended) == whole ? appended : ownBytes(whole);
}

bool appendOwnText(const std::string& path, std::string_view text) {
  const auto content = contentToKeep(path);
  return content && replaceFileText(path, appendedOwnBytes(*content, text));
}

}  // namespace zelvreg
