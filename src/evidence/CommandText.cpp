#include "evidence/CommandText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "text/Text.h"

namespace zelvreg {
namespace {

// The endings by which a text without quotes shows where its file ends.
constexpr std::array<std::string_view, 26> fileEndings{
    ".exe", ".dll", ".ocx", ".ovl", ".com", ".bat", ".cmd", ".cpl", ".scr",
    ".msi", ".msc", ".tlb", ".olb", ".ico", ".chm", ".hlp", ".sys", ".drv",
    ".lnk", ".vbs", ".js",  ".ps1", ".jar", ".ttf", ".fon", ".url"};

// What may stand behind a file without a blank between.
constexpr std::string_view afterFile = " \t\",;:|/%@*";

// An extension of up to four characters as one number, without regard to case.
constexpr std::uint32_t numberOf(std::string_view ending) {
  std::uint32_t number = 0;
  for (const char character : ending) {
    const bool isCapital = character >= 'A' && character <= 'Z';
    number = number << 8U | static_cast<unsigned char>(isCapital ? character | 0x20 : character);
  }
  return number;
}

constexpr auto endingNumbers = [] {
  std::array<std::uint32_t, fileEndings.size()> numbers{};
  std::ranges::transform(fileEndings, numbers.begin(), numberOf);
  return numbers;
}();

bool isFileEnding(std::string_view end) {
  constexpr std::size_t longest = 4;
  return end.size() <= longest &&
         std::ranges::find(endingNumbers, numberOf(end)) != endingNumbers.end();
}

// Where the first file ends, by its extension. Every extension is ASCII, so bytes are compared.
std::optional<std::size_t> endOfFile(std::string_view text) {
  for (auto dot = text.find('.'); dot != std::string_view::npos; dot = text.find('.', dot + 1)) {
    for (const std::size_t size : {4U, 3U}) {
      const std::size_t end = dot + size;
      const bool isEnd = end == text.size() ||
                         (end < text.size() && afterFile.find(text[end]) != std::string_view::npos);
      if (isEnd && isFileEnding(text.substr(dot, size))) {
        return end;
      }
    }
  }
  return std::nullopt;
}

class Readings {
 public:
  void add(std::string_view text) {
    text = trim(text);
    const bool isNew = std::ranges::find(texts, text) == texts.end();
    if (!text.empty() && isNew && texts.size() < mostReadings) {
      texts.emplace_back(text);
    }
  }

  std::vector<std::string> texts;
};

// Quotes may stand around a part of the path only.
void addWithoutQuotes(Readings& readings, std::string_view text) {
  if (contains(text, "\"")) {
    const std::string bare = replaceAll(text, "\"", "");
    readings.add(std::string_view(bare).substr(0, endOfFile(bare).value_or(bare.size())));
  }
}

int hexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return -1;
}

// "%20" and its like, as they stand in a URL.
std::string decoded(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isCode = text[at] == '%' && at + 2 < text.size() && hexDigit(text[at + 1]) >= 0 &&
                        hexDigit(text[at + 2]) >= 0;
    result +=
        isCode ? static_cast<char>(hexDigit(text[at + 1]) * 16 + hexDigit(text[at + 2])) : text[at];
    at += isCode ? 2 : 0;
  }
  return result;
}

std::string pathOfUrl(std::string_view rest) {
  std::string path = replaceAll(decoded(rest), "/", "\\");
  const auto start = path.find_first_not_of('\\');
  path.erase(0, start == std::string::npos ? path.size() : start);
  return isDrivePath(path) ? path : "\\\\" + path;
}

// With a step upwards a device leads to anywhere; then the text stays as it is.
std::string pathOfDevice(std::string_view text, std::string_view device) {
  constexpr std::string_view network = "unc\\";
  if (contains(device, "..")) {
    return std::string(text);
  }
  return findIgnoringCase(device, network) == 0
             ? "\\\\" + std::string(device.substr(network.size()))
             : std::string(device);
}

// A path on a drive as file calls take it: with one kind of separator, one between two names, and
// no steps. Any other text stays as it is.
std::string normalPath(std::string path) {
  constexpr std::size_t rootSize = 3;
  const auto isOdd = [&] {
    for (std::size_t at = rootSize; at < path.size(); ++at) {
      const bool isEdge =
          path[at] == '\\' && std::string_view("\\. ").find(path[at - 1]) != std::string_view::npos;
      if (path[at] == '/' || isEdge || (path[at] == '.' && path[at - 1] == '\\')) {
        return true;
      }
    }
    return path[rootSize - 1] == '/';
  };
  if (!isDrivePath(path) || !isOdd()) {
    return path;
  }
  const std::string plain = replaceAll(path, "/", "\\");
  std::string result = plain.substr(0, rootSize);
  for (std::string_view name : split(std::string_view(plain).substr(rootSize), "\\")) {
    if (name == ".." && result.size() > rootSize) {
      result.resize(result.find_last_of('\\', result.size() - 2) + 1);
      continue;
    }
    const auto end = name.find_last_not_of(" .");
    name = name.substr(0, end == std::string_view::npos ? 0 : end + 1);
    if (!name.empty()) {
      result.append(name).append("\\");
    }
  }
  if (result.size() > rootSize && !plain.ends_with('\\')) {
    result.pop_back();
  }
  return result;
}

