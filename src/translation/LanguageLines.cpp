#include "translation/LanguageLines.h"

#include <algorithm>

#include "runtime/CodePageText.h"
#include "runtime/OwnText.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

void readPair(LanguageLine& line) {
  const std::size_t equals = line.text.find('=');
  line.isPair = equals != std::string::npos;
  if (!line.isPair) {
    return;
  }
  line.key = trim(std::string_view(line.text).substr(0, equals));
  const std::string all = line.text.substr(equals + 1);
  line.value = replaceAll(std::string_view(all).substr(0, all.find('=')), "\"", "");
  line.losesText = line.value != all;
}

LanguageLine readLine(std::string_view bytes, UINT codePage) {
  LanguageLine line;
  line.whole = codePage == CP_UTF8 ? utf8(utf16(bytes)) : textOfCodePage(bytes, codePage);
  line.isExact = (codePage == CP_UTF8 ? line.whole : codePageBytes(line.whole, codePage)) == bytes;
  line.text = trim(line.whole);
  line.isHeader = line.text.starts_with('[') && line.text.ends_with(']');
  return line;
}

}  // namespace

std::vector<LanguageLine> linesOfLanguage(std::string_view bytes, UINT codePage) {
  const bool isUtf8 = bytes.starts_with(utf8Mark);
  bytes.remove_prefix(isUtf8 ? utf8Mark.size() : 0);
  std::vector<LanguageLine> lines;
  std::string section;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const bool hasReturn = end > 0 && bytes[end - 1] == '\r';
    LanguageLine line =
        readLine(bytes.substr(0, end - (hasReturn ? 1 : 0)), isUtf8 ? CP_UTF8 : codePage);
    line.number = lines.size() + 1;
    line.endsAsWindows = hasReturn || end == bytes.size();
    if (line.isHeader) {
      section = line.text.substr(1, line.text.size() - 2);
    } else {
      readPair(line);
    }
    line.section = section;
    lines.push_back(std::move(line));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return lines;
}

}  // namespace zelvreg
