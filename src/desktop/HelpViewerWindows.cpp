#include "desktop/HelpViewer.h"

#include "libraries/SystemLibrary.h"
#include "runtime/Shares.h"
#include "shell/Help.h"
#include "text/Wide.h"

namespace zelvreg::desktop {
namespace {

// Whether the system shows a book that lies there. It opens one that lies on a share, or was
// downloaded and is marked so, but leaves its pages empty.
bool canBeShown(const std::string& book) {
  const auto isThere = [](const std::string& file) {
    return GetFileAttributesW(Wide(file).get()) != INVALID_FILE_ATTRIBUTES;
  };
  return !leadsToShare(book) && isThere(book) && !isThere(book + ":Zone.Identifier");
}

// The control of the system that shows compiled help, from the system's own folder. It is loaded
// when it is needed, which is rare.
bool isShown(HWND owner, const std::string& book, int context) {
  constexpr UINT helpContext = 15;
  using HtmlHelp = HWND WINAPI(HWND, LPCWSTR, UINT, DWORD_PTR);
  if (!canBeShown(book)) {
    return false;
  }
  const auto call = systemFunction<HtmlHelp>(L"hhctrl.ocx", "HtmlHelpW");
  return call != nullptr &&
         call(owner, Wide(book).get(), helpContext, static_cast<DWORD_PTR>(context)) != nullptr;
}

}  // namespace

void showHelp(Form42& form, HWND owner, const std::string& book, int context) {
  if (!isShown(owner, book, context)) {
    openHelpPage(form, context);
  }
}

}  // namespace zelvreg::desktop
