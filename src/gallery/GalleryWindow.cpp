#include "gallery/GalleryWindow.h"

#include "controls/ButtonStyles.h"
#include "controls/modShadow.h"
#include "gallery/GalleryPage.h"

namespace zelvreg::gallery {

using namespace controls;

namespace {

constexpr const wchar_t* windowClass = L"ZelvregControlsGallery";
constexpr UINT_PTR menuTimer = 7;
constexpr std::uint32_t accent = 10118205;

void setPicture(chameleonButton& button, Icon icon) {
  button.set(&ButtonProperties::PictureNormal, makePicture(icon, 96));
  button.set(&ButtonProperties::SpecialEffect, static_cast<std::int16_t>(PictureEffect::TextColor));
}

}  // namespace

GalleryWindow::GalleryWindow() : page(pageSize) {
  paintPage(page);
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = windowClass;
  RegisterClassExW(&description);
  window = CreateWindowExW(WS_EX_APPWINDOW, windowClass, L"Controls", WS_POPUP | WS_CLIPCHILDREN,
                           30, 30, pageSize.width, pageSize.height, nullptr, nullptr,
                           description.hInstance, this);
  outline = std::make_unique<TransForm>(window);
  outline->setMaskColor(maskColor);
  addTitleButtons();
  addCommands();
  addSideBar();
  addTableColumn();
  makeMenu();
  tray.area().setIcon(makePicture(Icon::Tick, 96, rgb(0x3D649A)));
  tray.area().setToolTip("Fix Registry Problems");
  tray.area().setVisible(true);
}

GalleryWindow::~GalleryWindow() {
  menus.reset();
  buttons.clear();
  outline.reset();
  DestroyWindow(window);
  DestroyMenu(menu);
  ImageList_Destroy(menuPictures);
}

LRESULT CALLBACK GalleryWindow::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* gallery = reinterpret_cast<GalleryWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  switch (message) {
    case WM_ERASEBKGND:
      gallery->page.show(reinterpret_cast<HDC>(wParam), 0, 0);
      return TRUE;
    case WM_TIMER:
      if (wParam == menuTimer) {
        KillTimer(hwnd, menuTimer);
        gallery->openMenu();
        return 0;
      }
      break;
    case WM_CLOSE:
      PostQuitMessage(0);
      return 0;
    default:
      break;
  }
  return DefWindowProcW(hwnd, message, wParam, lParam);
}

chameleonButton& GalleryWindow::addButton(const std::string& caption, const Rectangle& place,
                                          int style) {
  auto& button = *buttons.emplace_back(
      std::make_unique<chameleonButton>(window, 100 + static_cast<int>(buttons.size())));
  button.set(&ButtonProperties::ButtonType, style);
  button.set(&ButtonProperties::Caption, caption);
  button.place(place);
  ShowWindow(button.hwnd(), SW_SHOW);
  return button;
}

void GalleryWindow::addTitleButtons() {
  int left = pageSize.width - 12 - 2 * 52;
  for (const Icon icon : {Icon::Minimise, Icon::Close}) {
    chameleonButton& button = addButton("", {left, 12, left + 48, 48}, transparentStyle);
    button.set(&ButtonProperties::BackColor, accent);
    button.set(&ButtonProperties::BackOver, accent);
    setPicture(button, icon);
    button.setToolTip(icon == Icon::Close ? "Exit" : "Minimize");
    const WPARAM command = icon == Icon::Close ? SC_CLOSE : SC_MINIMIZE;
    button.onClick = [this, command] { PostMessageW(window, WM_SYSCOMMAND, command, 0); };
    left += 52;
  }
}

