#include "json/JsonSource.h"

#include <algorithm>
#include <string_view>

#include "json/JsonPieces.h"

namespace zelvreg {
namespace {

constexpr std::size_t partSize = 65536;
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

}  // namespace

bool JsonSource::fill() {
  ready.clear();
  at = 0;
  while (ready.empty() && (stream || !unread.empty())) {
    const std::size_t kept = unread.size();
    unread.resize(kept + partSize);
    stream.read(unread.data() + kept, partSize);
    unread.resize(kept + static_cast<std::size_t>(stream.gcount()));
    std::string_view json = unread;
    if (isFirst && json.starts_with(utf8Mark)) {
      json.remove_prefix(utf8Mark.size());
    }
    isFirst = false;
    // Until the stream is at its end, the last of what was read may be the start of a piece.
    const std::size_t rest = stream ? longestPiece - 1 : 0;
    while (json.size() > rest) {
      const std::size_t plain = std::min(json.find('\\'), json.size());
      ready += json.substr(0, plain);
      json.remove_prefix(plain);
      if (json.size() <= rest) {
        break;
      }
      const JsonPiece piece = firstPiece(json);
      appendReadable(ready, json, piece);
      json.remove_prefix(piece.size);
    }
    unread = std::string(json);
  }
  return !ready.empty();
}

bool JsonSource::findNext() {
  constexpr std::string_view blanks = " \t\r\n";
  while (!atEnd() && blanks.find(current()) != std::string_view::npos) {
    advance();
  }
  return !atEnd();
}

}  // namespace zelvreg
