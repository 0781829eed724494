#include "keys/ValueOrder.h"

#include <algorithm>
#include <map>

namespace zelvreg {
namespace {

using NameIndex = std::map<std::u16string, std::size_t, NameOrder>;

// The values in the order that they are to have, each by its present place.
std::vector<std::size_t> wantedOrder(const std::vector<WideValue>& values,
                                     const std::vector<std::u16string>& names,
                                     const std::vector<std::size_t>& positions) {
  NameIndex moved;
  for (const std::u16string& name : names) {
    moved.try_emplace(name, values.size());
  }
  std::vector<std::size_t> order;
  for (std::size_t index = 0; index < values.size(); ++index) {
    const auto found = moved.find(values[index].name);
    if (found == moved.end()) {
      order.push_back(index);
    } else {
      found->second = index;
    }
  }
  for (std::size_t number = 0; number < names.size() && number < positions.size(); ++number) {
    const std::size_t index = moved.find(names[number])->second;
    if (index < values.size()) {
      const std::size_t place = std::min(positions[number], order.size());
      order.insert(order.begin() + static_cast<std::ptrdiff_t>(place), index);
    }
  }
  return order;
}

}  // namespace

bool orderValues(const WideKey& key, const std::vector<std::u16string>& names,
                 const std::vector<std::size_t>& positions) {
  const auto values = key.values();
  if (!values) {
    return false;
  }
  const std::vector<std::size_t> order = wantedOrder(*values, names, positions);
  std::size_t place = 0;
  while (place < order.size() && order[place] == place) {
    ++place;
  }
  return std::all_of(order.begin() + static_cast<std::ptrdiff_t>(place), order.end(),
                     [&](std::size_t index) {
                       const WideValue& value = (*values)[index];
                       return key.deleteValue(value.name) && key.setValue(value);
                     });
}

}  // namespace zelvreg
