// Keys and the mouse come from Windows.
#include "controls/ButtonStyles.h"
#include "controls/ChameleonButtonFixture.h"
#include "form/Form42.h"

namespace zelvreg::controls {
namespace {

using fixture::Form;

TEST_F(ChameleonButton, AClickIsReportedToItselfAndToTheForm) {
  int clicks = 0;
  button->onClick = [&] { ++clicks; };
  send(BM_CLICK);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(form.count(WM_COMMAND), 1);
}

TEST_F(ChameleonButton, TheSpaceKeyPressesIt) {
  int clicks = 0;
  button->onClick = [&] { ++clicks; };
  SetFocus(button->hwnd());
  send(WM_KEYDOWN, VK_SPACE);
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(send(BM_GETSTATE) & BST_PUSHED);
  send(WM_KEYUP, VK_SPACE);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ChameleonButton, TabMovesOnAndTheReturnKeyPressesTheOneWithTheFocus) {
  chameleonButton second(form.hwnd(), 8);
  second.place({20, 80, 120, 112});
  ShowWindow(second.hwnd(), SW_SHOW);
  int clicks = 0;
  second.onClick = [&] { ++clicks; };
  SetFocus(button->hwnd());
  pressInDialog(button->hwnd(), WM_KEYDOWN, VK_TAB);
  EXPECT_EQ(GetFocus(), second.hwnd());
  pressInDialog(second.hwnd(), WM_KEYDOWN, VK_RETURN);
  EXPECT_EQ(clicks, 1);
}

TEST_F(ChameleonButton, ItsAccessKeyPressesIt) {
  chameleonButton second(form.hwnd(), 8);
  ShowWindow(second.hwnd(), SW_SHOW);
  int clicks = 0;
  button->onClick = [&] { ++clicks; };
  button->set(&ButtonProperties::Caption, "&Next");
  SetFocus(second.hwnd());
  pressInDialog(second.hwnd(), WM_SYSCHAR, 'n');
  EXPECT_EQ(clicks, 1);
}

TEST_F(ChameleonButton, ItStaysOwnerDrawnWhenTheDialogManagerChangesItsStyle) {
  send(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
  EXPECT_EQ(GetWindowLongW(button->hwnd(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
  EXPECT_TRUE(send(WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON);
  send(BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  EXPECT_TRUE(send(WM_GETDLGCODE) & DLGC_UNDEFPUSHBUTTON);
}

TEST_F(ChameleonButton, KeysAndMouseAreReported) {
  std::string heard;
  button->onKeyDown = [&](int key) { heard += "down" + std::to_string(key) + " "; };
  button->onKeyUp = [&](int key) { heard += "up" + std::to_string(key) + " "; };
  const auto note = [&](const char* what) {
    return [&heard, what](int mouse, int x, int y) {
      heard +=
          what + std::to_string(mouse) + "," + std::to_string(x) + "," + std::to_string(y) + " ";
    };
  };
  button->onMouseDown = note("press");
  button->onMouseUp = note("release");
  button->onMouseMove = note("move");
  send(WM_KEYDOWN, 'A');
  send(WM_KEYUP, 'A');
  send(WM_MOUSEMOVE, 0, MAKELPARAM(3, 4));
  send(WM_RBUTTONDOWN, 0, MAKELPARAM(5, 6));
  send(WM_RBUTTONUP, 0, MAKELPARAM(5, 6));
  EXPECT_EQ(heard, "down65 up65 move0,3,4 press2,5,6 release2,5,6 ");
}

TEST_F(ChameleonButton, AnArrowKeyMovesTheFocusAsTheTabKeyDoes) {
  SetFocus(button->hwnd());
  send(WM_KEYDOWN, VK_RIGHT);
  MSG message{};
  int tabs = 0;
  while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE) != 0) {
    tabs += message.message == WM_KEYDOWN && message.wParam == VK_TAB;
  }
  EXPECT_EQ(tabs, 1);
}

TEST_F(ChameleonButton, TwoQuickPressesAreTwoClicks) {
  int clicks = 0;
  button->onClick = [&] { ++clicks; };
  for (const UINT press : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
    send(press, MK_LBUTTON, MAKELPARAM(10, 10));
    send(WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
  }
  EXPECT_EQ(clicks, 2);
}

TEST_F(ChameleonButton, AsACheckBoxItChangesItsValueBeforeTheClick) {
  bool seen = false;
  button->onClick = [&] { seen = button->properties().Value; };
  send(BM_CLICK);
  EXPECT_FALSE(seen);
  button->set(&ButtonProperties::CheckBoxBehaviour, true);
  send(BM_CLICK);
  EXPECT_TRUE(seen);
  EXPECT_EQ(send(BM_GETCHECK), BST_CHECKED);
  send(BM_CLICK);
  EXPECT_FALSE(seen);
  EXPECT_EQ(send(BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(ChameleonButton, ACursorThatLeavesWithoutAMessageIsNoticedAtTheNextTick) {
  int left = 0;
  button->onMouseOut = [&] { ++left; };
  const Bitmap normal = painted();
  moveMouseOn();
  EXPECT_TRUE(button->isHovered());
  EXPECT_NE(painted(), normal);
  tick();
  EXPECT_TRUE(button->isHovered()) << "the cursor is still on it";
  SetCursorPos(5, 5);
  EXPECT_TRUE(button->isHovered());
  ValidateRect(button->hwnd(), nullptr);
  tick();
  EXPECT_FALSE(button->isHovered());
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(GetUpdateRect(button->hwnd(), nullptr, FALSE));
  EXPECT_EQ(painted(), normal);
  EXPECT_FALSE(KillTimer(button->hwnd(), 1)) << "its timer has stopped";
}

TEST_F(ChameleonButton, HeldDownItIsNotHoveredWhileTheMouseIsOutside) {
  int left = 0;
  button->onMouseOut = [&] { ++left; };
  moveMouseOn();
  send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10));
  SetCursorPos(5, 5);
  tick();
  for (int move = 0; move < 3; ++move) {
    // It receives mouse moves as long as it has captured the mouse.
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-65, -65));
    EXPECT_FALSE(button->isHovered());
    tick();
  }
  EXPECT_EQ(left, 1);
  moveMouseOn();
  EXPECT_TRUE(button->isHovered());
}

TEST_F(ChameleonButton, TheTimerRunsAsLongAsTheMouseIsOverIt) {
  EXPECT_FALSE(KillTimer(button->hwnd(), 1));
  moveMouseOn();
  tick();
  SetCursorPos(5, 5);
  for (int wait = 0; button->isHovered() && wait < 100; ++wait) {
    Sleep(20);
    Form::pump();
  }
  EXPECT_FALSE(button->isHovered());
}

TEST_F(ChameleonButton, TheLeaveEventComesWhenItIsNoLongerHovered) {
  bool wasHovered = true;
  button->onMouseOut = [&] { wasHovered = button->isHovered(); };
  moveMouseOn();
  SetCursorPos(5, 5);
  tick();
  EXPECT_FALSE(wasHovered);
}

TEST_F(ChameleonButton, StyleElevenSetWithTheCursorOnACutCornerIsNotHovered) {
  moveMouseOn();
  SetCursorPos(50 + 20 + 3, 40 + 30 + 3);
  int left = 0;
  button->onMouseOut = [&] { ++left; };
  button->set(&ButtonProperties::ButtonType, changingStyle);
  EXPECT_EQ(left, 1);
  EXPECT_FALSE(button->isHovered());
}

TEST_F(ChameleonButton, DisabledTakesNoInput) {
  button->set(&ButtonProperties::Enabled, false);
  EXPECT_FALSE(IsWindowEnabled(button->hwnd()));
  button->set(&ButtonProperties::Enabled, true);
  EXPECT_TRUE(IsWindowEnabled(button->hwnd()));
}

TEST_F(ChameleonButton, AHandPointerIsShownOverIt) {
  button->set(&ButtonProperties::HandPointer, true);
  EXPECT_EQ(send(WM_SETCURSOR, reinterpret_cast<WPARAM>(button->hwnd()), HTCLIENT), TRUE);
  EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_HAND));
}

TEST_F(ChameleonButton, TheMousePointerIsShownOverIt) {
  const auto shown = [this](std::int16_t pointer) {
    button->set(&ButtonProperties::MousePointer, pointer);
    send(WM_SETCURSOR, reinterpret_cast<WPARAM>(button->hwnd()), HTCLIENT);
    return GetCursor();
  };
  EXPECT_EQ(shown(11), LoadCursorW(nullptr, IDC_WAIT));
  EXPECT_EQ(shown(2), LoadCursorW(nullptr, IDC_CROSS));
  EXPECT_EQ(shown(-1), LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(shown(99), LoadCursorW(nullptr, IDC_ARROW)) << "there is no icon yet";
  button->set(&ButtonProperties::MouseIcon, std::make_shared<const Bitmap>(16, 16));
  HCURSOR own = shown(99);
  EXPECT_NE(own, LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_NE(shown(2), own);
}

TEST_F(ChameleonButton, AClickMayDestroyIt) {
  button->onClick = [this] { button.reset(); };
  send(BM_CLICK);
  EXPECT_EQ(button, nullptr);
}

}  // namespace
}  // namespace zelvreg::controls
