// Outlines belong to windows.
#include "controls/TransForm.h"

#include <algorithm>

#include "controls/FormFixture.h"
#include "form/Form42.h"

namespace zelvreg::controls {
namespace {

using fixture::Form;
using fixture::hasOutline;
using fixture::isInOutline;

class TransFormTest : public ::testing::Test {
 protected:
  TransFormTest() {
    // A hole of 100 x 50 pixels in the upper left corner.
    form.paintGround = [](HDC dc) {
      const BrushHandle ground(CreateSolidBrush(RGB(0, 0, 255)));
      const RECT all{0, 0, 300, 200};
      FillRect(dc, &all, ground.get());
      const BrushHandle mask(CreateSolidBrush(RGB(255, 0, 255)));
      const RECT hole{0, 0, 100, 50};
      FillRect(dc, &hole, mask.get());
    };
    form.answer = [](const fixture::Message& message) {
      return message.number == WM_NCLBUTTONDOWN || message.number == WM_SYSCOMMAND;
    };
  }

  ShowMessage remember() {
    return [this](const std::string& title, const std::string& text) {
      shown += title + "|" + text + "|";
    };
  }
  void press() const { SendMessageW(form.hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(9, 9)); }

  Form form;
  std::string shown;
};

TEST_F(TransFormTest, PixelsInTheMaskColorAreCutOut) {
  TransForm control(form.hwnd());
  control.Refresh();
  EXPECT_FALSE(isInOutline(form.hwnd(), 0, 0));
  EXPECT_FALSE(isInOutline(form.hwnd(), 99, 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), 100, 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), 99, 50));
  EXPECT_TRUE(isInOutline(form.hwnd(), 299, 199));
}

// Its coordinates count from the right edge then.
TEST_F(TransFormTest, AFormThatIsLaidOutFromTheRightKeepsItsOutline) {
  SetWindowLongW(form.hwnd(), GWL_EXSTYLE, WS_EX_LAYOUTRTL);
  TransForm control(form.hwnd());
  control.Refresh();
  EXPECT_FALSE(isInOutline(form.hwnd(), 99, 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), 100, 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), 299, 199));
}

TEST_F(TransFormTest, TheOutlineIsThatOfTheClientAreaInsideAFrame) {
  SetWindowLongW(form.hwnd(), GWL_STYLE, static_cast<LONG>(WS_POPUP | WS_VISIBLE | WS_CAPTION));
  SetWindowPos(form.hwnd(), nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
  RECT window{};
  GetWindowRect(form.hwnd(), &window);
  POINT client{0, 0};
  ClientToScreen(form.hwnd(), &client);
  const int left = client.x - window.left;
  const int top = client.y - window.top;
  ASSERT_GT(top, 0);
  TransForm control(form.hwnd());
  control.Refresh();
  EXPECT_FALSE(isInOutline(form.hwnd(), left + 99, top + 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), left + 100, top + 49));
  EXPECT_TRUE(isInOutline(form.hwnd(), left + 99, top + 50));
}

TEST_F(TransFormTest, AnotherMaskColorGivesAnotherOutline) {
  TransForm control(form.hwnd());
  control.setMaskColor(RGB(0, 0, 255));
  EXPECT_TRUE(isInOutline(form.hwnd(), 0, 0));
  EXPECT_FALSE(isInOutline(form.hwnd(), 150, 100));
}

TEST_F(TransFormTest, TheOutlineGrowsAgainWithTheGround) {
  TransForm control(form.hwnd());
  control.Refresh();
  form.paintGround = nullptr;
  control.Refresh();
  EXPECT_TRUE(isInOutline(form.hwnd(), 0, 0));
}

TEST_F(TransFormTest, WithoutTransparencyTheFormIsWhole) {
  TransForm control(form.hwnd());
  control.Refresh();
  control.setTransparent(false);
  EXPECT_FALSE(hasOutline(form.hwnd()));
}

TEST_F(TransFormTest, AnOutlineOfTheFormItselfRemainsItsLimit) {
  SetWindowRgn(form.hwnd(), CreateRectRgn(0, 0, 200, 200), FALSE);
  TransForm control(form.hwnd());
  control.Refresh();
  EXPECT_TRUE(isInOutline(form.hwnd(), 199, 100));
  EXPECT_FALSE(isInOutline(form.hwnd(), 200, 100));
  EXPECT_FALSE(isInOutline(form.hwnd(), 5, 5));
  control.setTransparent(false);
  EXPECT_TRUE(isInOutline(form.hwnd(), 5, 5));
  EXPECT_FALSE(isInOutline(form.hwnd(), 200, 100));
}

TEST_F(TransFormTest, AtDesignTimeNothingHappens) {
  TransForm control(form.hwnd(), false);
  control.Refresh();
  press();
  EXPECT_FALSE(hasOutline(form.hwnd()));
  EXPECT_EQ(form.count(0xA1), 0);
}

