#include "machine/files/PathName.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "machine/base/CaseFold.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

// What a character is to a path.
enum class Part : std::uint8_t {
  Plain,       // of a name, wherever it stands
  End,         // of a name, but for the name's end
  Separator,   // between names
  Impossible,  // in no path
};

// Looked up for each character of each path.
constexpr auto partOf = [] {
  std::array<Part, 0x80> parts{};
  for (std::size_t unit = 0; unit < u' '; ++unit) parts[unit] = Part::Impossible;
  for (const char16_t unit : std::u16string_view(u"*?\"<>|:")) parts[unit] = Part::Impossible;
  for (const char16_t unit : std::u16string_view(u" .")) parts[unit] = Part::End;
  for (const char16_t unit : std::u16string_view(u"\\/")) parts[unit] = Part::Separator;
  return parts;
}();

Part partAt(std::u16string_view text, std::size_t at) {
  return text[at] < partOf.size() ? partOf[text[at]] : Part::Plain;
}

bool isLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

bool hasDrive(std::u16string_view text) {
  return text.size() >= 2 && isLetter(text[0]) && text[1] == u':';
}

PathName wrong(LONG error) {
  PathName path;
  path.error = error;
  return path;
}

void addName(PathName& path, std::u16string_view name) {
  if (name == u"..") {
    if (!path.names.empty()) path.names.resize(path.names.find_last_of(u'\\'));
    return;
  }
  // "." and names of dots alone are nothing.
  if (!name.empty() && (name.back() == u' ' || name.back() == u'.')) name = withoutEnd(name);
  if (name.find_first_not_of(u" .") != std::u16string_view::npos) {
    (path.names += u'\\') += name;
  }
}

// How much of a text that begins with a separator stands for itself: nothing but names, one
// separator in front of each.
std::size_t plainLength(std::u16string_view text) {
  std::size_t end = 0;
  while (end < text.size() && partAt(text, end) == Part::Separator) {
    Part last = Part::Separator;
    std::size_t at = end + 1;
    for (; at < text.size(); ++at) {
      const Part part = partAt(text, at);
      const bool goesOn = part == Part::Plain || (part == Part::End && last != Part::Separator);
      if (!goesOn) break;
      last = part;
    }
    const bool isNameWhole = at == text.size() || partAt(text, at) == Part::Separator;
    if (last != Part::Plain || !isNameWhole) break;
    end = at;
  }
  return end;
}

// False if a character is in no name.
bool addNames(PathName& path, std::u16string_view text) {
  path.endsInSeparator = !text.empty() && isSeparator(text.back());
  path.names.reserve(path.names.size() + text.size() + 1);
  if (!text.empty() && isSeparator(text.front())) {
    const std::size_t plain = plainLength(text);
    path.names.append(text, 0, plain);
    for (char16_t& unit : std::span(path.names).last(plain)) {
      unit = unit == u'/' ? u'\\' : unit;
    }
    text.remove_prefix(plain);
  }
  std::size_t start = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const Part part = partAt(text, at);
    if (part == Part::Separator) {
      addName(path, text.substr(start, at - start));
      start = at + 1;
    } else if (part == Part::Impossible) {
      return false;
    }
  }
  addName(path, text.substr(start));
  return true;
}

}  // namespace

std::u16string_view withoutEnd(std::u16string_view name) {
  const std::size_t last = name.find_last_not_of(u" .");
  return last == std::u16string_view::npos ? name : name.substr(0, last + 1);
}

PathName parsePath(std::u16string_view text, const PathName& current) {
  text = untilNul(text);
  if (text.starts_with(u"\\\\?\\") || text.starts_with(u"\\\\.\\")) {
    text.remove_prefix(4);
    if (!hasDrive(text)) return wrong(ERROR_PATH_NOT_FOUND);
  }
  if (text.empty()) return wrong(ERROR_PATH_NOT_FOUND);
  if (text.size() > 1 && isSeparator(text[0]) && isSeparator(text[1])) {
    return wrong(ERROR_PATH_NOT_FOUND);
  }
  PathName path;
  path.drive = current.drive;
  const bool namesDrive = hasDrive(text);
  if (namesDrive) {
    path.drive = static_cast<char>(text[0] & ~0x20);
    text.remove_prefix(2);
  }
  const bool fromRoot = !text.empty() && isSeparator(text[0]);
  if (!fromRoot && path.drive == current.drive) path.names = current.names;
  if (!addNames(path, text)) return wrong(ERROR_INVALID_NAME);
  return path;
}

PathName parseFullPath(std::u16string_view text) { return parsePath(text, PathName()); }

std::optional<std::u16string_view> namesBelow(const PathName& above, const PathName& path) {
  const std::u16string_view names = path.names;
  const std::size_t size = above.names.size();
  const bool isBelow = path.drive == above.drive && names.size() >= size &&
                       (names.size() == size || names[size] == u'\\') &&
                       isSameName(names.substr(0, size), above.names);
  return isBelow ? std::optional(names.substr(size)) : std::nullopt;
}

std::u16string_view takeLastPart(std::u16string_view& text) {
  const std::size_t end = text.find_last_of(u"\\/:");
  const std::size_t start = end == std::u16string_view::npos ? 0 : end + 1;
  const std::u16string_view last = text.substr(start);
  text = text.substr(0, start);
  return last;
}

}  // namespace zelvreg::machine
