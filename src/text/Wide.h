// Text for the wide calls of Windows, and from them. A returned pointer points into the text that
// was given, and lives as long as that. Sizes are in UTF-16 units. Nothing here fails.
#ifndef ZELVREG_TEXT_WIDE_H
#define ZELVREG_TEXT_WIDE_H

#include <windows.h>

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg {

// UTF-16 as a wide call takes it. The call sees it up to its first NUL.
inline LPCWSTR wideText(const std::u16string& text) {
  return reinterpret_cast<LPCWSTR>(text.c_str());
}

// The same for a call that is told the length. It may end anywhere, without a NUL.
inline LPCWSTR wideUnits(std::u16string_view text) {
  return reinterpret_cast<LPCWSTR>(text.data());
}

// The memory of a buffer of UTF-16 units that a wide call fills.
template <typename Buffer>
LPWSTR roomIn(Buffer& buffer) {
  return reinterpret_cast<LPWSTR>(buffer.data());
}

// A text up to its first NUL, which is what a call sees of it.
inline std::u16string utf16UntilNul(std::string_view text) {
  return utf16(text.substr(0, text.find('\0')));
}

// The text that a call has written, which must end in a NUL.
inline std::u16string_view untilNul(LPCWSTR text) {
  return reinterpret_cast<const char16_t*>(text);
}

// The data of a value as UTF-16. An odd last byte is dropped.
inline std::u16string unitsOf(std::span<const BYTE> data) {
  std::u16string units(data.size() / sizeof(char16_t), u'\0');
  std::copy_n(data.begin(), units.size() * sizeof(char16_t), reinterpret_cast<BYTE*>(units.data()));
  return units;
}

// One text for one call. Its pointers live as long as the object, usually as long as the expression
// that makes it. For Windows the text ends at its first NUL. Short texts, which almost all are,
// need no memory from the heap.
class Wide {
 public:
  explicit Wide(std::string_view text) {
    char16_t* units = usual.data();
    if (text.size() >= usual.size()) {
      longer.resize(text.size());
      units = longer.data();
    }
    size = utf16Into(units, text);
    units[size] = u'\0';
    wide = units;
  }
  Wide(const Wide&) = delete;
  Wide& operator=(const Wide&) = delete;
  ~Wide() = default;

  [[nodiscard]] LPCWSTR get() const { return reinterpret_cast<LPCWSTR>(wide); }
  [[nodiscard]] std::u16string_view view() const { return {wide, size}; }

 private:
  std::array<char16_t, 264> usual;  // not filled beforehand
  std::u16string longer;
  const char16_t* wide = nullptr;
  std::size_t size = 0;
};

}  // namespace zelvreg

#endif
