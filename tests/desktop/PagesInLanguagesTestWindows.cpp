// Captions have the widths of the system's fonts only on Windows.
#include <algorithm>
#include <cwchar>
#include <functional>
#include <set>

#include "controls/ButtonContent.h"
#include "controls/GdiObjects.h"
#include "desktop/MainWindow.h"
#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "reports/EntryDetails.h"
#include "scan/Findings.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"
#include "text/Text.h"

namespace zelvreg::desktop {
namespace {

using fixture::ShippedLanguage;

const std::string folder = "C:\\PagesInLanguagesTest";

BOOL CALLBACK note(HWND child, LPARAM found) {
  reinterpret_cast<std::vector<HWND>*>(found)->push_back(child);
  return TRUE;
}

SIZE sizeOf(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  return {client.right, client.bottom};
}

// Of a text that wraps at a width.
SIZE extentOf(const std::u16string& text, HFONT font, int width) {
  const controls::WindowContext screen(nullptr);
  const controls::Selection selected(screen.get(), font);
  RECT box{0, 0, width, 0};
  DrawTextW(screen.get(), wideText(text), static_cast<int>(text.size()), &box,
            DT_CALCRECT | DT_WORDBREAK);
  return {box.right, box.bottom};
}

class PagesInLanguagesTest : public fixture::ComputerFixture {
 protected:
  PagesInLanguagesTest() {
    makeFile(folder + "\\lang\\data.lang", fixture::languageAsset("data.lang"));
    for (const ShippedLanguage& language : fixture::shippedLanguages) {
      const std::string name = fixture::fileOfLanguage(language);
      makeFile(folder + "\\lang\\" + name, fixture::languageAsset(name));
      const LanguageFile file(folder + "\\lang\\" + name, language.charset);
      std::set<std::string>& texts = textsOf.emplace_back();
      for (const auto& [section, key] : fixture::languageKeys()) {
        texts.insert(plain(file.value(section, key)));
      }
    }
    form.programFolder = folder;
    bindClicks(form);
    loadavlang(form);
    window.addLanguages();
    ShowWindow(window.hwnd(), SW_SHOW);
  }

  // Without the mark of an access key, and without a letter that was put behind for it.
  static std::string plain(const std::string& caption) {
    std::string text = replaceAll(caption, "&", "");
    if (text.size() > 3 && text.ends_with(')') && text[text.size() - 3] == '(') {
      text.resize(text.size() - 3);
    }
    return text;
  }

  void showPage(const Frame& page, bool isScanning) {
    for (Frame* frame : {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame7}) {
      frame->visible = frame == &page;
    }
    form.Frame8.visible = isScanning;
    form.Picture1.visible = &page == &form.Frame2;
    window.sharedDesk().catchUp();
  }

  void checkAll(HWND root) {
    std::vector<HWND> children;
    EnumChildWindows(root, note, reinterpret_cast<LPARAM>(&children));
    for (HWND child : children) {
      const Peer* peer = Peer::of(child);
      if (peer == nullptr || IsWindowVisible(child) == FALSE) {
        continue;
      }
      if (const auto* label = dynamic_cast<const LabelPeer*>(peer)) {
        checkLabel(*label);
      } else if (const auto* button = dynamic_cast<const ButtonPeer*>(peer)) {
        checkButton(*button);
      } else if (const auto* check = dynamic_cast<const CheckPeer*>(peer)) {
        checkLanguage(check->caption());
        EXPECT_LE(check->naturalWidth(), sizeOf(child).cx + 1) << where() << check->caption();
      } else if (const auto* list = dynamic_cast<const ListViewPeer*>(peer)) {
        checkColumns(*list);
      }
    }
  }

  void checkLabel(const LabelPeer& peer) {
    const std::string& text = peer.shownLabel().caption.get();
    for (const auto& entry : form.lbllanguage) {
      if (&peer.shownLabel() == entry.get()) {
        return;
      }
    }
    checkLanguage(text);
    const SIZE room = sizeOf(peer.hwnd());
    HFONT font = window.sharedDesk().font(peer.shownLabel().font);
    const bool fits =
        peer.textWidth() <= room.cx || extentOf(utf16(text), font, room.cx).cy <= room.cy;
    EXPECT_TRUE(fits) << where() << text;
  }

