// What depends on the state of the form: widths of captions, the next step, the current page.
#include <algorithm>
#include <array>
#include <utility>

#include "desktop/MainWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {

namespace {

// Where the place ends that the layout has for a control, in pixels at 96 dpi.
int endOf(Form42& form, const Control& control) {
  const Place place = placeFor(form, control);
  return place.left + place.width;
}

}  // namespace

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
  giveAccessKeys();
  nameMaximize();
  arrangeCommandBar();
  arrangeRows();
  arrangeTexts();
  arrangeBars();
  arrangeSearch();
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
  // The list makes room for the progress panel.
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
  const int margin = desk.pixels(10);
  const int gap = desk.pixels(2);
  const int groupGap = desk.pixels(13);
  std::vector<int> widths;
  int wanted = 0;
  int spare = 0;  // what two lines instead of one would save
  for (const Command& command : commands) {
    const ButtonPeer& peer = *peerOf(command.button);
    widths.push_back(peer.naturalWidth());
    wanted += widths.back();
    spare += widths.back() - peer.narrowestWidth();
  }
  const int room = desk.fromTwips(form.window.width) - 2 * margin - 4 * gap - 3 * groupGap;
  const bool isSmall = form.ToolbarBox.value || wanted - room > std::max(0, spare);
  form.Toolbar1.visible = isSmall;
  for (const Command& command : commands) {
    command.button.visible.renew(!isSmall);
  }
  if (arrangeToolbar()) {
    return;
  }
  const int missing = std::clamp(wanted - room, 0, std::max(0, spare));
  std::vector<int> lines;
  int left = margin;
  for (std::size_t number = 0; number < commands.size(); ++number) {
    Button& button = commands[number].button;
    if (commands[number].beginsGroup) {
      lines.push_back(left + (groupGap - gap) / 2 - gap / 2);
      left += groupGap - gap;
    }
    const int saved = widths[number] - peerOf(button)->narrowestWidth();
    const int width =
        missing == 0 ? widths[number] : widths[number] - MulDiv(saved, missing, spare);
    button.left = desk.toTwips(left);
    button.width = desk.toTwips(width) + twipsPerPixel;
    left += width + gap;
  }
  showSeparators(std::move(lines));
}

void MainWindow::showSeparators(std::vector<int> places) {
  if (places != separators) {
    separators = std::move(places);
    InvalidateRect(window, nullptr, TRUE);
  }
}

// Side by side, as wide as their captions need.
int MainWindow::flow(std::initializer_list<Button*> row, int start, bool isFromRight) {
  const int gap = desk.pixels(8);
  const int square = desk.pixels(32);
  int edge = start;
  for (Button* button : row) {
    const int width = peerOf(*button)->isSquare()
                          ? square
                          : std::max(desk.pixels(84), peerOf(*button)->naturalWidth());
    button->left = desk.toTwips(isFromRight ? edge - width : edge);
    button->width = desk.toTwips(width);
    edge += isFromRight ? -(width + gap) : width + gap;
  }
  return edge;
}

void MainWindow::arrangeRows() {
  const int pageWidth = desk.fromTwips(form.Frame1.width);
  flow({&form.chameleonButton22, &form.chameleonButton21}, pageWidth, true);
  flow({&form.chameleonButton12}, desk.pixels(endOf(form, form.chameleonButton12)), true);
  arrangeCareful(pageWidth);
  arrangeResultsTitle(pageWidth);
  flow({&form.UndoRepair}, pageWidth, true);
  flow({&form.chameleonButton2, &form.chameleonButton3}, 0, false);
  flow({&form.chameleonButton5, &form.chameleonButton8, &form.chameleonButton6}, 0, false);
}

// Below the buttons and flush with them, as far as the text to its left leaves room.
void MainWindow::arrangeCareful(int pageWidth) {
  const int end = peerOf(form.Label2[0])->textWidth() + desk.pixels(8);
  const int width = std::min(careful->naturalWidth(), pageWidth - end);
  form.CarefulBox.width = desk.toTwips(width);
  form.CarefulBox.left = desk.toTwips(pageWidth - width);
}

// If the captions of a language are too long, the button that needs its caption least loses it.
void MainWindow::arrangeResultsTitle(int pageWidth) {
  const auto place = [this, pageWidth] {
    return flow({&form.chameleonButton15, &form.chameleonButton17, &form.chameleonButton16,
                 &form.chameleonButton14, &form.chameleonButton9, &form.orubutton2},
                pageWidth, true);
  };
  ButtonPeer& open = *peerOf(form.chameleonButton14);
  const int room = place() + desk.fromTwips(form.chameleonButton14.width);
  const Label& title = form.OutcomeText.visible ? form.OutcomeText : form.Label10;
  const bool fits = room - open.naturalWidth() >= peerOf(title)->textWidth();
  open.setRole(fits ? ButtonRole::Plain : ButtonRole::IconOnly);
  form.Label10.width = desk.toTwips(std::max(0, place()));
  form.OutcomeText.width = form.Label10.width;
}

// A value follows the words that name it.
void MainWindow::arrangeTexts() {
  const auto follow = [this](Label& name, Label& value, int end) {
    const int width = peerOf(name)->textWidth();
    const int left = desk.fromTwips(name.left) + width + desk.pixels(8);
    name.width = desk.toTwips(width + 1);
    value.left = desk.toTwips(left);
    value.width = std::max(0, end * twipsPerPixel - desk.toTwips(left));
  };
  const int timeWidth = peerOf(form.ProgressText)->textWidth() + desk.pixels(1);
  const int timeLeft = desk.pixels(endOf(form, form.ProgressText)) - timeWidth;
  form.ProgressText.left = desk.toTwips(timeLeft);
  form.ProgressText.width = desk.toTwips(timeWidth);
  follow(form.Label2[5], form.Label4, desk.fromPixels(timeLeft) - 8);
  follow(form.Label2[3], form.Label3, endOf(form, form.Label3));
  follow(form.Label6, form.Label5, endOf(form, form.Label5));
}

}  // namespace zelvreg::desktop
