// By what a hive's lists of subkeys tell names apart without their records.
#ifndef ZELVREG_MACHINE_HIVE_NAME_HASH_H
#define ZELVREG_MACHINE_HIVE_NAME_HASH_H

#include <cstdint>
#include <string_view>

namespace zelvreg::machine {

// Of the upper-case name, as the lists of Windows XP and later ("lh") have it.
std::uint32_t hashOfName(std::u16string_view name);

// The first four letters, as the lists of older systems ("lf") have them; 0 if one of them does not
// fit into a byte.
std::uint32_t hintOfName(std::u16string_view name);

// Whether a list may give this hint for this name. Its letters are in the case of the stored name.
bool mayBeHintOf(std::uint32_t hint, std::u16string_view name);

}  // namespace zelvreg::machine

#endif
