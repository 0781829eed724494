// The data of one value, read whole.
#ifndef ZELVREG_KEYS_VALUE_DATA_H
#define ZELVREG_KEYS_VALUE_DATA_H

#include <windows.h>

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "roots/ValueTypes.h"

namespace zelvreg {

// Whether a call says that a key or a value is not there. Any other failure leaves that open.
inline bool isAbsent(LONG status) {
  return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

// Almost all data fit into a buffer of fixed size, so they are read without asking for their size
// first.
class ValueData {
 public:
  // 0, or the code of the call that failed. After a failure there are no data and no type.
  LONG read(HKEY key, std::string_view valueName);

  [[nodiscard]] DWORD type() const { return dataType; }
  // The data as UTF-16, terminators included; a last odd byte is left out.
  [[nodiscard]] std::u16string_view units() const {
    return {longer.empty() ? usual.data() : longer.data(), size / sizeof(char16_t)};
  }
  [[nodiscard]] std::span<const BYTE> bytes() const {
    return {reinterpret_cast<const BYTE*>(units().data()), size};
  }
  // What the data are as a text: UTF-16 up to its first NUL.
  [[nodiscard]] std::string text() const;
  [[nodiscard]] bool isSingleText() const { return zelvreg::isSingleText(dataType); }

 private:
  std::array<char16_t, 512> usual;  // not filled beforehand
  std::u16string longer;
  DWORD size = 0;
  DWORD dataType = REG_NONE;
};

}  // namespace zelvreg

#endif
