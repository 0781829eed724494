#include "translator/TranslatorWindow.h"

#include <vector>

#include "controls/Color.h"
#include "desktop/AccessKeys.h"
#include "desktop/FileDialog.h"
#include "desktop/HelpViewer.h"
#include "desktop/ListViewPeer.h"
#include "desktop/MessageWindow.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "layout/TranslatorPlaces.h"
#include "shell/Help.h"
#include "shell/SuiteColor.h"
#include "shell/ThemeChoice.h"
#include "shell/WindowEvents.h"

namespace zelvreg::desktop {

namespace places = translatorPlaces;

namespace {

// No two of the window's captions have the same letter.
void giveAccessKeys(TranslatorForm& form) {
  const std::vector<Button*> buttons{&form.next, &form.save, &form.saveAs, &form.open,
                                     &form.create};
  const std::vector<CheckBox*> boxes{&form.onlyWork, &form.utf8};
  std::vector<std::string> captions;
  for (const Button* button : buttons) {
    captions.push_back(button->caption);
  }
  for (const CheckBox* box : boxes) {
    captions.push_back(box->caption);
  }
  std::size_t number = 0;
  const std::vector<std::string> marked = withAccessKeys(captions);
  for (Button* button : buttons) {
    button->caption = marked[number++];
  }
  for (CheckBox* box : boxes) {
    box->caption = marked[number++];
  }
}

}  // namespace

TranslatorWindow::TranslatorWindow(Form42& programForm)
    : form(programForm), shown(programForm), desk(resolutionOfSystem()) {
  desk.readColors(isDarkWanted(form) ? Theme::Dark : Theme::Light);
  const std::uint32_t accent = suiteColor(form);
  if (!controls::isSystemColor(accent)) {
    desk.colors.setAccent(controls::fromProperty(accent));
  }
  desk.isMirrored = form.readsFromRight;
  const SIZE screen = screenSize();
  form.screen = {.width = desk.toTwips(screen.cx), .height = desk.toTwips(screen.cy)};
  centerOnScreen(shown.form.window, form.screen);
  giveAccessKeys(shown.form);
  window = std::make_unique<SmallWindow>(
      desk, shown.form.window, shown.form.shadow, nullptr, [this] { shown.form.close.click(); },
      SmallWindowOptions{.windowClass = L"ZelvregTranslator",
                         .title = shown.form.title.caption,
                         .help = [this] { openHelp(form, "translate"); }});
  addControls();
  shown.askForFile = [this](bool isToSave, const std::string& suggested) {
    return askForFile(isToSave, suggested);
  };
  form.messages.serveHost = [this] { serve(); };
  form.openHelp = [this](const std::string& book, int context) {
    showHelp(form, window->hwnd(), book, context);
  };
  form.dialogs.show = [this](const UserMessage& message) {
    return showMessageWindow(window->ownDesk(), form, window->hwnd(), message);
  };
  drawShadow(shown.form.shadow);
}

TranslatorWindow::~TranslatorWindow() {
  form.messages.serveHost = nullptr;
  form.dialogs.show = nullptr;
}

void TranslatorWindow::addLabel(Label& label, const Place& place, LabelLook look) {
  window->add(label, place, look);
}

void TranslatorWindow::addControls() {
  window->add(shown.form.title, places::title, LabelLook::WindowTitle);
  addFileControls();
  addList();
  addTextControls();
  window->add(shown.form.close, places::close, ButtonRole::Title, "exit");
}

void TranslatorWindow::addFileControls() {
  TranslatorForm& controls = shown.form;
  const auto addCombo = [this](ComboBox& box, const Label& name, const Place& place) {
    auto peer = std::make_unique<ComboPeer>(window->ownDesk(), window->hwnd(), box);
    peer->nameOf = [&name] { return name.caption.get(); };
    window->add(box, place, std::move(peer));
  };
  addLabel(controls.languageWord, places::languageWord, LabelLook::Plain);
  addCombo(controls.language, controls.languageWord, places::language);
  window->add(controls.open, places::open, ButtonRole::Plain, "");
  window->add(controls.create, places::create, ButtonRole::Plain, "");
  addLabel(controls.fileInfo, places::fileInfo, LabelLook::Secondary);
  addLabel(controls.charsetWord, places::charsetWord, LabelLook::Plain);
  addCombo(controls.charset, controls.charsetWord, places::charset);
  addLabel(controls.nameWord, places::nameWord, LabelLook::Plain);
  window->add(controls.name, places::name, controls.nameWord);
  const auto addBox = [this](CheckBox& box, const Place& place) {
    window->add(box, place,
                std::make_unique<CheckPeer>(window->ownDesk(), window->hwnd(), box, Tone::Surface));
  };
  addBox(controls.utf8, places::utf8);
  addBox(controls.onlyWork, places::onlyWork);
  addLabel(controls.count, places::count, LabelLook::SecondaryRight);
}

void TranslatorWindow::addList() {
  auto peer = std::make_unique<ListViewPeer>(
      window->ownDesk(), window->hwnd(), shown.form.list,
      ListOptions{.hasMarks = true,
                  .columnWidths = {places::columnWidths.begin(), places::columnWidths.end()}});
  peer->onItemClick = [this](std::size_t row) { shown.select(row); };
  peer->nameOf = [this] { return shown.form.translationWord.caption.get(); };
  peer->markOf = [this](std::size_t row) { return shown.markOf(row); };
  peer->tipOf = [this](std::size_t row) { return shown.form.list.text(row, remarkColumn); };
  window->add(shown.form.list, places::list, std::move(peer));
}

void TranslatorWindow::addTextControls() {
  TranslatorForm& controls = shown.form;
  addLabel(controls.englishWord, places::englishWord, LabelLook::Strong);
  addLabel(controls.englishText, places::englishText, LabelLook::Explanation);
  addLabel(controls.translationWord, places::translationWord, LabelLook::Strong);
  addLabel(controls.remark, places::remark, LabelLook::Problem);
  window->add(controls.next, places::next, ButtonRole::Primary, "");
  window->add(controls.save, places::save, ButtonRole::Plain, "");
  window->add(controls.saveAs, places::saveAs, ButtonRole::Plain, "");
  // The last field has the focus first.
  window->add(controls.translation, places::translation, controls.translationWord);
}

void TranslatorWindow::run(const std::string& file) {
  shown.form.isOpen = true;
  if (!file.empty()) {
    shown.open(file);
  }
  window->runModal(form.messages, shown.form.isOpen);
}

void TranslatorWindow::serve() {
  window->ownDesk().catchUp();
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if (!shortcut(message) && (root == nullptr || IsDialogMessageW(root, &message) == FALSE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    window->ownDesk().catchUp();
  }
}

// Not while a message of the program is open.
bool TranslatorWindow::shortcut(const MSG& message) {
  if (message.message != WM_KEYDOWN || GetAncestor(message.hwnd, GA_ROOT) != window->hwnd()) {
    return false;
  }
  switch (message.wParam) {
    case VK_F8:
      shown.form.next.click();
      return true;
    case 'S':
      if (GetKeyState(VK_CONTROL) < 0) {
        shown.form.save.click();
        return true;
      }
      return false;
    default:
      return false;
  }
}

std::string TranslatorWindow::askForFile(bool isToSave, const std::string& suggested) {
  CommonDialog dialog;
  const std::string filter = shown.told("file-filter");
  dialog.filter = filter + "|*.lang";
  dialog.defaultExtension = "*.lang";
  dialog.title = shown.told(isToSave ? "save-as" : "open");
  return isToSave ? askToSave(window->hwnd(), dialog, suggested)
                  : askToOpen(window->hwnd(), dialog);
}

}  // namespace zelvreg::desktop
