#include "desktop/Keyboard.h"

#include <algorithm>

#include "form/Form42.h"
#include "shell/Languages.h"

namespace zelvreg::desktop {

Button* buttonOfEnter(Form42& form, FocusArea focus) {
  if (focus == FocusArea::SearchControls) {
    return &form.cmdFind;
  }
  return form.cmd_start.enabled ? &form.cmd_start : nullptr;
}

Button* buttonOfEscape(Form42& form) {
  if (form.pictrlang.visible) {
    return &form.chameleonButton13;
  }
  return form.Frame8.visible ? &form.cmd_cancel : nullptr;
}

void PickerKeys::begin() {
  const auto last = static_cast<int>(form.lbllanguage.size()) - 1;
  mark(static_cast<std::size_t>(std::clamp<int>(form.langIndex, 0, last)));
}

void PickerKeys::move(int entries) {
  const auto last = static_cast<int>(form.lbllanguage.size()) - 1;
  mark(static_cast<std::size_t>(std::clamp(static_cast<int>(marked) + entries, 0, last)));
}

void PickerKeys::choose() { lbllanguage_Click(form, marked); }

void PickerKeys::mark(std::size_t entry) {
  marked = entry;
  pictrlang_MouseMove(form);
  lbllanguage_MouseMove(form, entry);
}

}  // namespace zelvreg::desktop
