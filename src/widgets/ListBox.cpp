#include "widgets/ListBox.h"

#include <utility>

#include "text/Text.h"

namespace zelvreg {

const std::string& ListBox::text(int position) const {
  static const std::string outside;
  return position >= 0 && position < count() ? entries[static_cast<std::size_t>(position)]
                                             : outside;
}

void ListBox::add(std::string_view text) {
  entries.emplace_back(untilNul(text));
  changed(Change::Rows);
}

void ListBox::clear() {
  if (entries.size() > MessageQueue::mostFreedAtOnce) {
    queue.discard(std::exchange(entries, {}));
  }
  entries.clear();
  changed(Change::Rows);
}

}  // namespace zelvreg
