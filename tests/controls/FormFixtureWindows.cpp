#include <algorithm>

#include "controls/ButtonLook.h"
#include "controls/FormFixture.h"
#include "form/Form42.h"

namespace zelvreg::controls::fixture {
namespace {

constexpr const wchar_t* formClass = L"ZelvregTestForm";

}  // namespace

Form::Form() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = formClass;
  RegisterClassExW(&description);
  window = CreateWindowExW(0, formClass, L"", WS_POPUP | WS_SYSMENU, 50, 40, 300, 200, nullptr,
                           nullptr, description.hInstance, this);
  ShowWindow(window, SW_SHOW);
  SetForegroundWindow(window);
  messages.clear();
}

Form::~Form() {
  if (IsWindow(window) != 0) {
    DestroyWindow(window);
  }
  pump();
}

LRESULT CALLBACK Form::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (form == nullptr) {
    return DefWindowProcW(hwnd, message, wParam, lParam);
  }
  form->messages.push_back({message, wParam, lParam});
  if (form->answer && form->answer(form->messages.back())) {
    return 0;
  }
  if (message == WM_ERASEBKGND) {
    const auto dc = reinterpret_cast<HDC>(wParam);
    if (form->paintGround) {
      form->paintGround(dc);
    } else {
      const BrushHandle brush(CreateSolidBrush(colorRef(Palette().ground)));
      const RECT all{0, 0, 300, 200};
      FillRect(dc, &all, brush.get());
    }
    return TRUE;
  }
  return DefWindowProcW(hwnd, message, wParam, lParam);
}

int Form::count(UINT number) const {
  return static_cast<int>(std::ranges::count(messages, number, &Message::number));
}

void Form::pump() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool isInOutline(HWND window, int x, int y) {
  const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
  GetWindowRgn(window, region.get());
  return PtInRegion(region.get(), x, y) != 0;
}

bool hasOutline(HWND window) {
  const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
  return GetWindowRgn(window, region.get()) != ERROR;
}

int graphicsObjectsLeft() {
  std::vector<RegionHandle> made;
  while (RegionHandle region{CreateRectRgn(0, 0, 1, 1)}) {
    made.push_back(std::move(region));
  }
  return static_cast<int>(made.size());
}

}  // namespace zelvreg::controls::fixture
