// The order in which a key lists its values.
#ifndef ZELVREG_KEYS_VALUE_ORDER_H
#define ZELVREG_KEYS_VALUE_ORDER_H

#include <cstddef>
#include <string>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

// Gives values of an open key their old places: `names`, and their `positions` among all values,
// from 0 and rising. All other values keep their order. If fewer values are left, a value comes
// last. The system lists a new value last, so values are deleted and made again, one at a time,
// from the first one that is in another place. If none is, nothing is done. False if a value
// refuses that.
bool orderValues(const WideKey& key, const std::vector<std::u16string>& names,
                 const std::vector<std::size_t>& positions);

}  // namespace zelvreg

#endif