TEST_F(TransFormTest, APressDragsTheFormByItsCaption) {
  TransForm control(form.hwnd());
  SetCapture(form.hwnd());
  form.answer = [](const fixture::Message& message) {
    if (message.number == WM_NCLBUTTONDOWN) {
      EXPECT_EQ(GetCapture(), nullptr);
    }
    return message.number == WM_NCLBUTTONDOWN;
  };
  press();
  ASSERT_EQ(form.count(0xA1), 1);
  EXPECT_EQ(form.messages.back().wParam, 2U);
  EXPECT_EQ(form.count(0x202), 0);
  Form::pump();
  EXPECT_EQ(form.count(0x202), 1);
}

TEST_F(TransFormTest, WithoutAutoDragAPressIsAPress) {
  TransForm control(form.hwnd());
  control.setAutoDrag(false);
  press();
  EXPECT_EQ(form.count(0xA1), 0);
}

TEST_F(TransFormTest, ASecondOneShowsAMessageAndDisablesBoth) {
  TransForm first(form.hwnd(), true, remember());
  EXPECT_EQ(shown, "");
  {
    TransForm second(form.hwnd(), true, remember());
    EXPECT_EQ(shown, secondControlTitle() + "|" + secondControlText() + "|");
    first.Refresh();
    second.Refresh();
    press();
    second.PopupSysMenu();
    EXPECT_FALSE(hasOutline(form.hwnd()));
    EXPECT_EQ(form.count(0xA1), 0);
  }
  first.Refresh();
  EXPECT_TRUE(hasOutline(form.hwnd()));
}

TEST_F(TransFormTest, EachFormMayHaveOne) {
  Form other;
  TransForm first(form.hwnd(), true, remember());
  TransForm second(other.hwnd(), true, remember());
  EXPECT_EQ(shown, "");
}

TEST_F(TransFormTest, ReadsAndStoresItsProperties) {
  PropertyBag bag;
  bag.write("MaskColor", 0xFF0000);
  bag.write("AutoDrag", false);
  TransForm control(form.hwnd());
  control.read(bag);
  EXPECT_FALSE(isInOutline(form.hwnd(), 150, 100));
  PropertyBag stored;
  control.save(stored);
  EXPECT_EQ(readFormShape(stored), (FormShape{RGB(0, 0, 255), true, false}));
}

TEST_F(TransFormTest, TheFormMayBeDestroyedFirst) {
  TransForm control(form.hwnd());
  DestroyWindow(form.hwnd());
  control.Refresh();
  control.PopupSysMenu();
  EXPECT_EQ(form.count(0x112), 0);
}

TEST_F(TransFormTest, WhatIsChosenInTheSystemMenuIsPostedToTheForm) {
  TransForm control(form.hwnd());
  HWND window = form.hwnd();
  bool isOpen = false;
  form.answer = [&isOpen, window](const fixture::Message& message) {
    if (message.number == WM_ENTERIDLE && !isOpen) {
      isOpen = true;
      PostMessageW(window, WM_KEYDOWN, VK_UP, 0);
      PostMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
    }
    return message.number == WM_SYSCOMMAND;
  };
  control.PopupSysMenu();
  EXPECT_TRUE(isOpen);
  EXPECT_EQ(form.count(0x112), 0) << "it is posted";
  Form::pump();
  ASSERT_EQ(form.count(0x112), 1);
  const auto chosen = std::ranges::find(form.messages, UINT{0x112}, &fixture::Message::number);
  EXPECT_GE(chosen->wParam, 0xF000U) << "where the commands of a system menu begin";
}

class SystemMenuTest : public TransFormTest {
 protected:
  // Where the system menu opens.
  POINT placeOfMenu() {
    RECT menu{};
    form.answer = [this, &menu](const fixture::Message& message) {
      if (message.number == WM_ENTERIDLE) {
        GetWindowRect(reinterpret_cast<HWND>(message.lParam), &menu);
        PostMessageW(form.hwnd(), WM_KEYDOWN, VK_ESCAPE, 0);
      }
      return false;
    };
    TransForm(form.hwnd()).PopupSysMenu();
    return {menu.left, menu.top};
  }
};

// The form is at (50, 40), 300 x 200 pixels.
TEST_F(SystemMenuTest, OpensAtTheCursor) {
  SetCursorPos(120, 90);
  const POINT place = placeOfMenu();
  EXPECT_EQ(place.x, 120);
  EXPECT_EQ(place.y, 90);
}

TEST_F(SystemMenuTest, OpensInTheCornerOfTheFormIfTheCursorIsElsewhere) {
  for (const POINT cursor : {POINT{5, 5}, POINT{350, 100}, POINT{100, 240}}) {
    SetCursorPos(cursor.x, cursor.y);
    const POINT place = placeOfMenu();
    EXPECT_EQ(place.x, 50);
    EXPECT_EQ(place.y, 40);
  }
}

TEST_F(TransFormTest, ShapingLeaksNoObject) {
  TransForm control(form.hwnd());
  control.Refresh();
  const int before = fixture::graphicsObjectsLeft();
  for (int count = 0; count < 50; ++count) {
    control.setTransparent(count % 2 == 0);
  }
  control.setTransparent(true);
  EXPECT_EQ(fixture::graphicsObjectsLeft(), before);
}

}  // namespace
}  // namespace zelvreg::controls
