#include "console/WideOutput.h"

#include <algorithm>

#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

// What a console takes in one piece on every Windows.
constexpr std::size_t pieceSize = 4096;

unsigned valueOf(char byte) { return static_cast<unsigned char>(byte); }

// How many bytes at the end of a text begin a character without ending it.
std::size_t unfinished(std::string_view text) {
  constexpr std::size_t longest = 4;
  for (std::size_t size = 1; size < longest && size <= text.size(); ++size) {
    const unsigned byte = valueOf(text[text.size() - size]);
    if (byte >= 0xC0) {
      const std::size_t whole = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
      return size < whole ? size : 0;
    }
    if (byte < 0x80) {
      return 0;
    }
  }
  return 0;
}

}  // namespace

bool WideOutput::writeWhole() {
  const std::size_t size = pending.size() - unfinished(pending);
  const std::u16string units = utf16(std::string_view(pending).substr(0, size));
  pending.erase(0, size);
  for (std::u16string_view rest = units; !rest.empty();) {
    std::u16string_view piece = rest.substr(0, pieceSize);
    piece.remove_suffix(piece.size() < rest.size() && isHighSurrogate(piece.back()) ? 1 : 0);
    if (!write(piece)) {
      return false;
    }
    rest.remove_prefix(piece.size());
  }
  return true;
}

WideOutput::int_type WideOutput::overflow(int_type byte) {
  if (!traits_type::eq_int_type(byte, traits_type::eof())) {
    pending += traits_type::to_char_type(byte);
  }
  return pending.size() < pieceSize || writeWhole() ? traits_type::not_eof(byte)
                                                    : traits_type::eof();
}

std::streamsize WideOutput::xsputn(const char* bytes, std::streamsize count) {
  pending.append(bytes, static_cast<std::size_t>(count));
  return pending.size() < pieceSize || writeWhole() ? count : 0;
}

int WideOutput::sync() { return writeWhole() ? 0 : -1; }

}  // namespace zelvreg::console
