#include "desktop/CenteredDialog.h"

#include <algorithm>
#include <utility>

#include "desktop/SystemScreen.h"

namespace zelvreg::desktop {
namespace {

// The system passes nothing of ours to the hook. There is one thread.
CenteredDialog* current = nullptr;

// In the middle, but inside the area.
LONG middle(LONG first, LONG last, LONG length, LONG start, LONG end) {
  return std::max(start, std::min((first + last - length) / 2, end - length));
}

}  // namespace

CenteredDialog::CenteredDialog(HWND ownerOfDialog)
    : owner(ownerOfDialog),
      hook(SetWindowsHookExW(WH_CBT, procedure, nullptr, GetCurrentThreadId())) {
  current = this;
}

CenteredDialog::~CenteredDialog() {
  current = nullptr;
  UnhookWindowsHookEx(hook);
}

LRESULT CALLBACK CenteredDialog::procedure(int code, WPARAM wParam, LPARAM lParam) {
  auto* dialog = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_ACTIVATE && current != nullptr &&
      GetWindow(dialog, GW_OWNER) == current->owner) {
    std::exchange(current, nullptr)->center(dialog);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CenteredDialog::center(HWND dialog) {
  RECT around{};
  RECT place{};
  GetWindowRect(owner, &around);
  GetWindowRect(dialog, &place);
  const RECT area = areasAround(owner).work;
  SetWindowPos(dialog, nullptr,
               middle(around.left, around.right, place.right - place.left, area.left, area.right),
               middle(around.top, around.bottom, place.bottom - place.top, area.top, area.bottom),
               0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace zelvreg::desktop
