// The wide form of the narrow texts that calls are given.
#ifndef ZELVREG_MACHINE_WIDE_TEXT_H
#define ZELVREG_MACHINE_WIDE_TEXT_H

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "machine/CodePage.h"

namespace zelvreg::machine {

// Short plain text, which almost all of it is, takes no memory of its own. The text may be null.
class WideText {
 public:
  WideText(const CodePage& page, LPCSTR text);
  WideText(const WideText&) = delete;
  WideText& operator=(const WideText&) = delete;
  ~WideText() = default;
  [[nodiscard]] std::u16string_view view() const { return wide; }

 private:
  static constexpr std::size_t usualSize = 512;
  std::array<char16_t, usualSize> usual;  // not filled beforehand
  std::u16string longer;
  std::u16string_view wide;
};

}  // namespace zelvreg::machine

#endif
