#include "desktop/Keyboard.h"

#include <algorithm>

#include "form/Form42.h"
#include "shell/Languages.h"

namespace zelvreg::desktop {
namespace {

// The category that is chosen in the list of them, by its row; 0 for none.
std::size_t chosenCategory(const Form42& form) {
  std::size_t row = form.View1.count();
  while (row > 0 && !form.View1.isSelected(row)) {
    --row;
  }
  return row;
}

}  // namespace

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

HelpTopic topicOfHelpKey(const Form42& form, FocusArea focus) {
  if (form.pictrlang.visible) {
    return "language";
  }
  if (form.Frame8.visible) {
    return "scan";
  }
  if (focus == FocusArea::SearchControls) {
    return "search";
  }
  if (form.Frame2.visible) {
    return "results";
  }
  if (form.Frame3.visible) {
    return "undo";
  }
  if (form.Frame7.visible) {
    return "exclusions";
  }
  const std::size_t category = focus == FocusArea::Categories ? chosenCategory(form) : 0;
  return category == 0 ? HelpTopic("options") : helpOfCategory(category);
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
