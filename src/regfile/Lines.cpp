#include "regfile/Lines.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "unicode/Unicode.h"

namespace zelvreg::regfile {
namespace {

using Encoding = Form::Encoding;

static_assert(std::endian::native == std::endian::little, "UTF-16LE is read as it lies in memory");

constexpr std::string_view utf16BigEndianMark = "\xFE\xFF";

bool isAligned(std::string_view bytes) {
  return reinterpret_cast<std::uintptr_t>(bytes.data()) % alignof(char16_t) == 0;
}

std::size_t findLineFeed(std::string_view text) { return text.find('\n'); }

// By bytes, since the library has a quick search only for these. Such a byte may be half of another
// unit.
std::size_t findLineFeed(std::u16string_view text) {
  const std::string_view bytes(reinterpret_cast<const char*>(text.data()),
                               text.size() * sizeof(char16_t));
  std::size_t at = bytes.find('\n');
  while (at != std::string_view::npos && text[at / sizeof(char16_t)] != u'\n') {
    at = bytes.find('\n', at + 1);
  }
  return at == std::string_view::npos ? at : at / sizeof(char16_t);
}

// A line from the start of `text`, with its end. `text` keeps the rest.
template <typename Unit>
std::basic_string_view<Unit> takeLine(std::basic_string_view<Unit>& text) {
  const std::size_t end = findLineFeed(text);
  const std::basic_string_view<Unit> taken =
      text.substr(0, end == std::basic_string_view<Unit>::npos ? end : end + 1);
  text.remove_prefix(taken.size());
  return taken;
}

// What ends a line, cut off it.
template <typename Unit>
std::u16string_view takeEnding(std::basic_string_view<Unit>& line) {
  if (!line.ends_with(Unit{'\n'})) {
    return {};
  }
  line.remove_suffix(1);
  if (!line.ends_with(Unit{'\r'})) {
    return u"\n";
  }
  line.remove_suffix(1);
  return u"\r\n";
}

}  // namespace

Lines::Lines(std::string_view bytes, DecodeNarrow narrow)
    : decodeNarrow(narrow), rest(bytes), room(unitsBehind) {
  if (rest.starts_with(utf16BigEndianMark)) {
    fail(1, "the file is UTF-16 with the high byte first; save it as UTF-16LE or as UTF-8");
    return;
  }
  if (rest.starts_with(utf16Mark)) {
    beginWide();
  } else {
    fileForm.hasByteOrderMark = rest.starts_with(utf8Mark);
    rest.remove_prefix(fileForm.hasByteOrderMark ? utf8Mark.size() : 0);
    const bool isRegedit4 = !fileForm.hasByteOrderMark && rest.starts_with("REGEDIT4");
    fileForm.encoding = isRegedit4 ? Encoding::Regedit4 : Encoding::Utf8;
  }
  if (!noted) {
    readHeader();
  }
}

void Lines::beginWide() {
  rest.remove_prefix(utf16Mark.size());
  const std::size_t count = rest.size() / sizeof(char16_t);
  if (isAligned(rest)) {
    units = {reinterpret_cast<const char16_t*>(rest.data()), count};
  } else {
    copiedUnits.resize(count);
    std::memcpy(copiedUnits.data(), rest.data(), count * sizeof(char16_t));
    units = copiedUnits;
  }
  if (rest.size() % sizeof(char16_t) != 0) {
    fail(1 + static_cast<std::size_t>(std::ranges::count(units, u'\n')),
         "the file ends in half a character");
  }
}

void Lines::readHeader() {
  const bool isRead = next();
  if (noted) {
    return;
  }
  std::u16string_view header(room.data(), isRead ? length : 0);
  header = header.substr(0, header.find_last_not_of(u" \t") + 1);
  fileForm.hasCarriageReturns = lineEnding == u"\r\n";
  if (header != (fileForm.encoding == Encoding::Regedit4 ? regedit4Header : version5Header)) {
    fail(1,
         "this is no registry file; it must begin with \"Windows Registry Editor Version 5.00\" or "
         "\"REGEDIT4\"");
  }
}

bool Lines::next() {
  const bool isWide = fileForm.encoding == Encoding::Utf16;
  if (noted || (isWide ? units.empty() : rest.empty())) {
    return false;
  }
  ++lineNumber;
  if (isWide) {
    nextWide();
  } else {
    nextNarrow();
  }
  return !noted;
}

void Lines::nextWide() {
  std::u16string_view wide = takeLine(units);
  lineEnding = takeEnding(wide);
  take(wide);
}

void Lines::nextNarrow() {
  std::string_view narrow = takeLine(rest);
  lineEnding = takeEnding(narrow);
  decode(narrow);
}

void Lines::decode(std::string_view text) {
  constexpr const char* wrong = "a character is not valid in the file's encoding";
  char16_t* decoded = roomFor(text.size());
  length = asciiInto(decoded, text);
  if (length == text.size()) {
    return;
  }
  if (fileForm.encoding == Encoding::Regedit4) {
    const auto wide = decodeNarrow(text);
    if (!wide) {
      fail(lineNumber, wrong);
      return;
    }
    take(*wide);
    return;
  }
  length = utf16Into(decoded, text);
  if (!isPlainUtf8(text)) {
    fail(lineNumber, wrong);
  }
}

void Lines::take(std::u16string_view text) {
  std::copy(text.begin(), text.end(), roomFor(text.size()));
  length = text.size();
}

char16_t* Lines::roomFor(std::size_t count) {
  if (count + unitsBehind > room.size()) {
    room.resize(2 * count + unitsBehind);
  }
  return room.data();
}

void Lines::fail(std::size_t inLine, const char* what) { noted = {inLine, what}; }

}  // namespace zelvreg::regfile
