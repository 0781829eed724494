// What Enter, Escape and F1 do in the main window, in which no one button is always the default.
#ifndef ZELVREG_DESKTOP_KEYBOARD_H
#define ZELVREG_DESKTOP_KEYBOARD_H

#include <cstddef>
#include <cstdint>

#include "shell/Help.h"
#include "widgets/Button.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

enum class FocusArea : std::uint8_t { SearchControls, Categories, Elsewhere };

// The button that Enter presses if nothing else uses the key, or null. It is never one that repairs
// or undoes: what changes the registry must be pressed itself.
Button* buttonOfEnter(Form42& form, FocusArea focus);

// The button that Escape presses, or null: it closes the picker, then stops what runs.
Button* buttonOfEscape(Form42& form);

// The page of the help that F1 opens: that of what is open or runs, of the category that is chosen,
// or else of the page that is shown.
HelpTopic topicOfHelpKey(const Form42& form, FocusArea focus);

// The language picker, used by the keyboard. One entry is marked, as it is by the mouse.
class PickerKeys {
 public:
  explicit PickerKeys(Form42& shownForm) : form(shownForm) {}

  // When the picker opens: the entry in use is marked.
  void begin();
  // Marks the next entry or the one before; stops at the ends.
  void move(int entries);
  // Chooses the marked entry.
  void choose();

 private:
  void mark(std::size_t entry);

  Form42& form;
  std::size_t marked = 0;
};

}  // namespace zelvreg::desktop

#endif
