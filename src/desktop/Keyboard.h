// What the keys of a dialog do in the main window, which has no one button that is always the
// default.
#ifndef ZELVREG_DESKTOP_KEYBOARD_H
#define ZELVREG_DESKTOP_KEYBOARD_H

#include <cstddef>
#include <cstdint>

#include "widgets/Button.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

enum class FocusArea : std::uint8_t { SearchControls, Elsewhere };

// The button that Enter presses where nothing else takes the key, or null. It is never one that
// repairs or undoes: what changes the registry has to be pressed itself.
Button* buttonOfEnter(Form42& form, FocusArea focus);

// The button that Escape presses, or null: it closes the picker, then stops what runs.
Button* buttonOfEscape(Form42& form);

// The picker of languages by its keys. One of the entries is marked, as it is by the mouse.
class PickerKeys {
 public:
  explicit PickerKeys(Form42& shownForm) : form(shownForm) {}

  // When the picker opens: the entry in use is marked.
  void begin();
  // To the next entry, or the one before; stays at the ends.
  void move(int entries);
  // Takes the marked entry.
  void choose();

 private:
  void mark(std::size_t entry);

  Form42& form;
  std::size_t marked = 0;
};

}  // namespace zelvreg::desktop

#endif
