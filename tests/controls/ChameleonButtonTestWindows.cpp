// A button is a window of Windows.
#include "controls/chameleonButton.h"

// This one stands on <windows.h>.
#include <commctrl.h>

#include <array>
#include <memory>

#include "controls/ButtonStyles.h"
#include "controls/FormFixture.h"

namespace zelvreg::controls {
namespace {

using fixture::Form;
using fixture::isInOutline;

class ChameleonButton : public ::testing::Test {
 protected:
  ChameleonButton() {
    button->place({20, 30, 120, 62});
    ShowWindow(button->hwnd(), SW_SHOW);
  }

  static LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(window, message, wParam, lParam);
  }
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return send(button->hwnd(), message, wParam, lParam);
  }
  // A key as the message loop of a form with a keyboard sees it.
  void pressInDialog(HWND window, UINT message, WPARAM key) const {
    MSG press{};
    press.hwnd = window;
    press.message = message;
    press.wParam = key;
    if (IsDialogMessageW(form.hwnd(), &press) == 0) {
      DispatchMessageW(&press);
    }
  }
  void moveMouseOn() const {
    SetCursorPos(50 + 40, 40 + 40);
    send(WM_MOUSEMOVE, 0, MAKELPARAM(20, 10));
  }
  void tick() const { send(WM_TIMER, 1); }
  Bitmap painted() const {
    const PaintBuffer buffer({100, 32});
    button->paint(buffer.dc());
    return buffer.copy();
  }

  Form form;
  std::unique_ptr<chameleonButton> button = std::make_unique<chameleonButton>(form.hwnd(), 7);
};

TEST_F(ChameleonButton, IsAButtonOfTheSystemUnderneath) {
  std::array<wchar_t, 32> name{};
  GetClassNameW(button->hwnd(), name.data(), static_cast<int>(name.size()));
  EXPECT_STREQ(name.data(), L"Button");
  const LONG style = GetWindowLongW(button->hwnd(), GWL_STYLE);
  EXPECT_EQ(style & BS_TYPEMASK, BS_OWNERDRAW);
  EXPECT_TRUE(style & WS_TABSTOP);
  EXPECT_EQ(GetDlgCtrlID(button->hwnd()), 7);
  EXPECT_EQ(chameleonButton::Version, "2.0.6");
}

TEST_F(ChameleonButton, ItsCaptionIsTheTextThatScreenReadersRead) {
  button->set(&ButtonProperties::Caption,
              "Zur\xC3\xBC"
              "ck");
  std::array<wchar_t, 32> text{};
  GetWindowTextW(button->hwnd(), text.data(), static_cast<int>(text.size()));
  EXPECT_STREQ(text.data(), L"Zur\u00FCck");
}

