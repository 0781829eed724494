#include "languages/LanguageFile.h"

#include "runtime/FileSystemObject.h"
#include "text/Text.h"

namespace zelvreg {

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
    const auto names = split(lowered, "=");
    if (isOn && !names.empty() && trim(names.front()) == wanted) {
      const auto parts = split(line, "=");
      return parts.size() > 1 ? replaceAll(parts[1], "\"", "") : std::string();
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
