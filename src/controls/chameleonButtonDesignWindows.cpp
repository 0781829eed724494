// The properties of a button, and what they change in its window.
#include "controls/chameleonButton.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include "controls/ButtonPainter.h"
#include "controls/ButtonStyles.h"
#include "controls/TipColors.h"
#include "controls/WindowRegion.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

// The ground under a child, painted by the parent as if the child were not there.
void paintGround(HWND child, HDC dc) {
  HWND parent = GetParent(child);
  POINT origin{0, 0};
  MapWindowPoints(child, parent, &origin, 1);
  const int saved = SaveDC(dc);
  OffsetWindowOrgEx(dc, origin.x, origin.y, nullptr);
  const auto context = reinterpret_cast<WPARAM>(dc);
  SendMessageW(parent, WM_ERASEBKGND, context, 0);
  SendMessageW(parent, WM_PRINTCLIENT, context, PRF_CLIENT);
  RestoreDC(dc, saved);
}

TOOLINFOW toolOf(HWND window, HWND parent) {
  TOOLINFOW tool{};
  // The first version's size, which every version of the library takes.
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = parent;
  tool.uId = reinterpret_cast<UINT_PTR>(window);
  return tool;
}

}  // namespace

void chameleonButton::apply(std::string_view key) {
  if (key == "BTYPE") {
    applyType();
  } else if (key == "TX") {
    SetWindowTextW(window, Wide(properties().Caption).get());
  } else if (key == "ENAB") {
    EnableWindow(window, properties().Enabled ? TRUE : FALSE);
  } else if (key == "FONT") {
    applyFont();
  } else if (key == "COLTYPE") {
    palette.system = systemColors();
    applyOutline();
  } else if (key == "MICON") {
    if (mouseIcon != nullptr) {
      DestroyIcon(mouseIcon);
    }
    mouseIcon = properties().MouseIcon ? makeIcon(*properties().MouseIcon, true) : nullptr;
  }
  repaint();
}

void chameleonButton::applyType() {
  if (!form.userMode) {
    hasTransparency = properties().ButtonType == transparentStyle;
  }
  applyOutline();
  if (properties().ButtonType == changingStyle && isOver) {
    // Its outline under the mouse has no corners any more, and the cursor may have been on one.
    overTimerTick();
  }
}

void chameleonButton::applyOutline() const {
  const Size now = size();
  HRGN outline = CreateRectRgn(0, 0, now.width, now.height);
  for (const Rectangle& cut : cornerCuts(now, outlineRadius(properties(), isOver, dpi))) {
    const RegionHandle corner(CreateRectRgn(cut.left, cut.top, cut.right, cut.bottom));
    CombineRgn(outline, outline, corner.get(), RGN_DIFF);
  }
  // The region belongs to the window from here on.
  if (SetWindowRgn(window, outline, TRUE) == 0) {
    DeleteObject(outline);
  }
}

void chameleonButton::applyFont() {
  FontHandle made = makeFont(properties().Font, dpi);
  for (HWND shown : {window, tip}) {
    SendMessageW(shown, WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), FALSE);
  }
  font = std::move(made);
}

void chameleonButton::setFontBold(bool value) {
  changeFont([value](FontDescription& changed) { changed.isBold = value; });
}

void chameleonButton::setFontItalic(bool value) {
  changeFont([value](FontDescription& changed) { changed.isItalic = value; });
}

void chameleonButton::setFontUnderline(bool value) {
  changeFont([value](FontDescription& changed) { changed.isUnderlined = value; });
}

void chameleonButton::setFontSize(double points) {
  changeFont([points](FontDescription& changed) { changed.size = points; });
}

void chameleonButton::setFontName(std::string name) {
  changeFont([&name](FontDescription& changed) { changed.name = std::move(name); });
}

void chameleonButton::read(const PropertyBag& bag) {
  design = ButtonDesign(readButton(bag, form));
  for (const ButtonProperty& property : buttonProperties()) {
    apply(property.key);
  }
}

void chameleonButton::setToolTip(const std::string& text) {
  HWND parent = GetParent(window);
  TOOLINFOW tool = toolOf(window, parent);
  if (tip != nullptr) {
    DestroyWindow(tip);
    tip = nullptr;
  }
  if (text.empty()) {
    return;
  }
  tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0,
                        0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  std::u16string wide = utf16(text);
  tool.lpszText = roomIn(wide);
  SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(tip, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  applyTipColors();
}

void chameleonButton::applyTipColors() const {
  colorTip(tip, palette.faces[static_cast<std::size_t>(Face::White)], palette.text);
}

void chameleonButton::setDefault(bool value) {
  isDefault = isDialogDefault = value;
  repaint();
}

void chameleonButton::setPalette(const Palette& shared) {
  palette = shared;
  palette.system = systemColors();
  applyTipColors();
  repaint();
}

void chameleonButton::setDpi(int value) {
  dpi = value;
  applyFont();
  applyOutline();
  repaint();
}

void chameleonButton::place(const Rectangle& where) {
  SetWindowPos(window, nullptr, where.left, where.top, where.width(), where.height(),
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void chameleonButton::repaint() const {
  if (!DisableRefresh && window != nullptr) {
    InvalidateRect(window, nullptr, FALSE);
  }
}

void chameleonButton::Refresh() {
  repaint();
  UpdateWindow(window);
}

Size chameleonButton::size() const {
  RECT client{};
  GetClientRect(window, &client);
  return {static_cast<int>(client.right), static_cast<int>(client.bottom)};
}

void chameleonButton::paint(HDC target) const {
  const PaintBuffer buffer(size(), sideOf(target));
  paintGround(window, buffer.dc());
  const bool hidesKeys = (SendMessageW(window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
  paintButton(buffer, properties(), stateNow(), {font.get(), dpi, palette, hidesKeys});
  buffer.show(target, 0, 0);
}

}  // namespace zelvreg::controls
