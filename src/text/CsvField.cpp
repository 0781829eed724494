#include "text/CsvField.h"

#include <string_view>

#include "text/Characters.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// A spreadsheet runs what begins like a formula. An apostrophe before it makes it text.
// Some take the wide forms of the signs as well.
bool looksLikeFormula(std::string_view text) {
  return !text.empty() && std::u32string_view(U"=+-@\t\r＝＋－＠").find(characterAt(text, 0)) !=
                              std::u32string_view::npos;
}

// Programs that read the table take plain UTF-8 only.
std::string plainUtf8(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::string_view next = text.substr(0, firstCharacter(text).size);
    if (isPlainUtf8(next)) {
      plain += next;
    } else {
      appendCharacter(plain, replacementCharacter);
    }
    text.remove_prefix(next.size());
  }
  return plain;
}

}  // namespace

std::string csvField(const std::string& exactText) {
  std::string text = (looksLikeFormula(exactText) ? "'" : "") + plainUtf8(exactText);
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char character : text) {
    quoted.append(character == '"' ? 2 : 1, character);
  }
  return quoted + "\"";
}

}  // namespace zelvreg
