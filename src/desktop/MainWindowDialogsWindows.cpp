// What the main window shows outside its pages: messages, the file dialog, menus.
#include <windows.h>

#include <array>

#include "desktop/FileDialog.h"
#include "desktop/HelpViewer.h"
#include "desktop/MainWindow.h"
#include "desktop/MessageWindow.h"
#include "desktop/SmallWindow.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
void MainWindow::connectForm() {
  form.messages.serveHost = [this] { serve(); };
  form.dialogs.show = [this](const UserMessage& message) { return showMessage(message); };
  form.dlg1.show = [this](const CommonDialog& dialog) { return askToSave(window, dialog); };
  form.Form1.show = [this](ExclusionDialog&) { showExclusionDialog(desk, form, window); };
  form.frmabout.show = [this](AboutDialog&) { showAboutDialog(desk, form, window); };
  form.openHelp = [this](const std::string& file, int context) {
    showHelp(form, window, file, context);
  };
  form.onLanguage = [this] { changeLanguage(); };
  // Called from within the system's own calls; no exception may pass through these.
  form.onProcessEnd = [this] {
    tray.area().setVisible(false);
    menuHolder->release();
    ShowWindow(window, SW_HIDE);
    ExitProcess(0);
  };
}

Answer MainWindow::showMessage(const UserMessage& message) {
  desk.catchUp();
  // Whichever of the program's windows the user works in, even if another program is in front.
  HWND owner = IsWindowVisible(window) != FALSE ? GetLastActivePopup(window) : nullptr;
  follower.showMessage(message.icon == MessageIcon::Exclamation ? TaskState::Failed
                                                                : TaskState::Paused);
  const Answer answer = showMessageWindow(desk, form, owner, message);
  follower.showMessage(std::nullopt);
  return answer;
}

void MainWindow::openMenu(POINT onScreen) {
  if (form.View2.count() == 0) {
    return;
  }
  const std::array<const MenuEntry*, 5> entries{&form.b, &form.c, &form.g, &form.i, &form.e};
  HMENU menu = CreatePopupMenu();
  for (UINT number = 0; number < entries.size(); ++number) {
    AppendMenuW(menu, MF_STRING, number + 1, Wide(entries[number]->caption).get());
  }
  if (form.menus.drawing != MenuDrawing::System) {
    const bool isForeign = form.menus.drawing == MenuDrawing::InOwnCharset;
    menuHolder->hold(std::make_unique<controls::CoolMenu>(
        controls::MenuPictures{},
        controls::MenuSettings{
            .dpi = desk.resolution(),
            .charset = isForeign ? std::optional(static_cast<BYTE>(form.langCode)) : std::nullopt,
            .colors = desk.colors.menuColors()}));
    menuHolder->current()->installPopup(menu);
  }
  const UINT side = desk.isMirrored ? TPM_LAYOUTRTL | TPM_RIGHTALIGN : TPM_LEFTALIGN;
  const int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON | side, onScreen.x,
                                    onScreen.y, 0, window, nullptr);
  menuHolder->release();
  DestroyMenu(menu);
  if (chosen > 0) {
    entries[static_cast<std::size_t>(chosen) - 1]->click();
  }
}

}  // namespace zelvreg::desktop
