#include "machine/computer/ProfileFile.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "machine/base/CaseFold.h"
#include "machine/base/Trimming.h"

namespace zelvreg::machine {

namespace {

constexpr std::string_view utf16Mark = "\xFF\xFE";

constexpr std::u16string_view blanks = u" \t\r";

bool sameName(std::u16string_view first, std::u16string_view second) {
  return isSameName(trimmed(first, blanks), trimmed(second, blanks));
}

// Where the first of these bytes ends a line, and they are whole units from the content's begin.
std::size_t findEnd(std::string_view content, std::string_view lineEnd) {
  std::size_t at = content.find(lineEnd);
  while (at != std::string_view::npos && at % lineEnd.size() != 0) {
    at = content.find(lineEnd, at + 1);
  }
  return std::min(at, content.size());
}

}  // namespace

ProfileFile::ProfileFile(std::string_view content, const CodePage& codePage)
    : page(codePage), isUtf16(content.starts_with(utf16Mark)) {
  if (isUtf16) content.remove_prefix(utf16Mark.size());
  const std::string lineEnd = bytesOf(u"\n");
  const std::string beforeEnd = bytesOf(u"\r");
  while (!content.empty()) {
    const std::size_t end = findEnd(content, lineEnd);
    std::string_view bytes = content.substr(0, end);
    content.remove_prefix(std::min(content.size(), end + lineEnd.size()));
    if (bytes.ends_with(beforeEnd)) bytes.remove_suffix(beforeEnd.size());
    lines.push_back(lineOf(textOf(bytes)));
    lines.back().bytes = bytes;
  }
}

std::string ProfileFile::bytesOf(std::u16string_view text) const {
  static_assert(std::endian::native == std::endian::little, "such files are UTF-16LE");
  return isUtf16 ? std::string(reinterpret_cast<const char*>(text.data()),
                               text.size() * sizeof(char16_t))
                 : page.encode(text);
}

std::u16string ProfileFile::textOf(std::string_view bytes) const {
  if (!isUtf16) return page.decode(bytes);
  std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return text;
}

ProfileFile::Line ProfileFile::lineOf(std::u16string_view text) const {
  Line line;
  line.bytes = bytesOf(text);
  const std::u16string_view content = trimmed(text, blanks);
  if (content.empty() || content[0] == u';') return line;
  if (content[0] == u'[') {
    line.kind = Line::Kind::Section;
    line.name = trimmed(content.substr(1, content.find(u']') - 1), blanks);
    return line;
  }
  const std::size_t equals = content.find(u'=');
  line.kind = Line::Kind::Entry;
  line.name = trimmed(content.substr(0, equals), blanks);
  line.hasValue = equals != std::u16string_view::npos;
  if (line.hasValue) line.value = trimmed(content.substr(equals + 1), blanks);
  return line;
}

bool ProfileFile::isEmpty(const Line& line) const {
  return trimmed(textOf(line.bytes), blanks).empty();
}

ProfileFile::Range ProfileFile::range(std::u16string_view section) const {
  const auto isHead = [](const Line& line) { return line.kind == Line::Kind::Section; };
  const auto head = std::find_if(lines.begin(), lines.end(), [&](const Line& line) {
    return isHead(line) && sameName(line.name, section);
  });
  if (head == lines.end()) return {};
  const auto next = std::find_if(head + 1, lines.end(), isHead);
  return {static_cast<std::size_t>(head - lines.begin()) + 1,
          static_cast<std::size_t>(next - lines.begin())};
}

std::optional<std::size_t> ProfileFile::find(std::u16string_view section,
                                             std::u16string_view key) const {
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    if (lines[at].kind == Line::Kind::Entry && sameName(lines[at].name, key)) return at;
  }
  return std::nullopt;
}

std::vector<std::u16string> ProfileFile::sections() const {
  std::vector<std::u16string> names;
  for (const Line& line : lines) {
    if (line.kind == Line::Kind::Section) names.push_back(line.name);
  }
  return names;
}

std::vector<std::u16string> ProfileFile::keys(std::u16string_view section) const {
  std::vector<std::u16string> names;
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    if (lines[at].kind == Line::Kind::Entry && lines[at].hasValue) names.push_back(lines[at].name);
  }
  return names;
}

std::vector<std::u16string> ProfileFile::entries(std::u16string_view section) const {
  std::vector<std::u16string> texts;
  const Range lineRange = range(section);
  for (std::size_t at = lineRange.first; at < lineRange.end; ++at) {
    const Line& line = lines[at];
    if (line.kind != Line::Kind::Entry) continue;
    texts.push_back(line.hasValue ? line.name + u"=" + line.value : line.name);
  }
  return texts;
}

std::optional<std::u16string> ProfileFile::value(std::u16string_view section,
                                                 std::u16string_view key) const {
  const auto at = find(section, key);
  if (!at) return std::nullopt;
  return lines[*at].value;
}

void ProfileFile::set(std::u16string_view section, std::u16string_view key,
                      std::u16string_view value) {
  const Line line = lineOf(std::u16string(trimmed(key, blanks)) + u"=" + std::u16string(value));
  if (const auto at = find(section, key)) {
    lines[*at] = line;
    return;
  }
  Range place = range(section);
  if (place.end == 0) {
    if (!lines.empty() && !isEmpty(lines.back())) lines.push_back(lineOf(u""));
    lines.push_back(lineOf(u"[" + std::u16string(trimmed(section, blanks)) + u"]"));
    place = {lines.size(), lines.size()};
  }
  // The empty lines in front of the next section stay there.
  while (place.end > place.first && isEmpty(lines[place.end - 1])) --place.end;
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place.end), line);
}

void ProfileFile::removeKey(std::u16string_view section, std::u16string_view key) {
  const auto at = find(section, key);
  if (at) lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(*at));
}

void ProfileFile::removeSection(std::u16string_view section) {
  const Range lineRange = range(section);
  if (lineRange.end == 0) return;
  lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(lineRange.first) - 1,
              lines.begin() + static_cast<std::ptrdiff_t>(lineRange.end));
}

std::string ProfileFile::content() const {
  std::string bytes(isUtf16 ? utf16Mark : "");
  const std::string lineEnd = bytesOf(u"\r\n");
  for (const Line& line : lines) bytes += line.bytes + lineEnd;
  return bytes;
}

}  // namespace zelvreg::machine
