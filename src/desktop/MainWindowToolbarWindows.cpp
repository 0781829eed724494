// The tool bar: the commands as small buttons, without their captions.
#include "desktop/MainWindow.h"
#include "form/Form42.h"
#include "shell/Navigation.h"

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int margin = 16;
constexpr int top = 68;
constexpr int length = 36;
constexpr int gap = 2;
constexpr int groupGap = 13;

}  // namespace

void MainWindow::addToolbar() {
  bool beginsGroup = false;
  for (std::size_t number = 1; number <= form.Toolbar1.buttons.size(); ++number) {
    const Button* command = commandOfToolbar(form, number);
    if (command == nullptr) {
      beginsGroup = true;
      continue;
    }
    auto button = std::make_unique<Button>();
    button->visible = false;
    // For the order of the Tab key.
    put(*button, {margin + static_cast<int>(tools.size()) * (length + gap), top, length, length});
    button->bind([this, number] { Toolbar1_ButtonClick(form, number); });
    auto peer = std::make_unique<ButtonPeer>(desk, window, *button, ButtonRole::Tool,
                                             form.Toolbar1.buttons[number - 1].image.c_str());
    tools.push_back({std::move(button), *command, beginsGroup});
    toolPeers.push_back(std::move(peer));
    beginsGroup = false;
  }
}

bool MainWindow::arrangeToolbar() {
  const bool isShown = form.Toolbar1.visible;
  std::vector<int> lines;
  int left = margin;
  for (const Tool& tool : tools) {
    Button& button = *tool.button;
    if (tool.beginsGroup) {
      lines.push_back(desk.pixels(left - gap + groupGap / 2));
      left += groupGap - gap;
    }
    if (isShown) {
      put(button, {left, top, length, length});
    }
    left += length + gap;
    button.caption.renew(tool.command.caption);
    button.enabled.renew(tool.command.enabled);
    button.visible.renew(isShown);
  }
  if (isShown) {
    showSeparators(std::move(lines));
  }
  return isShown;
}

}  // namespace zelvreg::desktop
