#include "widgets/ComboBox.h"

#include <algorithm>

#include "text/Text.h"

namespace zelvreg {

const std::string& ComboBox::entry(int position) const {
  static const std::string none;
  return position >= 0 && position < count() ? entries[static_cast<std::size_t>(position)] : none;
}

void ComboBox::add(std::string_view text) {
  entries.emplace_back(untilNul(text));
  changed(Change::Rows);
}

void ComboBox::setListIndex(int position) {
  if (position >= 0 && position < count()) {
    take(entry(position), position);
  }
}

void ComboBox::setText(std::string_view text) {
  const auto found = std::ranges::find(entries, text);
  if (found != entries.end()) {
    take(text, static_cast<int>(found - entries.begin()));
  } else if (style == ComboStyle::Editable) {
    take(text, -1);
  }
}

void ComboBox::take(std::string_view text, int position) {
  content = std::string(text);
  index = position;
  changed(Change::Text);
  if (onChange) {
    onChange();
  }
}

}  // namespace zelvreg
