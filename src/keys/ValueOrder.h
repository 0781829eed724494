// The order in which a key lists its values.
#ifndef ZELVREG_KEYS_VALUE_ORDER_H
#define ZELVREG_KEYS_VALUE_ORDER_H

#include <cstddef>
#include <string>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

// Puts values of an open key where they stood: `names` and, rising, their `positions` from 0 among
// all values. All others keep their order; where fewer are left, a value comes last. A system lists
// a value behind those that were there when it was made, so values are deleted and made again, one
// at a time, from the first on that stands elsewhere; none if all stand where they did. False if a
// value refuses that.
bool orderValues(const WideKey& key, const std::vector<std::u16string>& names,
                 const std::vector<std::size_t>& positions);

}  // namespace zelvreg

#endif
