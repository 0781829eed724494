#include "shell/ToolbarChoice.h"

#include "form/Form42.h"
#include "scan/Settings.h"

namespace zelvreg {
namespace {

constexpr const char* setting = "toolbar";

}  // namespace

void loadToolbarChoice(Form42& form) {
  form.ToolbarBox.value = readSetting(settings::regscan, setting) == "1";
}

void ToolbarBox_Click(Form42& form) {
  keepSetting(settings::regscan, setting, form.ToolbarBox.value ? "1" : "0");
}

}  // namespace zelvreg