bool beginsWith(std::string_view text, std::string_view lowerCaseStart) {
  return findIgnoringCase(text.substr(0, lowerCaseStart.size()), lowerCaseStart) == 0;
}

// The prefixes of URLs and of the kernel.
std::string withoutPrefix(std::string_view text, const std::string& windowsFolder) {
  if (beginsWith(text, "file://")) {
    return pathOfUrl(text.substr(7));
  }
  for (const std::string_view prefix : {"\\??\\", "\\\\?\\", "\\\\.\\", "//?/"}) {
    if (text.starts_with(prefix)) {
      return pathOfDevice(text, text.substr(prefix.size()));
    }
  }
  for (const std::string_view prefix : {"\\systemroot\\", "systemroot\\"}) {
    if (beginsWith(text, prefix)) {
      return windowsFolder + "\\" + std::string(text.substr(prefix.size()));
    }
  }
  return std::string(text);
}

}  // namespace

CommandParts commandParts(std::string_view text) {
  text = trim(text);
  std::size_t end = 0;
  if (text.starts_with('"')) {
    end = std::min(text.find('"', 1), text.size());
    return {std::string(text.substr(1, end - 1)),
            std::string(trim(text.substr(std::min(end + 1, text.size()))))};
  }
  end = endOfFile(text).value_or(std::min(text.find(' '), text.size()));
  // A launcher is often named without its extension: the extension then is that of its argument.
  const std::size_t blank = std::min(text.find(' '), text.size());
  if (blank < end && text.substr(0, blank).find_first_of("\\/:.") == std::string_view::npos) {
    end = blank;
  }
  return {std::string(text.substr(0, end)), std::string(trim(text.substr(end)))};
}

std::vector<std::string> fileReadings(std::string_view text, TextIs kind) {
  Readings readings;
  text = trim(text);
  if (text.starts_with('"')) {
    readings.add(text.substr(1, std::min(text.find('"', 1), text.size()) - 1));
    addWithoutQuotes(readings, text);
    return std::move(readings.texts);
  }
  if (const auto end = endOfFile(text)) {
    readings.add(text.substr(0, *end));
  }
  readings.add(text);
  addWithoutQuotes(readings, text);
  for (auto cut = text.find(' '); kind == TextIs::Command && cut != std::string_view::npos;
       cut = text.find(' ', cut + 1)) {
    readings.add(text.substr(0, cut));
  }
  for (std::size_t cut = 0; cut < text.size(); ++cut) {
    const char character = text[cut];
    if (character == ',' || character == ';' || character == '|' || character == '"') {
      readings.add(text.substr(0, cut));
    }
  }
  return std::move(readings.texts);
}

std::string plainPath(std::string_view text, const std::string& windowsFolder) {
  text = trim(text);
  if (text.starts_with('@')) {
    text.remove_prefix(1);
  }
  return normalPath(isDrivePath(text) ? std::string(text) : withoutPrefix(text, windowsFolder));
}

bool isDrivePath(std::string_view path) {
  return path.size() > 2 && isLetter(path[0]) && path[1] == ':' && isSeparator(path[2]);
}

bool hasFileEnding(std::string_view path) {
  const std::string_view name = fileNameIn(path);
  const auto dot = name.rfind('.');
  return dot != std::string_view::npos && isFileEnding(name.substr(dot));
}

bool showsFileEnd(std::string_view path) { return endOfFile(fileNameIn(path)).has_value(); }

std::size_t nextSeparator(std::string_view path, std::size_t from) {
  while (from < path.size() && !isSeparator(path[from])) {
    ++from;
  }
  return from < path.size() ? from : std::string_view::npos;
}

std::size_t lastSeparator(std::string_view path) {
  std::size_t last = path.size();
  while (last > 0 && !isSeparator(path[last - 1])) {
    --last;
  }
  return last - 1;
}

std::string_view fileNameIn(std::string_view path) {
  const auto last = lastSeparator(path);
  return last == std::string_view::npos ? path : path.substr(last + 1);
}

std::string_view guidIn(std::string_view text) {
  constexpr std::string_view form = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  for (auto start = text.find('{'); start != std::string_view::npos;
       start = text.find('{', start + 1)) {
    const std::string_view guid = text.substr(start, form.size());
    const bool fits = guid.size() == form.size() &&
                      std::equal(form.begin(), form.end(), guid.begin(), [](char as, char is) {
                        return as == 'x' ? hexDigit(is) >= 0 : as == is;
                      });
    if (fits) {
      return guid;
    }
  }
  return {};
}

}  // namespace zelvreg
