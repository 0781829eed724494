// Text on its way into the system's wide calls and out of them.
#ifndef ZELVREG_TEXT_WIDE_H
#define ZELVREG_TEXT_WIDE_H

#include <windows.h>

#include <array>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg {

// UTF-16 as a wide call takes it.
inline LPCWSTR wideText(const std::u16string& text) {
  return reinterpret_cast<LPCWSTR>(text.c_str());
}

// The memory of a buffer of UTF-16 that a wide call fills.
template <typename Buffer>
LPWSTR roomIn(Buffer& buffer) {
  return reinterpret_cast<LPWSTR>(buffer.data());
}

// A text as a call takes it: to its first NUL.
inline std::u16string utf16UntilNul(std::string_view text) {
  return utf16(text.substr(0, text.find('\0')));
}

// The text that a call has written with a NUL behind it.
inline std::u16string_view untilNul(LPCWSTR text) {
  return reinterpret_cast<const char16_t*>(text);
}

// The UTF-16 that the data of a value hold; a last odd byte is left out.
inline std::u16string unitsOf(std::span<const BYTE> data) {
  std::u16string units(data.size() / sizeof(char16_t), u'\0');
  std::memcpy(units.data(), data.data(), units.size() * sizeof(char16_t));
  return units;
}

// One text for one call: it lives as long as the expression in which it is made. For the system it
// ends at its first NUL. Short text, which almost all is, takes no memory of its own.
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
