#include "languages/readlangfile.h"

#include <algorithm>
#include <utility>

#include "form/Form42.h"
#include "languages/Charset.h"
#include "runtime/CodePageText.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// More than anybody needs. Anybody may have written the list, so there is a limit.
constexpr std::size_t mostLanguages = 1000;

std::string_view untilEqualSign(std::string_view text) { return text.substr(0, text.find('=')); }

// What follows a second equal sign is lost.
std::string valueIn(std::string_view line) {
  const std::size_t nameEnd = untilEqualSign(line).size();
  if (nameEnd == line.size()) {
    return {};
  }
  return replaceAll(untilEqualSign(line.substr(nameEnd + 1)), "\"", "");
}

std::string valueOf(std::string_view content, std::string_view section, std::string_view key) {
  const std::string header = "[" + lowerCase(section) + "]";
  const std::string wanted = lowerCase(key);
  bool isOn = false;
  for (std::string_view line : split(content, "\n")) {
    line = trim(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0)));
    isOn = isOn || lowerCase(line) == header;
    if (isOn && !line.empty() && trim(lowerCase(untilEqualSign(line))) == wanted) {
      return valueIn(line);
    }
  }
  return {};
}

// The list of languages as bytes, entry by entry.
class LanguageList {
 public:
  LanguageList(std::string listBytes, bool isListUtf8)
      : bytes(std::move(listBytes)), isUtf8(isListUtf8), rest(bytes), isMore(!rest.empty()) {}

  [[nodiscard]] bool hasMore() const { return isMore; }

  LanguageFields takeEntry() {
    const std::size_t end = entryEnd();
    const auto fields = split(rest.substr(0, end), ",");
    const UINT page = pageOf(fields.size() > 1 ? fields[1] : "");
    LanguageFields texts;
    for (const std::string_view field : fields) {
      texts.push_back(textOfCodePage(field, page));
    }
    isMore = end != std::string_view::npos;
    rest.remove_prefix(isMore ? end + 1 : rest.size());
    return texts;
  }

 private:
  // Which "|" ends an entry depends on the charset after its name. No character has a comma as
  // its second byte.
  [[nodiscard]] std::size_t entryEnd() const {
    const UINT page = pageOf(rest.substr(std::min(rest.find(','), rest.size() - 1) + 1));
    std::size_t start = 0;
    std::size_t end = rest.find('|');
    while (end != std::string_view::npos && !isAlone(rest.substr(start, end + 1 - start), page)) {
      start = end + 1;
      end = rest.find('|', start);
    }
    return end;
  }

  // Whether the last byte is a character of its own, not the second byte of one.
  static bool isAlone(std::string_view text, UINT page) {
    const std::string before = textOfCodePage(text.substr(0, text.size() - 1), page);
    return textOfCodePage(text, page) == before + text.back();
  }

  [[nodiscard]] UINT pageOf(std::string_view charset) const {
    return isUtf8 ? CP_UTF8 : codePageOfCharset(leadingInteger(charset));
  }

  std::string bytes;
  bool isUtf8;
  std::string_view rest;
  bool isMore;
};

}  // namespace

std::string ReadLangValue(const std::string& file, std::string_view section, std::string_view key,
                          int charset) {
  return LanguageFile(file, charset).value(section, key);
}

LanguageFile::LanguageFile(const std::string& file, int charset)
    : LanguageFile(ofBytes(readFileText(file).value_or(""), charset)) {}

LanguageFile LanguageFile::ofBytes(std::string_view bytes, int charset) {
  return LanguageFile(ownText(bytes, codePageOfCharset(charset)));
}

std::string LanguageFile::value(std::string_view section, std::string_view key) const {
  return valueOf(content, section, key);
}

std::vector<LanguageFields> readLanguageList(const std::string& file) {
  return languageListOf(readFileText(file).value_or(""));
}

std::vector<LanguageFields> languageListOf(std::string_view bytes) {
  const bool isUtf8 = bytes.starts_with(utf8Mark);
  const std::string_view lines = bytes.substr(isUtf8 ? utf8Mark.size() : 0);
  LanguageList list(valueOf(lines, "lang", "zelvreg"), isUtf8);
  std::vector<LanguageFields> entries;
  while (list.hasMore() && entries.size() < mostLanguages) {
    entries.push_back(list.takeEntry());
  }
  return entries;
}

std::string languageFolder(const Form42& form) { return form.programFolder + "\\lang"; }

std::string languagePath(const Form42& form, const std::string& fileName) {
  return languageFolder(form) + "\\" + fileName;
}

LanguageFile languageInUse(const Form42& form) {
  return {languagePath(form, form.langFileName), form.langCode};
}

std::string readLanguageText(const Form42& form, std::string_view section, std::string_view key) {
  return languageInUse(form).value(section, key);
}

}  // namespace zelvreg
