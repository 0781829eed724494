#include "desktop/SmallWindow.h"

#include "controls/PaintBuffer.h"
#include "controls/WindowRegion.h"
#include "controls/modShadow.h"
#include "desktop/SystemScreen.h"
#include "desktop/WindowEdges.h"
#include "desktop/WindowOrder.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "layout/DialogPlaces.h"
#include "shell/Help.h"

namespace zelvreg::desktop {
namespace {

constexpr int smallTitleHeight = 44;
constexpr int cornerRadius = 8;

}  // namespace

SmallWindow::SmallWindow(Desk& sharedDesk, FormWindow& shownForm, DropShadow& formShadow,
                         HWND ownerWindow, std::function<void()> close,
                         const SmallWindowOptions& options)
    : desk(sharedDesk, sharedDesk.resolution()),
      form(shownForm),
      shadow(formShadow),
      owner(ownerWindow),
      onClose(std::move(close)),
      arrange(options.arrange),
      onHelp(options.help) {
  registerClass(options.windowClass, procedure);
  window = CreateWindowExW(
      WS_EX_CONTROLPARENT | (desk.isMirrored ? WS_EX_LAYOUTRTL : 0U), options.windowClass,
      Wide(options.title).get(), WS_POPUP | WS_SYSMENU | WS_CLIPCHILDREN, desk.fromTwips(form.left),
      desk.fromTwips(form.top), desk.fromTwips(form.width), desk.fromTwips(form.height), owner,
      nullptr, GetModuleHandleW(nullptr), this);
  beginOnItsScreen();
  outline = std::make_unique<controls::TransForm>(window);
  outline->Refresh();
  shadow.attach(this);
  desk.onColors(this, [this] { showAll(); });
}

SmallWindow::~SmallWindow() {
  desk.onColors(this, nullptr);
  shadow.attach(nullptr);
  peers.clear();
  outline.reset();
  DestroyWindow(window);
}

void SmallWindow::add(Label& label, const Place& place, LabelLook look) {
  put(label, place);
  const Tone ground = place.top < smallTitleHeight ? Tone::Accent : Tone::Surface;
  auto peer = std::make_unique<LabelPeer>(desk, window, label, look, ground);
  if (auto* link = dynamic_cast<LinkLabel*>(&label)) {
    peer->onClick = [link] { link->click(); };
  }
  peers.push_back(std::move(peer));
}

void SmallWindow::add(Button& button, const Place& place, ButtonRole role, const char* icon) {
  put(button, place);
  if (role == ButtonRole::Primary) {
    primary = &button;
  }
  peers.push_back(std::make_unique<ButtonPeer>(desk, window, button, role, icon));
  if (role == ButtonRole::Primary && firstFocus == nullptr) {
    firstFocus = peers.back()->hwnd();
  }
}

void SmallWindow::add(TextBox& box, const Place& place, const Label& name) {
  put(box, place);
  auto peer = std::make_unique<EditPeer>(desk, window, box);
  peer->nameOf = [&name] { return name.caption.get(); };
  firstFocus = peer->hwnd();
  peers.push_back(std::move(peer));
}

void SmallWindow::add(Picture& picture, const Place& place, const PictureOptions& options) {
  put(picture, place);
  peers.push_back(std::make_unique<PicturePeer>(desk, window, picture, options));
}

void SmallWindow::add(Control& control, const Place& place, std::unique_ptr<Peer> peer) {
  put(control, place);
  peer->showAll();
  peers.push_back(std::move(peer));
}

void SmallWindow::changed(const Control& /*control*/, Change /*what*/, std::size_t /*row*/) {
  if (!shadow.visible) {
    controls::modShadow::destroy(window);
  }
}

void SmallWindow::runModal(MessageQueue& messages, const bool& isOpen) {
  if (owner != nullptr) {
    EnableWindow(owner, FALSE);
  }
  orderChildren(window);
  ShowWindow(window, SW_SHOW);
  SetForegroundWindow(window);
  SetFocus(firstFocus == nullptr ? window : firstFocus);
  desk.castShadow(window, shadow);
  while (isOpen) {
    desk.wait(messages);
    messages.doEvents();
  }
  if (owner != nullptr) {
    EnableWindow(owner, TRUE);
    SetForegroundWindow(owner);
  }
}

void SmallWindow::paintGround(HDC context) const {
  RECT place{};
  GetClientRect(window, &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  controls::Canvas canvas = buffer.canvas();
  canvas.clear(desk.color(Tone::Surface));
  canvas.fill({0, 0, place.right, desk.pixels(smallTitleHeight)}, desk.color(Tone::Accent));
  const Rgb border = desk.color(Tone::Border);
  canvas.draw(controls::Shape{0, 0, static_cast<double>(place.right),
                              static_cast<double>(place.bottom),
                              static_cast<double>(desk.pixels(cornerRadius)), 1, border, border});
  controls::maskCorners(canvas, buffer.size(), desk.pixels(cornerRadius), rgb(0xFF00FF));
  buffer.show(context, 0, 0);
}

void SmallWindow::takeResolution(int resolution, const RECT& onScreen) {
  const SIZE room = roomAround(onScreen);
  desk.setResolution(fittingResolution(resolution, room.cx, room.cy, form.width / twipsPerPixel,
                                       form.height / twipsPerPixel));
  if (arrange) {
    arrange(desk);
  }
}

// Its owner's desk may have another resolution. It keeps its middle, but is all on the screen.
void SmallWindow::beginOnItsScreen() {
  RECT made{};
  GetWindowRect(window, &made);
  takeResolution(resolutionOf(window), made);
  const int width = desk.fromTwips(form.width);
  const int height = desk.fromTwips(form.height);
  const Place place = placeInside(
      {(made.left + made.right - width) / 2, (made.top + made.bottom - height) / 2, width, height},
      placeOf(areasAround(window).work), {0, 0, width, height});
  SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// The rectangle of the system keeps the window under the mouse.
void SmallWindow::changeResolution(int resolution, const RECT& suggested) {
  takeResolution(resolution, suggested);
  SetWindowPos(window, nullptr, suggested.left, suggested.top, desk.fromTwips(form.width),
               desk.fromTwips(form.height), SWP_NOZORDER | SWP_NOACTIVATE);
  outline->Refresh();
  desk.castShadow(window, shadow);
  showAll();
}

void SmallWindow::showAll() {
  for (const auto& peer : peers) {
    peer->showAll();
  }
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

LRESULT CALLBACK SmallWindow::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* self = reinterpret_cast<SmallWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self == nullptr) {
    return DefWindowProcW(hwnd, message, wParam, lParam);
  }
  if (const auto answer = reflect(message, wParam, lParam)) {
    return *answer;
  }
  switch (message) {
    case WM_ERASEBKGND:
      self->paintGround(reinterpret_cast<HDC>(wParam));
      return TRUE;
    case resolutionChanged:
      // While it is being made, its maker asks for the resolution.
      if (self->outline == nullptr) {
        return 0;
      }
      self->changeResolution(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_HELP:
      if (self->onHelp) {
        self->onHelp();
      }
      return TRUE;
    case WM_CLOSE:
      self->onClose();
      return 0;
    case WM_COMMAND:
      // Escape closes, Enter presses the default button.
      if (LOWORD(wParam) == IDCANCEL && lParam == 0) {
        self->onClose();
        return 0;
      }
      if (LOWORD(wParam) == IDOK && lParam == 0) {
        if (!pressFocusedButton() && self->primary != nullptr) {
          self->primary->click();
        }
        return 0;
      }
      break;
    default:
      break;
  }
  return DefWindowProcW(hwnd, message, wParam, lParam);
}

void showExclusionDialog(Desk& desk, Form42& form, HWND owner) {
  ExclusionDialog& dialog = form.Form1;
  dialog.chameleonButton3.toolTip = textOf(form, "close");
  SmallWindow shown(
      desk, dialog.window, dialog.shadow, owner, [&dialog] { dialog.orubutton10.click(); },
      {.title = dialog.Label222[1].caption, .help = [&form] { openHelp(form, "exclusion"); }});
  shown.add(dialog.Label222[1], dialogTitle, LabelLook::WindowTitle);
  shown.add(dialog.chameleonButton3, {436, 6, 36, 32}, ButtonRole::Title, "exit");
  shown.add(dialog.Label1, exclusionPrompt, LabelLook::Plain);
  shown.add(dialog.orubutton1, addExclusion, ButtonRole::Primary, "");
  shown.add(dialog.orubutton10, cancelExclusion, ButtonRole::Plain, "");
  shown.add(dialog.Text1, {20, 84, 440, 26}, dialog.Label1);
  shown.runModal(form.messages, dialog.isOpen);
}

void showAboutDialog(Desk& desk, Form42& form, HWND owner) {
  AboutDialog& about = form.frmabout;
  about.chameleonButton3.toolTip = textOf(form, "close");
  // Goes after the window that shows it.
  Label name(form.Label1.caption);
  name.font = form.Label1.font.get();
  SmallWindow shown(
      desk, about.window, about.shadow, owner, [&about] { about.chameleonButton3.click(); },
      {.title = about.Label222[1].caption, .help = [&form] { openHelp(form, "about"); }});
  shown.add(about.Label222[1], dialogTitle, LabelLook::WindowTitle);
  shown.add(about.chameleonButton3, {436, 6, 36, 32}, ButtonRole::Title, "exit");
  shown.add(name, {24, 64, 300, 26}, LabelLook::PageTitle);
  shown.add(about.Label3, {330, 68, 126, 20}, LabelLook::SecondaryRight);
  shown.add(about.Label2[0], aboutSummary, LabelLook::Wrapped);
  shown.add(about.Label2[3], aboutWords(0), LabelLook::Plain);
  shown.add(about.Label4, aboutLink(0), LabelLook::Link);
  shown.add(about.Label2[2], aboutWords(1), LabelLook::Plain);
  shown.add(about.Label5, aboutLink(1), LabelLook::Link);
  shown.add(about.Label2[1], aboutWords(2), LabelLook::Plain);
  shown.add(about.Label6, aboutLink(2), LabelLook::Link);
  shown.add(about.Label2[4], {24, 270, 432, 20}, LabelLook::Secondary);
  shown.runModal(form.messages, about.isOpen);
}

}  // namespace zelvreg::desktop
