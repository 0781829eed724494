#include "runtime/IniText.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr int hexadecimal = 16;

bool isControl(char letter) { return static_cast<unsigned char>(letter) < ' '; }

// `marks` are characters that mean something where the text stands.
std::string escaped(std::string_view text, std::string_view marks) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char letter = text[at];
    const bool isEdge = letter == ' ' && (at == 0 || at + 1 == text.size());
    if (isControl(letter) || letter == '%' || isEdge ||
        marks.find(letter) != std::string_view::npos) {
      const auto byte = static_cast<unsigned char>(letter);
      result += {'%', digits[byte / hexadecimal], digits[byte % hexadecimal]};
    } else {
      result += letter;
    }
  }
  return result;
}

// What is no escape stands for itself: a person may have written the line.
std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    unsigned byte = 0;
    const std::string_view digits = text.substr(at + 1, 2);
    const auto end =
        std::from_chars(digits.data(), digits.data() + digits.size(), byte, hexadecimal);
    if (text[at] == '%' && digits.size() == 2 && end.ptr == digits.data() + 2) {
      result += static_cast<char>(byte);
      at += 2;
    } else {
      result += text[at];
    }
  }
  return result;
}

std::string escapedName(std::string_view name) { return escaped(name, "=[;"); }

bool isHeader(std::string_view line) { return line.starts_with('[') && line.ends_with(']'); }

// The name of a line; std::nullopt if it is a comment or no setting.
std::optional<std::string> nameOf(std::string_view line) {
  const std::size_t end = line.find('=');
  if (end == std::string_view::npos || line.starts_with(';')) {
    return std::nullopt;
  }
  return unescaped(trim(line.substr(0, end)));
}

bool isNamed(std::string_view line, std::string_view name) {
  const auto found = nameOf(line);
  return found && lowerCase(*found) == lowerCase(name);
}

}  // namespace

IniText::IniText(std::string_view text) : sections(1) {
  for (std::string_view line : split(text, "\n")) {
    line = trim(line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0)));
    if (isHeader(line)) {
      sections.push_back({.header = std::string(line), .lines = {}});
    } else {
      sections.back().lines.emplace_back(line);
    }
  }
  // What stands behind the end of the last line is no line.
  std::vector<std::string>& last = sections.back().lines;
  if (!last.empty() && last.back().empty()) {
    last.pop_back();
  }
}

const IniText::Section* IniText::find(std::string_view name) const {
  const std::string wanted = "[" + lowerCase(name) + "]";
  const auto found = std::ranges::find_if(
      sections, [&wanted](const Section& section) { return lowerCase(section.header) == wanted; });
  return found == sections.end() ? nullptr : &*found;
}

std::string IniText::value(std::string_view section, std::string_view name) const {
  if (const Section* found = find(section)) {
    for (const std::string& line : found->lines) {
      if (isNamed(line, name)) {
        return unescaped(trim(std::string_view(line).substr(line.find('=') + 1)));
      }
    }
  }
  return {};
}

std::vector<std::string> IniText::names(std::string_view section) const {
  std::vector<std::string> result;
  if (const Section* found = find(section)) {
    for (const std::string& line : found->lines) {
      if (auto name = nameOf(line)) {
        result.push_back(std::move(*name));
      }
    }
  }
  return result;
}

void IniText::set(std::string_view section, std::string_view name, std::string_view value) {
  const Section* known = find(section);
  if (known == nullptr) {
    sections.push_back({.header = "[" + std::string(section) + "]", .lines = {}});
    known = &sections.back();
  }
  std::vector<std::string>& lines =
      sections[static_cast<std::size_t>(known - sections.data())].lines;
  const std::string line = escapedName(name) + "=" + escaped(value, "");
  const auto found =
      std::ranges::find_if(lines, [name](const std::string& each) { return isNamed(each, name); });
  if (found != lines.end()) {
    *found = line;
    return;
  }
  // In front of the blank lines that part it from the next section.
  auto end = lines.end();
  while (end != lines.begin() && (end - 1)->empty()) {
    --end;
  }
  lines.insert(end, line);
}

void IniText::remove(std::string_view section, std::string_view name) {
  if (const Section* found = find(section)) {
    std::erase_if(sections[static_cast<std::size_t>(found - sections.data())].lines,
                  [name](const std::string& line) { return isNamed(line, name); });
  }
}

std::string IniText::text() const {
  std::string result;
  for (const Section& section : sections) {
    if (!section.header.empty()) {
      result += section.header + "\r\n";
    }
    for (const std::string& line : section.lines) {
      result += line + "\r\n";
    }
  }
  return result;
}

}  // namespace zelvreg