TEST_F(ChameleonButton, AClickIsHeardByItselfAndByTheForm) {
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

TEST_F(ChameleonButton, TheDialogManagerLeavesItDrawnByItsOwner) {
  send(BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
  EXPECT_EQ(GetWindowLongW(button->hwnd(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
  EXPECT_TRUE(send(WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON);
  send(BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  EXPECT_TRUE(send(WM_GETDLGCODE) & DLGC_UNDEFPUSHBUTTON);
}

TEST_F(ChameleonButton, KeysAndMouseAreHeard) {
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

TEST_F(ChameleonButton, AnArrowKeyMovesTheFocusByTheTabKey) {
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

TEST_F(ChameleonButton, AsACheckBoxItChangesItsValueBeforeTheClickIsHeard) {
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
  tick();
  EXPECT_FALSE(button->isHovered());
  EXPECT_EQ(left, 1);
  EXPECT_EQ(painted(), normal);
}

TEST_F(ChameleonButton, TheTransparencyFlagIsForDesignTimeAndStyle5) {
  button->set(&ButtonProperties::ButtonType, 5);
  EXPECT_FALSE(button->isTransparent());
  chameleonButton designed(form.hwnd(), 9, {.userMode = false, .font = {}});
  designed.set(&ButtonProperties::ButtonType, 5);
  EXPECT_TRUE(designed.isTransparent());
  designed.set(&ButtonProperties::ButtonType, 4);
  EXPECT_FALSE(designed.isTransparent());
}

TEST_F(ChameleonButton, StyleElevenSetUnderTheMouseTakesItsOutlineAtOnce) {
  moveMouseOn();
  EXPECT_TRUE(isInOutline(button->hwnd(), 2, 2));
  button->set(&ButtonProperties::ButtonType, changingStyle);
  EXPECT_FALSE(isInOutline(button->hwnd(), 2, 2));
  EXPECT_TRUE(isInOutline(button->hwnd(), 50, 16));
}

TEST_F(ChameleonButton, StyleElevenSetWithTheCursorOnACutCornerIsLeftAtOnce) {
  moveMouseOn();
  SetCursorPos(50 + 20 + 3, 40 + 30 + 3);
  int left = 0;
  button->onMouseOut = [&] { ++left; };
  button->set(&ButtonProperties::ButtonType, changingStyle);
  EXPECT_EQ(left, 1);
  EXPECT_FALSE(button->isHovered());
}

TEST_F(ChameleonButton, ItsOutlineHasRoundCorners) {
  EXPECT_FALSE(isInOutline(button->hwnd(), 0, 0));
  EXPECT_FALSE(isInOutline(button->hwnd(), 99, 31));
  EXPECT_TRUE(isInOutline(button->hwnd(), 0, 16));
  EXPECT_TRUE(isInOutline(button->hwnd(), 99, 16));
  button->set(&ButtonProperties::ButtonType, 1);
  EXPECT_TRUE(isInOutline(button->hwnd(), 0, 0));
}

TEST_F(ChameleonButton, ItsOutlineFollowsItsSize) {
  button->place({0, 0, 200, 60});
  EXPECT_FALSE(isInOutline(button->hwnd(), 199, 59));
  EXPECT_TRUE(isInOutline(button->hwnd(), 199, 30));
}

TEST_F(ChameleonButton, TheGroundOfTheFormShowsAroundIt) {
  form.paintGround = [](HDC dc) {
    const BrushHandle brush(CreateSolidBrush(RGB(10, 200, 30)));
    const RECT all{0, 0, 300, 200};
    FillRect(dc, &all, brush.get());
  };
  EXPECT_EQ(painted().at(0, 0) & 0xFFFFFF, 0x0AC81EU);
  button->set(&ButtonProperties::ButtonType, transparentStyle);
  EXPECT_EQ(painted().at(50, 2) & 0xFFFFFF, 0x0AC81EU);
}

TEST_F(ChameleonButton, TheGroundIsTakenFromBehindItsOwnPlace) {
  form.paintGround = [](HDC dc) { SetPixel(dc, 20, 30, RGB(1, 2, 3)); };
  EXPECT_EQ(painted().at(0, 0) & 0xFFFFFF, 0x010203U);
}

TEST_F(ChameleonButton, PressedAndFocusedAreShown) {
  const Bitmap normal = painted();
  SetFocus(button->hwnd());
  const Bitmap focused = painted();
  EXPECT_NE(focused, normal);
  send(BM_SETSTATE, TRUE);
  EXPECT_NE(painted(), focused);
  send(BM_SETSTATE, FALSE);
  EXPECT_EQ(painted(), focused);
}

TEST_F(ChameleonButton, DisabledTakesNoInput) {
  button->set(&ButtonProperties::Enabled, false);
  EXPECT_FALSE(IsWindowEnabled(button->hwnd()));
  button->set(&ButtonProperties::Enabled, true);
  EXPECT_TRUE(IsWindowEnabled(button->hwnd()));
}

TEST_F(ChameleonButton, ASetterRepaintsAndMarksItsKey) {
  ValidateRect(button->hwnd(), nullptr);
  button->set(&ButtonProperties::BackColor, 255);
  EXPECT_TRUE(GetUpdateRect(button->hwnd(), nullptr, FALSE));
  EXPECT_TRUE(button->state().changedKeys().contains("BCOL"));
  ValidateRect(button->hwnd(), nullptr);
  button->DisableRefresh = true;
  button->set(&ButtonProperties::BackColor, 128);
  EXPECT_FALSE(GetUpdateRect(button->hwnd(), nullptr, FALSE));
}

TEST_F(ChameleonButton, TheMembersOfTheFontAreOneProperty) {
  button->setFontBold(true);
  button->setFontItalic(true);
  button->setFontUnderline(true);
  button->setFontSize(12);
  button->setFontName("Tahoma");
  EXPECT_EQ(button->properties().Font, (FontDescription{"Tahoma", 12, true, true, true}));
  EXPECT_TRUE(button->state().changedKeys().contains("FONT"));
}

TEST_F(ChameleonButton, ReadsItsDesignFromABag) {
  PropertyBag bag;
  bag.write("TX", std::string("Cancel"));
  bag.write("ENAB", false);
  bag.write("BTYPE", 1);
  button->read(bag);
  EXPECT_EQ(GetWindowTextLengthW(button->hwnd()), 6);
  EXPECT_FALSE(IsWindowEnabled(button->hwnd()));
  EXPECT_TRUE(isInOutline(button->hwnd(), 0, 0));
  EXPECT_TRUE(button->state().changedKeys().empty());
}

TEST_F(ChameleonButton, AHandPointerIsShownOverIt) {
  button->set(&ButtonProperties::HandPointer, true);
  EXPECT_EQ(send(WM_SETCURSOR, reinterpret_cast<WPARAM>(button->hwnd()), HTCLIENT), TRUE);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_HAND));
}

// The text that the tip of a form's window shows; empty without a tip.
std::wstring tipOf(HWND form, HWND window) {
  std::wstring text;
  for (HWND tip = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr); tip != nullptr;
       tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) {
    std::array<wchar_t, 80> buffer{};
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = form;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    tool.lpszText = buffer.data();
    SendMessageW(tip, TTM_GETTEXTW, buffer.size(), reinterpret_cast<LPARAM>(&tool));
    text += buffer.data();
  }
  return text;
}

TEST_F(ChameleonButton, ItsToolTipCanBeReplacedAndTakenAway) {
  button->setToolTip("Exit");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"Exit");
  button->setToolTip("Close");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"Close");
  button->setToolTip("");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"");
}

TEST_F(ChameleonButton, AFormThatIsDestroyedLeavesItsStateBehind) {
  button->set(&ButtonProperties::Caption, "Start");
  DestroyWindow(form.hwnd());
  EXPECT_EQ(button->hwnd(), nullptr);
  EXPECT_EQ(button->properties().Caption, "Start");
  button->set(&ButtonProperties::Caption, "Stop");
}

TEST_F(ChameleonButton, AClickMayBeItsEnd) {
  button->onClick = [this] { button.reset(); };
  send(BM_CLICK);
  EXPECT_EQ(button, nullptr);
}

TEST_F(ChameleonButton, TenThousandPaintsLeaveNoObjectBehind) {
  button->set(&ButtonProperties::Caption, "&Button");
  button->set(&ButtonProperties::PictureNormal, std::make_shared<const Bitmap>(16, 16));
  button->paint(PaintBuffer({100, 32}).dc());
  const int before = fixture::graphicsObjectsLeft();
  ASSERT_GT(before, 1000);
  {
    const PaintBuffer buffer({100, 32});
    for (int count = 0; count < 10000; ++count) {
      button->paint(buffer.dc());
    }
  }
  EXPECT_EQ(fixture::graphicsObjectsLeft(), before);
}

TEST_F(ChameleonButton, ChangesOfStyleAndFontLeaveNoObjectBehind) {
  button->setFontSize(10);
  const int before = fixture::graphicsObjectsLeft();
  for (int count = 0; count < 500; ++count) {
    button->set(&ButtonProperties::ButtonType, 1 + count % styleCount);
    button->setFontSize(9 + count % 3);
    button->setDpi(96 + count % 2 * 48);
  }
  button->setFontSize(10);
  EXPECT_EQ(fixture::graphicsObjectsLeft(), before);
}

}  // namespace
}  // namespace zelvreg::controls
