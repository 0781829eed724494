#include "keys/ValueData.h"

#include "text/Wide.h"

namespace zelvreg {

LONG ValueData::read(HKEY key, std::string_view valueName) {
  const Wide name(valueName);
  longer.clear();
  size = sizeof usual;
  LONG status = RegQueryValueExW(key, name.get(), nullptr, &dataType,
                                 reinterpret_cast<BYTE*>(usual.data()), &size);
  while (status == ERROR_MORE_DATA) {
    // Room for a last odd byte too. Somebody may write more in the meantime.
    longer.resize(size / sizeof(char16_t) + 1);
    size = static_cast<DWORD>(longer.size() * sizeof(char16_t));
    status = RegQueryValueExW(key, name.get(), nullptr, &dataType,
                              reinterpret_cast<BYTE*>(longer.data()), &size);
  }
  if (status != ERROR_SUCCESS) {
    size = 0;
    dataType = REG_NONE;
  }
  return status;
}

std::string ValueData::text() const { return utf8(untilNul(units())); }

}  // namespace zelvreg
