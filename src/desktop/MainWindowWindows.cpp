#include "desktop/MainWindow.h"

#include <algorithm>
#include <array>

#include "controls/PaintBuffer.h"
#include "controls/WindowRegion.h"
#include "desktop/SystemScreen.h"
#include "desktop/WindowOrder.h"
#include "form/Form42.h"
#include "shell/Help.h"
#include "shell/Navigation.h"
#include "shell/WindowEvents.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* windowClass = L"ZelvregMainWindow";
constexpr int cornerRadius = 8;
constexpr int titleLine = 3;

}  // namespace

MainWindow::MainWindow(Form42& shownForm)
    : form(shownForm), desk(resolutionOfSystem()), pickerKeys(shownForm) {
  layOut(form);
  desk.readColors(themeInUse());
  makeWindow();
  addFrames();
  addLabels();
  addButtons();
  addToolbar();
  addOptions();
  addFilter();
  addLists();
  addBars();
  addSearchControls();
  addPictures();
  orderChildren(window, readingOrderOfMainWindow);
  for (const auto& frame : frames) {
    orderChildren(frame->hwnd());
  }
  attachWindowParts();
  connectForm();
  showColor();
}

MainWindow::~MainWindow() {
  for (Control* control :
       std::initializer_list<Control*>{&form.window, &form.shadow, &form.TrayArea1, &form.menus,
                                       &form.theme, &form.Shape1, &form.Shape3}) {
    control->attach(nullptr);
  }
  form.messages.serveHost = nullptr;
  form.onLanguage = nullptr;
  others.clear();
  toolPeers.clear();
  buttons.clear();
  labels.clear();
  frames.clear();
  menuHolder.reset();
  outline.reset();
  DestroyWindow(window);
}

void MainWindow::makeWindow() {
  registerClass(windowClass, procedure);
  window =
      CreateWindowExW(WS_EX_APPWINDOW | WS_EX_CONTROLPARENT, windowClass, L"Fix Registry Problems",
                      WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_CLIPCHILDREN, 0,
                      0, desk.pixels(windowWidth), desk.pixels(windowHeight), nullptr, nullptr,
                      GetModuleHandleW(nullptr), this);
  changeResolution(resolutionOf(window), nullptr);
  // Access keys are underlined if the keyboard was used last.
  SendMessageW(window, WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0);
  taskBarCreated = RegisterWindowMessageW(L"TaskbarCreated");
  letThrough(window, taskBarCreated);
  taskbarButtonCreated = RegisterWindowMessageW(L"TaskbarButtonCreated");
  letThrough(window, taskbarButtonCreated);
}

void MainWindow::readScreen() {
  const SIZE size = screenSize();
  form.screen = {.width = desk.toTwips(size.cx), .height = desk.toTwips(size.cy)};
}

void MainWindow::attachWindowParts() {
  outline = std::make_unique<controls::TransForm>(window);
  outline->Refresh();
  menuHolder = std::make_unique<controls::CMWndProc>(window);
  showIcons();
  tray.area().setToolTip(form.TrayArea1.toolTip);
  tray.area().onNotice = [this](controls::TrayNotice notice) {
    if (notice.event == controls::TrayEvent::MouseUp && notice.button == 1) {
      comeToFront();
    }
  };
  tray.onNoticeClick = [this] { comeToFront(); };
  for (Control* control :
       std::initializer_list<Control*>{&form.window, &form.shadow, &form.TrayArea1, &form.menus,
                                       &form.theme, &form.Shape1, &form.Shape3}) {
    control->attach(this);
  }
}

void MainWindow::changed(const Control& control, Change what, std::size_t /*row*/) {
  if (&control == &form.window) {
    showWindow(what);
  } else if (&control == &form.shadow) {
    showShadow();
  } else if (&control == &form.TrayArea1) {
    showTray();
  } else if (&control == &form.menus) {
    showMenus();
  } else if (&control == &form.theme) {
    changeSettings();
  } else if (&control == &form.Shape1) {
    showTitleLine();
  } else {
    showColor();
  }
}

