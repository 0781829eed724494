// A value whose type is known only when it is read.
#ifndef ZELVREG_KEYS_VARIANT_H
#define ZELVREG_KEYS_VARIANT_H

#include <windows.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace zelvreg {

// std::monostate is the empty value.
using Variant =
    std::variant<std::monostate, std::string, std::int16_t, std::int32_t, bool, std::vector<BYTE>>;

// A value as text: numbers become signed decimal text, booleans
// "True" and "False", bytes are read as UTF-16 (a last odd one is left out); the empty value is the
// empty text.
std::string textOf(const Variant& value);

}  // namespace zelvreg

#endif
