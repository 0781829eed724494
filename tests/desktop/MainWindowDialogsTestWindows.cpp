// Windows shows menus.
#include <functional>
#include <utility>

#include "desktop/MainWindowFixture.h"

namespace zelvreg::desktop {
namespace {

using Texts = std::vector<std::wstring>;

// Acts as the user, once, as soon as a menu of a window waits for one.
class User {
 public:
  User(HWND ownerWindow, std::function<void(HWND opened)> acts)
      : owner(ownerWindow), act(std::move(acts)) {
    SetWindowSubclass(owner, procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  }
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User() { RemoveWindowSubclass(owner, procedure, subclassId); }

  // The entries of the menu that was opened last.
  Texts entries;

 private:
  static constexpr UINT_PTR subclassId = 98;

  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR reference) {
    auto* user = reinterpret_cast<User*>(reference);
    if (message == WM_INITMENUPOPUP) {
      user->read(reinterpret_cast<HMENU>(wParam));
    } else if (message == WM_ENTERIDLE && user->act) {
      std::exchange(user->act, nullptr)(reinterpret_cast<HWND>(lParam));
    }
    return DefSubclassProc(hwnd, message, wParam, lParam);
  }
  void read(HMENU menu) {
    entries.clear();
    for (int place = 0; place < GetMenuItemCount(menu); ++place) {
      wchar_t text[64] = {};
      GetMenuStringW(menu, static_cast<UINT>(place), text, 64, MF_BYPOSITION);
      entries.emplace_back(text);
    }
  }

  HWND owner;
  std::function<void(HWND opened)> act;
};

class ResultsTest : public MainWindowTest {
 protected:
  ResultsTest() {
    form.Frame1.visible = false;
    form.Frame2.visible = true;
    ShowWindow(window.hwnd(), SW_SHOW);
  }

  HWND list() const { return windowOf(form.View2, WC_LISTVIEWW); }
  void tell(UINT code, int item = 0) const {
    NMITEMACTIVATE told{};
    told.hdr = {list(), 0, code};
    told.iItem = item;
    SendMessageW(GetParent(list()), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&told));
  }
  // Opens the menu by the mouse and presses keys in it.
  Texts pressInMenu(const std::vector<WPARAM>& keys) const {
    User user(window.hwnd(), [this, &keys](HWND) {
      for (const WPARAM key : keys) {
        PostMessageW(window.hwnd(), WM_KEYDOWN, key, 0);
      }
    });
    tell(NM_RCLICK);
    return user.entries;
  }
};

const Texts commands = {L"Select All", L"Select None", L"Exclude selected path from future scan",
                        L"Remove selected", L"Open selected item in registry Editor"};

TEST_F(ResultsTest, TheirMenuHasItsCommandsInOrder) {
  form.View2.add("one");
  serve();
  EXPECT_EQ(pressInMenu({VK_ESCAPE}), commands);
}

TEST_F(ResultsTest, TheirMenuIsOpenedByTheKeyboardToo) {
  form.View2.add("one");
  serve();
  ListView_SetItemState(list(), 0, LVIS_FOCUSED, LVIS_FOCUSED);
  const User user(window.hwnd(),
                  [this](HWND) { PostMessageW(window.hwnd(), WM_KEYDOWN, VK_ESCAPE, 0); });
  SendMessageW(list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list()), -1);
  EXPECT_EQ(user.entries, commands);
}

TEST_F(ResultsTest, WithoutARowThereIsNoMenu) { EXPECT_EQ(pressInMenu({VK_ESCAPE}), Texts()); }

TEST_F(ResultsTest, AnEntryOfTheirMenuDoesWhatItSays) {
  std::string clicked;
  form.b.bind([&] { clicked += "b"; });
  form.c.bind([&] { clicked += "c"; });
  form.g.bind([&] { clicked += "g"; });
  form.i.bind([&] { clicked += "i"; });
  form.e.bind([&] { clicked += "e"; });
  form.View2.add("one");
  serve();
  std::vector<WPARAM> keys;
  for (std::size_t entry = 0; entry < commands.size(); ++entry) {
    keys.push_back(VK_DOWN);
    std::vector<WPARAM> pressed = keys;
    pressed.push_back(VK_RETURN);
    pressInMenu(pressed);
  }
  EXPECT_EQ(clicked, "bcgie");
  pressInMenu({VK_DOWN, VK_ESCAPE});
  EXPECT_EQ(clicked, "bcgie") << "nothing was chosen";
}

}  // namespace
}  // namespace zelvreg::desktop
