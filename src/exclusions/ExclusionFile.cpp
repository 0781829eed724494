#include "exclusions/ExclusionFile.h"

#include "form/Form42.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "scan/OwnPaths.h"
#include "text/Characters.h"

namespace zelvreg {
namespace {

constexpr std::size_t shortestFile = 10;
constexpr std::string_view lineEnds = "\r\n";

std::string textOf(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text.append(line).append(lineEnds);
  }
  return text;
}

// Takes the end of a line, or the comma, that closes an entry.
void takeEnd(std::string_view& text) {
  if (text.starts_with("\r\n")) {
    text.remove_prefix(2);
  } else if (!text.empty()) {
    text.remove_prefix(1);
  }
}

std::string takeQuoted(std::string_view& text) {
  text.remove_prefix(1);
  const auto end = std::min(text.find('"'), text.size());
  std::string entry(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  // The text between the quote and the end of the entry is lost.
  text.remove_prefix(std::min(text.find_first_of(",\r\n"), text.size()));
  takeEnd(text);
  return entry;
}

std::string takePlain(std::string_view& text) {
  const auto end = std::min(text.find_first_of(",\r\n"), text.size());
  std::string_view entry = text.substr(0, end);
  entry = entry.substr(0, entry.find_last_not_of(' ') + 1);
  text.remove_prefix(end);
  takeEnd(text);
  return std::string(entry);
}

}  // namespace

std::vector<std::string> exclusionsIn(std::string_view text) {
  std::vector<std::string> entries;
  if (characterCount(firstCharacters(text, shortestFile)) < shortestFile) {
    return entries;
  }
  while (!text.empty()) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    entries.push_back(text.starts_with('"') ? takeQuoted(text) : takePlain(text));
  }
  return entries;
}

std::optional<std::vector<std::string>> readExclusions(const Form42& form) {
  const auto bytes = contentToKeep(exclusionPath(form));
  return bytes ? std::optional(exclusionsIn(ownText(*bytes))) : std::nullopt;
}

bool appendExclusions(const Form42& form, const std::vector<std::string>& entries) {
  return entries.empty() || appendOwnText(exclusionPath(form), textOf(entries));
}

bool deleteExclusions(const Form42& form) { return deleteFile(exclusionPath(form)); }

bool writeExclusions(const Form42& form, const std::vector<std::string>& lines) {
  return replaceFileText(exclusionPath(form), ownBytes(textOf(lines)));
}

}  // namespace zelvreg
