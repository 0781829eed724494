#include "shell/CommandModes.h"

#include "form/Form42.h"
#include "scan/ScanDriver.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

void tickAllRows(Form42& form) {
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setChecked(row, true);
  }
}

}  // namespace

void readCommandLine(Form42& form, std::string_view commandLine) {
  const std::string text = lowerCase(trim(commandLine));
  if (text.empty()) {
    return;
  }
  form.hasCommandLine = true;
  const auto parts = split(text, "-");
  const std::string_view second = parts.size() > 1 ? parts[1] : std::string_view();
  if (parts.front() == "w4") {
    form.autoMode = second == "c4" ? 2 : 1;
  } else {
    form.commandText = text;
    if (parts.front() == "r") {
      form.recheckMode = 1;
      form.recheckFix = second == "c" ? 1 : 0;
    }
  }
  form.window.visible = false;
}

void runCommandMode(Form42& form) {
  if (form.autoMode > 0) {
    tickAllRows(form);
  }
  if (form.recheckMode == 1) {
    runScan(form);
  }
  if (form.autoMode > 0) {
    form.Timer2.enable(true);
    runScan(form);
  }
}

}  // namespace zelvreg
