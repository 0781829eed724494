#include "controls/TransForm.h"

#include <commctrl.h>

#include <cstddef>
#include <cstring>
#include <vector>

#include "controls/PaintBuffer.h"
#include "controls/WindowRegion.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

// The number of these controls on a form.
constexpr const wchar_t* countProperty = L"TransForm";

constexpr UINT pressOnFrame = 0xA1;
constexpr WPARAM onCaption = 2;
constexpr UINT buttonUp = 0x202;
constexpr UINT systemCommand = 0x112;

INT_PTR controlsOn(HWND form) { return reinterpret_cast<INT_PTR>(GetPropW(form, countProperty)); }

void countOn(HWND form, INT_PTR count) {
  if (count == 0) {
    RemovePropW(form, countProperty);
  } else {
    SetPropW(form, countProperty, reinterpret_cast<HANDLE>(count));
  }
}

// In one call, because joining a region part by part is slow.
RegionHandle regionOf(const std::vector<Rectangle>& parts) {
  std::vector<std::byte> data(sizeof(RGNDATAHEADER) + parts.size() * sizeof(RECT));
  RGNDATAHEADER header{};
  header.dwSize = sizeof header;
  header.iType = RDH_RECTANGLES;
  header.nCount = static_cast<DWORD>(parts.size());
  std::memcpy(data.data(), &header, sizeof header);
  std::size_t at = sizeof header;
  for (const Rectangle& part : parts) {
    const RECT rectangle{part.left, part.top, part.right, part.bottom};
    std::memcpy(data.data() + at, &rectangle, sizeof rectangle);
    at += sizeof rectangle;
  }
  return RegionHandle(ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()),
                                      reinterpret_cast<const RGNDATA*>(data.data())));
}

// Also of a window that is laid out from the right, whose points count from there.
RECT clientOnScreen(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  return client;
}

}  // namespace

TransForm::TransForm(HWND form, bool userMode, ShowMessage showMessage)
    : parent(form), isRunning(userMode) {
  countOn(parent, controlsOn(parent) + 1);
  SetWindowSubclass(parent, procedure, reinterpret_cast<UINT_PTR>(this),
                    reinterpret_cast<DWORD_PTR>(this));
  if (isAlone()) {
    return;
  }
  if (showMessage) {
    showMessage(secondControlTitle(), secondControlText());
  } else {
    MessageBoxW(parent, Wide(secondControlText()).get(), Wide(secondControlTitle()).get(), MB_OK);
  }
}

TransForm::~TransForm() {
  if (parent != nullptr) {
    RemoveWindowSubclass(parent, procedure, reinterpret_cast<UINT_PTR>(this));
    countOn(parent, controlsOn(parent) - 1);
  }
}

bool TransForm::isAlone() const { return parent != nullptr && controlsOn(parent) == 1; }

void TransForm::setMaskColor(std::uint32_t value) {
  settings.MaskColor = value;
  Refresh();
}

void TransForm::setTransparent(bool value) {
  settings.Transparent = value;
  Refresh();
}

void TransForm::setAutoDrag(bool value) { settings.AutoDrag = value; }

void TransForm::read(const PropertyBag& bag) {
  settings = readFormShape(bag);
  Refresh();
}

RegionHandle TransForm::maskedOutline() const {
  RECT client{};
  GetClientRect(parent, &client);
  const PaintBuffer buffer({static_cast<int>(client.right), static_cast<int>(client.bottom)});
  const auto context = reinterpret_cast<WPARAM>(buffer.dc());
  SendMessageW(parent, WM_ERASEBKGND, context, 0);
  SendMessageW(parent, WM_PRINTCLIENT, context, PRF_CLIENT | PRF_ERASEBKGND);
  return regionOf(opaqueParts(buffer.copy(), fromProperty(colorOfNow(settings.MaskColor))));
}

void TransForm::Refresh() {
  if (!isRunning || !isAlone()) {
    return;
  }
  if (!isShaped) {
    isShaped = true;
    // An outline that the form had before remains its limit; a form without one has no limit.
    RegionHandle found(CreateRectRgn(0, 0, 200, 200));
    if (GetWindowRgn(parent, found.get()) > NULLREGION) {
      before = std::move(found);
    }
  }
  HRGN outline = nullptr;
  if (settings.Transparent) {
    RegionHandle masked = maskedOutline();
    RECT window{};
    GetWindowRect(parent, &window);
    const RECT client = clientOnScreen(parent);
    OffsetRgn(masked.get(), client.left - window.left, client.top - window.top);
    if (before) {
      CombineRgn(masked.get(), masked.get(), before.get(), RGN_AND);
    }
    outline = masked.release();
  } else if (before) {
    outline = CreateRectRgn(0, 0, 0, 0);
    CombineRgn(outline, before.get(), nullptr, RGN_COPY);
  }
  // The region belongs to the window from here on.
  if (SetWindowRgn(parent, outline, TRUE) == 0 && outline != nullptr) {
    DeleteObject(outline);
  }
}

LRESULT CALLBACK TransForm::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR reference) {
  auto* control = reinterpret_cast<TransForm*>(reference);
  if (message == WM_NCDESTROY) {
    countOn(hwnd, controlsOn(hwnd) - 1);
    RemoveWindowSubclass(hwnd, procedure, id);
    control->parent = nullptr;
    return DefSubclassProc(hwnd, message, wParam, lParam);
  }
  const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
  // The form's own handler may have destroyed the control.
  if (message == WM_LBUTTONDOWN && GetWindowSubclass(hwnd, procedure, id, &reference) != 0 &&
      control->isRunning && control->isAlone() && control->settings.AutoDrag) {
    ReleaseCapture();
    SendMessageW(hwnd, pressOnFrame, onCaption, 0);
    // The drag has consumed the button-up message that the form waits for.
    PostMessageW(hwnd, buttonUp, 0, 0);
  }
  return result;
}

void TransForm::PopupSysMenu() const {
  if (!isRunning || !isAlone()) {
    return;
  }
  POINT place{};
  GetCursorPos(&place);
  const RECT client = clientOnScreen(parent);
  if (PtInRect(&client, place) == 0) {
    place = {client.left, client.top};
  }
  const int command = TrackPopupMenu(GetSystemMenu(parent, FALSE), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                     place.x, place.y, 0, parent, nullptr);
  if (command != 0) {
    PostMessageW(parent, systemCommand, static_cast<WPARAM>(command), 0);
  }
}

}  // namespace zelvreg::controls