  void checkButton(const ButtonPeer& peer) {
    checkLanguage(peer.button().caption);
    checkLanguage(peer.button().toolTip);
    if (!peer.hasCaption()) {
      return;
    }
    wchar_t caption[256] = {};
    GetWindowTextW(peer.hwnd(), caption, 256);
    const SIZE size = sizeOf(peer.hwnd());
    const bool hasIcon = std::ranges::any_of(buttonPlaces(), [&](const ButtonPlace& each) {
      return &each.button(form) == &peer.button() && *each.icon != '\0';
    });
    const int icon = hasIcon ? 16 : 0;
    const controls::Size room =
        controls::captionRoom({static_cast<int>(size.cx), static_cast<int>(size.cy)}, {icon, icon},
                              controls::PicturePlace::Left, window.sharedDesk().resolution());
    const SIZE extent = extentOf(utf16(plain(peer.button().caption)),
                                 window.sharedDesk().font(peer.button().font), room.width);
    EXPECT_TRUE(extent.cx <= room.width && extent.cy <= room.height)
        << where() << peer.button().caption.get();
  }

  void checkColumns(const ListViewPeer& peer) {
    const auto& list = dynamic_cast<const ListView&>(peer.shownControl());
    HFONT font = window.sharedDesk().font(list.font, 0, true);
    for (std::size_t column = 0; column < list.columnHeaders().size(); ++column) {
      const std::string& text = list.columnHeaders()[column].text;
      const int width = ListView_GetColumnWidth(peer.hwnd(), static_cast<int>(column));
      if (width > 0) {
        checkLanguage(text);
        const int margins = window.sharedDesk().pixels(16);
        EXPECT_LE(extentOf(utf16(text), font, 1000).cx + margins, width) << where() << text;
      }
    }
  }

  // Of all that is shown at once.
  void checkAccessKeys() {
    std::vector<HWND> children;
    EnumChildWindows(window.hwnd(), note, reinterpret_cast<LPARAM>(&children));
    std::set<std::string> taken;
    for (HWND child : children) {
      wchar_t caption[256] = {};
      GetWindowTextW(child, caption, 256);
      const wchar_t* mark = std::wcschr(caption, L'&');
      if (IsWindowVisible(child) != FALSE && mark != nullptr) {
        const std::u16string letter(1, static_cast<char16_t>(mark[1]));
        EXPECT_TRUE(taken.insert(lowerCase(utf8(letter))).second) << where() << utf8(letter);
      }
    }
    EXPECT_GT(taken.size(), 10U) << where();
  }

  void checkLanguage(const std::string& text) {
    if (textsOf[language].contains(plain(text))) {
      return;
    }
    for (std::size_t other = 0; other < textsOf.size(); ++other) {
      EXPECT_FALSE(!text.empty() && textsOf[other].contains(plain(text)))
          << where() << text << " is " << fixture::shippedLanguages.at(other).tag;
    }
  }

  std::string where() const {
    return std::string(fixture::shippedLanguages.at(language).tag) + " " + page + ": ";
  }

  void walkThroughPages();

  void speak(std::size_t entry) {
    language = entry;
    lbllanguage_Click(form, entry);
  }

  // Does something while a window of the class is open.
  void whileOpen(const wchar_t* windowClass, const std::function<void(HWND)>& act) {
    form.messages.serveHost = [this, windowClass, act, isDone = false]() mutable {
      serve();
      HWND opened = isDone ? nullptr : FindWindowW(windowClass, nullptr);
      if (opened != nullptr) {
        isDone = true;
        act(opened);
      }
    };
  }

