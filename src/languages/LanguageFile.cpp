#include "languages/LanguageFile.h"

#include "runtime/FileSystemObject.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

std::string_view untilEqualSign(std::string_view text) { return text.substr(0, text.find('=')); }

// What stands behind a second equal sign is lost.
std::string valueIn(std::string_view line) {
  const std::size_t nameEnd = untilEqualSign(line).size();
  if (nameEnd == line.size()) {
    return {};
  }
  return replaceAll(untilEqualSign(line.substr(nameEnd + 1)), "\"", "");
}

}  // namespace

std::string ReadLangValue(const std::string& file, std::string_view section, std::string_view key) {
  const std::string header = "[" + lowerCase(section) + "]";
  const std::string wanted = lowerCase(key);
  bool isOn = false;
  auto stream = fileSystemObject::TextStream::openTextFile(file);
  while (!stream.atEndOfStream()) {
    const std::string whole = stream.readLine();
    const std::string_view line = trim(whole);
    const std::string lowered = lowerCase(line);
    isOn = isOn || lowered == header;
    if (isOn && !line.empty() && trim(untilEqualSign(lowered)) == wanted) {
      return valueIn(line);
    }
  }
  return {};
}

std::string languageFolder(const Form42& form) { return form.programFolder + "\\lang"; }

std::string languagePath(const Form42& form, const std::string& fileName) {
  return languageFolder(form) + "\\" + fileName;
}

std::string readLanguageText(const Form42& form, std::string_view section, std::string_view key) {
  return ReadLangValue(languagePath(form, form.langFileName), section, key);
}

}  // namespace zelvreg
