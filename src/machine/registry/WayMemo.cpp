#include "machine/registry/WayMemo.h"

#include <algorithm>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

Way::Step Way::goBackTo(std::u16string_view path) {
  const std::size_t common = commonLength(path, names);
  while (!steps.empty()) {
    const Step& last = steps.back();
    if (last.end <= common && last.end < path.size() && path[last.end] == u'\\') return last;
    steps.pop_back();
  }
  return {};
}

void Way::add(std::u16string_view path, const Step& step) {
  names.resize(steps.empty() ? 0 : steps.back().end);
  names.append(path.substr(names.size(), step.end - names.size()));
  steps.push_back(step);
}

Way& WayMemo::from(const RegistryKey& key, View view, std::uint64_t generation) {
  const auto known = std::find_if(ways.begin(), ways.end(), [&](const Way& way) {
    return way.from == &key && way.view == view;
  });
  Way& way = known != ways.end() ? *known : ways[oldest];
  if (known == ways.end()) oldest = (oldest + 1) % ways.size();
  if (known == ways.end() || way.generation != generation) {
    way.from = &key;
    way.view = view;
    way.generation = generation;
    way.steps.clear();
  }
  return way;
}

}  // namespace zelvreg::machine