void MainWindow::showWindow(Change what) {
  if (isTelling) {
    return;
  }
  if (what == Change::Place) {
    SetWindowPos(window, nullptr, desk.fromTwips(form.window.left), desk.fromTwips(form.window.top),
                 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  } else if (what == Change::Visible) {
    if (form.window.visible && !hasOpened) {
      restorePlace();
    }
    ShowWindow(window, form.window.visible ? SW_SHOW : SW_HIDE);
    if (form.window.visible) {
      // All at once, not control by control.
      RedrawWindow(window, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
      SetForegroundWindow(window);
    }
  } else if (what == Change::Look) {
    const WindowState state = form.window.windowState;
    if (state == WindowState::Minimized) {
      ShowWindow(window, SW_MINIMIZE);
    } else if (state == WindowState::Maximized) {
      ShowWindow(window, SW_MAXIMIZE);
    } else if (IsIconic(window) != FALSE || IsZoomed(window) != FALSE) {
      ShowWindow(window, SW_RESTORE);
    }
  }
}

void MainWindow::showTray() {
  tray.area().setToolTip(form.TrayArea1.toolTip);
  tray.area().setVisible(form.TrayArea1.visible);
}

void MainWindow::showMenus() {
  if (form.menus.drawing == MenuDrawing::System) {
    menuHolder->release();
  }
}

// It is on the window itself: no control has to be drawn again.
void MainWindow::showTitleLine() {
  RECT line{};
  GetClientRect(window, &line);
  line.bottom = desk.pixels(titleHeight);
  line.top = line.bottom - desk.pixels(titleLine);
  InvalidateRect(window, &line, TRUE);
}

void MainWindow::showColor() {
  const std::uint32_t told = form.Shape3.foreColor;
  if (!controls::isSystemColor(told)) {
    desk.colors.setAccent(controls::fromProperty(told));
  }
  for (const auto* group : {&buttons, &toolPeers}) {
    for (const auto& button : *group) {
      button->changed(button->button(), Change::Look, 0);
    }
  }
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  desk.tellColors();
}

void MainWindow::paintGround(HDC context) const {
  RECT place{};
  GetClientRect(window, &place);
  const controls::PaintBuffer buffer({place.right, place.bottom}, controls::sideOf(context));
  controls::Canvas canvas = buffer.canvas();
  const int title = desk.pixels(titleHeight);
  const int bar = desk.pixels(commandBarBottom);
  const int side = desk.pixels(sideBarWidth);
  const int status = place.bottom - desk.pixels(windowHeight - statusBarTop);
  canvas.clear(desk.color(Tone::Ground));
  canvas.fill({0, 0, place.right, title}, desk.color(Tone::Accent));
  const std::uint32_t line = form.Shape1.foreColor;
  canvas.fill({0, title - desk.pixels(titleLine), place.right, title},
              controls::isSystemColor(line) || desk.colors.isSystem()
                  ? desk.color(Tone::Accent)
                  : controls::fromProperty(line));
  canvas.fill({0, title, place.right, bar}, desk.color(Tone::Surface));
  canvas.fill({0, bar - 1, place.right, bar}, desk.color(Tone::Line));
  for (const int separator : separators) {
    canvas.fill({separator, title + desk.pixels(12), separator + 1, bar - desk.pixels(12)},
                desk.color(Tone::Line));
  }
  canvas.fill({0, bar, side, status}, desk.color(Tone::SideBar));
  canvas.fill({side - 1, bar, side, status}, desk.color(Tone::Line));
  canvas.fill({0, status, place.right, place.bottom}, desk.color(Tone::Surface));
  canvas.fill({0, status, place.right, status + 1}, desk.color(Tone::Line));
  if (IsZoomed(window) == FALSE) {
    paintGrip(canvas, place);
    controls::maskCorners(canvas, buffer.size(), desk.pixels(cornerRadius), rgb(0xFF00FF));
  }
  buffer.show(context, 0, 0);
}

// Dots in the lower right half of a square.
void MainWindow::paintGrip(controls::Canvas& canvas, const RECT& place) const {
  constexpr int dots = 3;
  const int pitch = desk.pixels(4);
  const int length = desk.pixels(2);
  for (int across = 1; across <= dots; ++across) {
    for (int down = 1; down <= dots + 1 - across; ++down) {
      const int left = place.right - desk.pixels(3) - across * pitch;
      const int top = place.bottom - desk.pixels(3) - down * pitch;
      canvas.fill({left, top, left + length, top + length}, desk.color(Tone::MarkEdge));
    }
  }
}

LRESULT CALLBACK MainWindow::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self == nullptr || self->window == nullptr) {
    return DefWindowProcW(hwnd, message, wParam, lParam);
  }
  if (const auto answer = reflect(message, wParam, lParam)) {
    return *answer;
  }
  if (message != 0 && message == self->taskBarCreated) {
    self->renewTrayIcon();
    return 0;
  }
  if (message != 0 && message == self->taskbarButtonCreated) {
    self->taskbarButtonMade();
    return 0;
  }
  return self->handle(message, wParam, lParam);
}

LRESULT MainWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answer = handleSize(message, wParam, lParam)) {
    return *answer;
  }
  switch (message) {
    case WM_ERASEBKGND:
      paintGround(reinterpret_cast<HDC>(wParam));
      return TRUE;
    case WM_PAINT: {
      const LRESULT result = DefWindowProcW(window, message, wParam, lParam);
      // What it refreshes is drawn window by window, so that nobody waits for all of them.
      desk.refreshesLater = true;
      Form_Paint(form);
      desk.refreshesLater = false;
      return result;
    }
    case WM_ACTIVATE:
      activate(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case resolutionChanged:
      changeResolution(HIWORD(wParam), reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
      changeSettings();
      return 0;
    case WM_DISPLAYCHANGE:
      changeSettings();
      returnToScreen();
      return 0;
    case WM_COMMAND:
      // Enter and Escape; messages of buttons have been handled above.
      if (LOWORD(wParam) == IDOK) {
        enter();
      } else if (LOWORD(wParam) == IDCANCEL) {
        escape();
      }
      return 0;
    case WM_HELP:
      // F1, wherever the focus is; a menu asks with its owner.
      openHelp(form, topicOfHelpKey(form, focusArea()));
      return TRUE;
    case WM_CLOSE:
      form.chameleonButton4.click();
      return 0;
    case WM_ENDSESSION:
      if (wParam != 0) {
        Form_Unload(form);
      }
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void MainWindow::serve() {
  constexpr std::chrono::milliseconds answerInterval(2);
  const Clock::time_point now = Clock::now();
  if (now - servedAt < answerInterval) {
    return;
  }
  if (pace.isDue(now, form.testedRow.has_value())) {
    desk.catchUp();
    dispatch(0);
    pace.noteDrawing(now, Clock::now());
  } else {
    dispatch(PM_QS_INPUT | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE);
  }
  servedAt = Clock::now();
  // After a press on Cancel: soon the form no longer shows that it was cancelled.
  followScan(servedAt);
}

void MainWindow::dispatch(UINT kinds) {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | kinds) != FALSE) {
    HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if ((root != window || !shortcut(message)) &&
        (root == nullptr || IsDialogMessageW(root, &message) == FALSE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    desk.catchUp();
  }
}

void MainWindow::run() {
  for (;;) {
    desk.wait(form.messages);
    servedAt = {};
    pace.start();
    form.messages.doEvents();
  }
}

}  // namespace zelvreg::desktop