void GalleryWindow::addCommands() {
  struct Command {
    const char* caption;
    Icon icon;
    int width;
    bool isEnabled;
    bool isDefault;
  };
  const std::vector<Command> commands = {
      {"Search &Location", Icon::Search, 146, true, false},
      {"&Exclusions", Icon::Exclude, 116, true, false},
      {"&Start", Icon::Play, 92, true, true},
      {"&Cancel", Icon::Close, 96, false, false},
      {"Select &All", Icon::Tick, 112, true, false},
      {"Create &Report", Icon::Report, 132, false, false},
  };
  int left = 12;
  for (const Command& command : commands) {
    const int top = bandHeight + 8;
    chameleonButton& button =
        addButton(command.caption, {left, top, left + command.width, top + 36},
                  command.isDefault ? 2 : transparentStyle);
    setPicture(button, command.icon);
    button.set(&ButtonProperties::Enabled, command.isEnabled);
    button.setDefault(command.isDefault);
    left += command.width + 8;
  }
}

void GalleryWindow::addSideBar() {
  struct Page {
    const char* caption;
    Icon icon;
    int height;
  };
  const std::vector<Page> pages = {
      {"Select Areas Of registry To Scan For Invalid Informations.", Icon::List, 68},
      {"Exclude from search", Icon::Exclude, 40},
      {"Manage undo options", Icon::Undo, 40},
      {"Start Scanning your registry", Icon::Play, 48},
  };
  int top = bandHeight + barHeight + 14;
  for (const Page& entry : pages) {
    chameleonButton& button =
        addButton(entry.caption, {10, top, sideWidth - 10, top + entry.height}, 13);
    setPicture(button, entry.icon);
    button.set(&ButtonProperties::CheckBoxBehaviour, true);
    const bool isFirst = entry.icon == Icon::List;
    button.set(&ButtonProperties::Value, isFirst);
    button.setFontBold(isFirst);
    top += entry.height + 6;
  }
  const int bottom = pageSize.height - 48;
  addButton("&Back", {10, bottom, 102, bottom + 34}, 2).set(&ButtonProperties::Enabled, false);
  addButton("&Next", {110, bottom, sideWidth - 10, bottom + 34}, 2);
}

void GalleryWindow::addTableColumn() {
  for (int style = 1; style <= styleCount; ++style) {
    addButton("&Button", cellOf(style, 0), style);
  }
}

void GalleryWindow::makeMenu() {
  const std::vector<Icon> icons = {Icon::Tick, Icon::Exclude, Icon::Report};
  menuPictures =
      ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, static_cast<int>(icons.size()), 1);
  for (const Icon icon : icons) {
    HICON handle = makeIcon(*makePicture(icon, 96, rgb(0x3D649A)));
    ImageList_ReplaceIcon(menuPictures, -1, handle);
    DestroyIcon(handle);
  }
  menu = CreatePopupMenu();
  AppendMenuW(menu, MF_STRING, 1, L"Select &All\tCtrl+A");
  AppendMenuW(menu, MF_STRING, 2, L"Select &None");
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING | MF_CHECKED, 3, L"&Keep undo information");
  AppendMenuW(menu, MF_STRING | MF_GRAYED, 4, L"&Exclude from future scan");
  AppendMenuW(menu, MF_STRING | MF_GRAYED, 5, L"&Fix selected");
  AppendMenuW(menu, MF_STRING, 6, L"Create &report");
  menus = std::make_unique<CMWndProc>(window);
  menus->hold(std::make_unique<CoolMenu>(
      MenuPictures{menuPictures, {"Select All", "Exclude from future scan", "Create report"}}));
  menus->current()->installPopup(menu);
}

void GalleryWindow::openMenu() const {
  POINT place{pageSize.width - 250, 470};
  ClientToScreen(window, &place);
  // The menu reads it once it is open.
  PostMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
  TrackPopupMenu(menu, TPM_LEFTALIGN, place.x, place.y, 0, window, nullptr);
}

int GalleryWindow::run() {
  ShowWindow(window, SW_SHOW);
  outline->Refresh();
  modShadow::create(window);
  modShadow::setColor(window, 0x808080);
  modShadow::setSize(window, 10);
  SetTimer(window, menuTimer, 500, nullptr);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(window, &message) == 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  modShadow::destroy(window);
  return static_cast<int>(message.wParam);
}

}  // namespace zelvreg::gallery