  MainWindow window{form};
  std::function<void()> serve = form.messages.serveHost;
  std::vector<std::set<std::string>> textsOf;
  std::size_t language = 0;
  std::string page;
};

void PagesInLanguagesTest::walkThroughPages() {
  ScannerRun run;
  addRow(form, run,
         {.location = "Startup programs",
          .badValue = "OldTool",
          .kindCode = "1",
          .rootName = "HKEY_CURRENT_USER",
          .subKey = "Software\\Example",
          .iconKey = "a"});
  for (std::size_t entry = 0; entry < textsOf.size(); ++entry) {
    speak(entry);
    const std::pair<const char*, Frame*> pages[] = {{"options", &form.Frame1},
                                                    {"results", &form.Frame2},
                                                    {"undo options", &form.Frame3},
                                                    {"exclusions", &form.Frame7}};
    for (const auto& [name, frame] : pages) {
      page = name;
      showPage(*frame, false);
      if (frame == &form.Frame2) {
        View2_ItemClick(form, 1);
      }
      checkAll(window.hwnd());
      checkAccessKeys();
    }
    page = "progress";
    showPage(form.Frame1, true);
    checkAll(window.hwnd());
    page = "outcome";
    form.OutcomeText.visible = form.UndoRepair.visible = true;
    form.Label10.visible = false;
    form.OutcomeText.caption = textOf(form, "repair-result", {"42", "4", "1"});
    showPage(form.Frame2, false);
    checkAll(window.hwnd());
    checkAccessKeys();
    form.OutcomeText.visible = form.UndoRepair.visible = false;
    form.Label10.visible = true;
    page = "tool bar";
    form.ToolbarBox.value = true;
    showPage(form.Frame1, false);
    checkAll(window.hwnd());
    checkAccessKeys();
    form.ToolbarBox.value = false;
  }
}

TEST_F(PagesInLanguagesTest, NoTextIsCutOrOfAnotherLanguage) { walkThroughPages(); }

TEST_F(PagesInLanguagesTest, NoTextIsCutOnAScreenOfAHigherResolution) {
  window.sharedDesk().setResolution(144);
  walkThroughPages();
}

TEST_F(PagesInLanguagesTest, NoTextOfADialogIsCutOrOfAnotherLanguage) {
  for (std::size_t entry = 0; entry < textsOf.size(); ++entry) {
    speak(entry);
    page = "exclusion";
    whileOpen(L"ZelvregSmallWindow", [this](HWND opened) {
      checkAll(opened);
      form.Form1.orubutton10.click();
    });
    form.chameleonButton5.click();
    page = "about";
    whileOpen(L"ZelvregSmallWindow", [this](HWND opened) {
      checkAll(opened);
      form.frmabout.chameleonButton3.click();
    });
    form.chameleonButton18.click();
    page = "question";
    whileOpen(L"ZelvregMessageWindow", [this](HWND opened) {
      checkAll(opened);
      PostMessageW(opened, WM_CLOSE, 0, 0);
    });
    form.dialogs.show({.text = textOf(form, "fix-question"),
                       .icon = MessageIcon::None,
                       .isQuestion = true,
                       .title = {}});
  }
}

// Where it is on the screen, counted from the left edge of the window.
int leftOf(HWND child, HWND window) {
  RECT all{};
  RECT place{};
  GetWindowRect(window, &all);
  GetWindowRect(child, &place);
  return place.left - all.left;
}

TEST_F(PagesInLanguagesTest, ALanguageThatIsReadFromTheRightMirrorsTheWindowAndAnotherOneBack) {
  const auto commandLeft = [this] {
    std::vector<HWND> children;
    EnumChildWindows(window.hwnd(), note, reinterpret_cast<LPARAM>(&children));
    const auto found = std::ranges::find_if(children, [this](HWND child) {
      return Peer::of(child) != nullptr && &Peer::of(child)->shownControl() == &form.cmd_search;
    });
    return leftOf(*found, window.hwnd());
  };
  const int middle = windowWidth / 2;
  speak(0);
  EXPECT_LT(commandLeft(), middle);
  speak(std::size(fixture::shippedLanguages) - 1);
  EXPECT_GT(commandLeft(), middle);
  EXPECT_NE(GetWindowLongPtrW(window.hwnd(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
  speak(1);
  EXPECT_LT(commandLeft(), middle);
  EXPECT_EQ(GetWindowLongPtrW(window.hwnd(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL, 0);
}

}  // namespace
}  // namespace zelvreg::desktop
