#include "desktop/FileDialog.h"

// This one needs <windows.h> before it.
#include <commdlg.h>

#include <algorithm>
#include <array>

#include "desktop/CenteredDialog.h"
#include "text/Wide.h"

namespace zelvreg::desktop {
namespace {

std::string ask(HWND owner, const CommonDialog& dialog, const std::string& suggested, DWORD flags,
                BOOL(WINAPI* show)(LPOPENFILENAMEW)) {
  std::array<char16_t, 1024> file{};
  const std::u16string name = utf16(suggested);
  if (name.size() < file.size()) {
    std::ranges::copy(name, file.begin());
  }
  std::u16string filter = utf16(dialog.filter) + u"||";
  for (char16_t& character : filter) {
    character = character == u'|' ? u'\0' : character;
  }
  // "*.txt" means the extension "txt".
  const std::size_t dot = dialog.defaultExtension.rfind('.');
  const Wide extension(
      std::string_view(dialog.defaultExtension).substr(dot == std::string::npos ? 0 : dot + 1));
  const Wide title(dialog.title);
  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner;
  request.lpstrFilter = wideText(filter);
  request.lpstrFile = roomIn(file);
  request.nMaxFile = static_cast<DWORD>(file.size());
  request.lpstrTitle = title.get();
  request.lpstrDefExt = extension.get();
  request.Flags = flags | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
  const CenteredDialog centered(owner);
  return show(&request) != FALSE ? utf8(file.data()) : std::string();
}

}  // namespace

std::string askToSave(HWND owner, const CommonDialog& dialog, const std::string& suggested) {
  return ask(owner, dialog, suggested, OFN_OVERWRITEPROMPT, GetSaveFileNameW);
}

std::string askToOpen(HWND owner, const CommonDialog& dialog) {
  return ask(owner, dialog, {}, OFN_FILEMUSTEXIST, GetOpenFileNameW);
}

}  // namespace zelvreg::desktop
