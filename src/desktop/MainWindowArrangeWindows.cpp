// What follows in the main window from what is shown: widths of captions, the next step, the page.
#include <algorithm>
#include <array>
#include <numeric>

#include "desktop/MainWindow.h"

namespace zelvreg::desktop {

ButtonPeer* MainWindow::peerOf(const Button& button) {
  const auto found = std::ranges::find_if(
      buttons, [&button](const auto& peer) { return &peer->button() == &button; });
  return found == buttons.end() ? nullptr : found->get();
}

LabelPeer* MainWindow::peerOf(const Label& label) {
  const auto found = std::ranges::find_if(
      labels, [&label](const auto& peer) { return &peer->shownLabel() == &label; });
  return found == labels.end() ? nullptr : found->get();
}

void MainWindow::arrangeLater() {
  desk.later(this, [this] { arrange(); });
}

void MainWindow::arrange() {
  arrangeCommandBar();
  arrangeResultsHeader();
  arrangeTexts();
  // The one thing that a user would do next.
  const bool canFix = form.cmd_fix.enabled;
  if (ButtonPeer* fix = peerOf(form.cmd_fix)) {
    fix->setPrimary(canFix);
  }
  if (ButtonPeer* start = peerOf(form.cmd_start)) {
    start->setPrimary(!canFix && form.cmd_start.enabled);
  }
  const std::array<std::pair<const Button*, bool>, 5> pages{{
      {&form.orubutton4, form.Frame1.visible && !form.Frame8.visible},
      {&form.chameleonButton7, form.Frame7.visible},
      {&form.chameleonButton1, form.Frame3.visible},
      {&form.orubutton1, form.Frame2.visible || (form.Frame1.visible && form.Frame8.visible)},
      {&form.orubutton3, false},
  }};
  for (const auto& [button, isCurrent] : pages) {
    if (ButtonPeer* peer = peerOf(*button)) {
      peer->setCurrent(isCurrent);
    }
  }
  // The list gives way to the progress panel.
  form.View1.changed(Change::Place);
  if (form.pictrlang.visible) {
    SetWindowPos(parentOf(&form.pictrlang), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
}

void MainWindow::arrangeCommandBar() {
  struct Command {
    Button& button;
    bool beginsGroup;
  };
  const std::array<Command, 8> commands{{{form.cmd_search, false},
                                         {form.cmd_exclud, false},
                                         {form.cmd_start, true},
                                         {form.cmd_fix, false},
                                         {form.cmd_cancel, false},
                                         {form.cmd_all, true},
                                         {form.cmd_non, false},
                                         {form.cmd_report, true}}};
  const int margin = desk.points(14);
  const int gap = desk.points(4);
  const int groupGap = desk.points(17);
  int wanted = 0;
  for (const Command& command : commands) {
    wanted += peerOf(command.button)->naturalWidth();
  }
  const int room = desk.points(windowWidth) - 2 * margin - 4 * gap - 3 * groupGap;
  std::vector<int> lines;
  int left = margin;
  for (const Command& command : commands) {
    if (command.beginsGroup) {
      lines.push_back(left + groupGap / 2 - gap / 2);
      left += groupGap - gap;
    }
    const int natural = peerOf(command.button)->naturalWidth();
    const int width = wanted <= room ? natural : MulDiv(natural, room, wanted);
    command.button.left = desk.toTwips(left);
    command.button.width = desk.toTwips(width);
    left += width + gap;
  }
  if (lines != separators) {
    separators = lines;
    InvalidateRect(window, nullptr, TRUE);
  }
}

void MainWindow::arrangeResultsHeader() {
  const std::array<Button*, 6> fromRight{&form.chameleonButton15, &form.chameleonButton17,
                                         &form.chameleonButton16, &form.chameleonButton14,
                                         &form.chameleonButton9,  &form.orubutton2};
  const int gap = desk.points(8);
  const int square = desk.points(32);
  int right = desk.fromTwips(form.Frame2.width);
  for (Button* button : fromRight) {
    const bool isSquare = button == &form.chameleonButton9 || button == &form.orubutton2;
    const int width = isSquare ? square : peerOf(*button)->naturalWidth();
    right -= width;
    button->left = desk.toTwips(right);
    button->width = desk.toTwips(width);
    right -= gap;
  }
  form.Label10.width = desk.toTwips(std::max(0, right));
}

// A value follows the words that name it.
void MainWindow::arrangeTexts() {
  const auto follow = [this](const Label& name, Label& value, int end) {
    const int left = desk.fromTwips(name.left) + peerOf(name)->textWidth() + desk.points(8);
    value.left = desk.toTwips(left);
    value.width = std::max(0, end * twipsPerPoint - desk.toTwips(left));
  };
  follow(form.Label2[3], form.Label3, 680);
  follow(form.Label6, form.Label5, 654);
}

}  // namespace zelvreg::desktop
