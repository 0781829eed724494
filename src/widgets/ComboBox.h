// A list of texts of which one is chosen, or typed if the box is editable.
#ifndef ZELVREG_WIDGETS_COMBO_BOX_H
#define ZELVREG_WIDGETS_COMBO_BOX_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "widgets/Control.h"

namespace zelvreg {

enum class ComboStyle : std::uint8_t { Editable, DropDownList };

// Positions count from 0; -1 is none. Reading outside the list gives the empty text.
class ComboBox : public Control {
 public:
  explicit ComboBox(ComboStyle boxStyle) : style(boxStyle) {}

  [[nodiscard]] ComboStyle comboStyle() const { return style; }
  [[nodiscard]] int count() const { return static_cast<int>(entries.size()); }
  [[nodiscard]] const std::string& entry(int position) const;
  // An entry ends at its first NUL.
  void add(std::string_view text);

  [[nodiscard]] int listIndex() const { return index; }
  // Takes the entry's text. A position outside the list is refused: the old one stays.
  void setListIndex(int position);

  [[nodiscard]] const std::string& text() const { return content; }
  // Chooses the entry that is equal, if there is one. A drop-down list refuses any other text.
  void setText(std::string_view text);

  // Runs after each change of the text.
  std::function<void()> onChange;

 private:
  void take(std::string_view text, int position);

  ComboStyle style;
  std::vector<std::string> entries;
  std::string content;
  int index = -1;
};

}  // namespace zelvreg

#endif
