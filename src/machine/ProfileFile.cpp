#include "machine/ProfileFile.h"

#include <algorithm>

#include "machine/CaseFold.h"

namespace zelvreg::machine {

namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

ProfileFile::ProfileFile(std::string_view content, const CodePage& codePage) : page(codePage) {
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    std::string_view line = content.substr(0, end);
    content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(parseLine(line));
  }
}

ProfileFile::Line ProfileFile::parseLine(std::string_view text) const {
  Line line;
  line.text = text;
  const std::string_view content = trimmed(text);
  if (content.empty() || content[0] == ';') return line;
  if (content[0] == '[') {
    line.kind = Line::Kind::Section;
    line.name = trimmed(content.substr(1, content.find(']') - 1));
    return line;
  }
  const std::size_t equals = content.find('=');
  line.kind = Line::Kind::Entry;
  line.name = trimmed(content.substr(0, equals));
  line.hasValue = equals != std::string_view::npos;
  if (line.hasValue) line.value = trimmed(content.substr(equals + 1));
  return line;
}

bool ProfileFile::sameName(std::string_view first, std::string_view second) const {
  return compareNames(page.decode(trimmed(first)), page.decode(trimmed(second))) == 0;
}

ProfileFile::Range ProfileFile::range(std::string_view section) const {
  const auto isHead = [](const Line& line) { return line.kind == Line::Kind::Section; };
  const auto head = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
    return isHead(line) && sameName(line.name, section);
  });
  if (head == lines.end()) return {};
  const auto next = std::find_if(head + 1, lines.end(), isHead);
  return {static_cast<std::size_t>(head - lines.begin()) + 1,
          static_cast<std::size_t>(next - lines.begin())};
}

std::optional<std::size_t> ProfileFile::find(std::string_view section, std::string_view key) const {
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    if (lines[at].kind == Line::Kind::Entry && sameName(lines[at].name, key)) return at;
  }
  return std::nullopt;
}

std::vector<std::string> ProfileFile::sections() const {
  std::vector<std::string> names;
  for (const Line& line : lines) {
    if (line.kind == Line::Kind::Section) names.push_back(line.name);
  }
  return names;
}

std::vector<std::string> ProfileFile::keys(std::string_view section) const {
  std::vector<std::string> names;
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    if (lines[at].kind == Line::Kind::Entry && lines[at].hasValue) names.push_back(lines[at].name);
  }
  return names;
}

std::vector<std::string> ProfileFile::entries(std::string_view section) const {
  std::vector<std::string> texts;
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    const Line& line = lines[at];
    if (line.kind != Line::Kind::Entry) continue;
    texts.push_back(line.hasValue ? line.name + "=" + line.value : line.name);
  }
  return texts;
}

std::optional<std::string> ProfileFile::value(std::string_view section,
                                              std::string_view key) const {
  const auto at = find(section, key);
  if (!at) return std::nullopt;
  return lines[*at].value;
}

void ProfileFile::set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string name(trimmed(key));
  const Line line = parseLine(name + "=" + std::string(value));
  if (const auto at = find(section, key)) {
    lines[*at] = line;
    return;
  }
  Range place = range(section);
  if (place.end == 0) {
    if (!lines.empty() && !trimmed(lines.back().text).empty()) lines.push_back(parseLine(""));
    lines.push_back(parseLine("[" + std::string(trimmed(section)) + "]"));
    place = {lines.size(), lines.size()};
  }
  // The empty lines in front of the next section stay there.
  while (place.end > place.first && trimmed(lines[place.end - 1].text).empty()) --place.end;
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place.end), line);
}

void ProfileFile::removeKey(std::string_view section, std::string_view key) {
  const auto at = find(section, key);
  if (at) lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(*at));
}

void ProfileFile::removeSection(std::string_view section) {
  const Range lineRange = range(section);
  if (lineRange.end == 0) return;
  lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(lineRange.first) - 1,
              lines.begin() + static_cast<std::ptrdiff_t>(lineRange.end));
}

std::string ProfileFile::content() const {
  std::string text;
  for (const Line& line : lines) text += line.text + "\r\n";
  return text;
}

}  // namespace zelvreg::machine
