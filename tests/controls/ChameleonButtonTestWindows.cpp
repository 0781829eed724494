// A button is a window of the system.
#include "controls/ChameleonButtonFixture.h"

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <array>

#include "controls/ButtonStyles.h"
#include "form/Form42.h"

namespace zelvreg::controls {
namespace {

using fixture::isInOutline;

TEST_F(ChameleonButton, ItsWindowIsAButtonOfTheSystem) {
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

TEST_F(ChameleonButton, TheTransparencyFlagIsForDesignTimeAndStyle5) {
  button->set(&ButtonProperties::ButtonType, 5);
  EXPECT_FALSE(button->isTransparent());
  chameleonButton designed(form.hwnd(), 9, {.userMode = false, .font = {}});
  designed.set(&ButtonProperties::ButtonType, 5);
  EXPECT_TRUE(designed.isTransparent());
  designed.set(&ButtonProperties::ButtonType, 4);
  EXPECT_FALSE(designed.isTransparent());
}

TEST_F(ChameleonButton, StyleElevenSetUnderTheMouseChangesTheOutlineAtOnce) {
  moveMouseOn();
  EXPECT_TRUE(isInOutline(button->hwnd(), 2, 2));
  button->set(&ButtonProperties::ButtonType, changingStyle);
  EXPECT_FALSE(isInOutline(button->hwnd(), 2, 2));
  EXPECT_TRUE(isInOutline(button->hwnd(), 50, 16));
}

TEST_F(ChameleonButton, ItsOutlineHasRoundCorners) {
  EXPECT_FALSE(isInOutline(button->hwnd(), 0, 0));
  EXPECT_FALSE(isInOutline(button->hwnd(), 99, 31));
  EXPECT_TRUE(isInOutline(button->hwnd(), 0, 16));
  EXPECT_TRUE(isInOutline(button->hwnd(), 99, 16));
  button->set(&ButtonProperties::ButtonType, 1);
  EXPECT_TRUE(isInOutline(button->hwnd(), 0, 0));
}

TEST_F(ChameleonButton, ItsOutlineAndItsFontGrowWithTheResolution) {
  const auto fontHeight = [this] {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(send(WM_GETFONT)), sizeof font, &font);
    return font.lfHeight;
  };
  EXPECT_EQ(fontHeight(), -12);
  EXPECT_TRUE(isInOutline(button->hwnd(), 2, 1));
  button->setDpi(192);
  EXPECT_EQ(fontHeight(), -24);
  EXPECT_FALSE(isInOutline(button->hwnd(), 2, 1));
  button->setDpi(144);
  EXPECT_EQ(fontHeight(), -18);
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

TEST_F(ChameleonButton, TheGroundIsThatOfItsOwnPlace) {
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

TEST_F(ChameleonButton, RefreshPaintsItAtOnce) {
  fixture::Form::pump();
  const int before = form.count(WM_PRINTCLIENT);
  button->Refresh();
  EXPECT_EQ(form.count(WM_PRINTCLIENT), before + 1);
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

TEST_F(ChameleonButton, ItsToolTipCanBeReplacedAndRemoved) {
  button->setToolTip("Exit");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"Exit");
  button->setToolTip("Close");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"Close");
  button->setToolTip("");
  EXPECT_EQ(tipOf(form.hwnd(), button->hwnd()), L"");
}

TEST_F(ChameleonButton, ItsToolTipHasItsFontAtEachResolution) {
  button->setToolTip("Exit");
  HWND tip = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr);
  while (tip != nullptr && GetWindow(tip, GW_OWNER) != form.hwnd()) {
    tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr);
  }
  ASSERT_NE(tip, nullptr);
  for (const int resolution : {96, 192}) {
    button->setDpi(resolution);
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(send(tip, WM_GETFONT)), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -12 * resolution / 96);
  }
}

TEST_F(ChameleonButton, ItKeepsItsStateWhenTheFormIsDestroyed) {
  button->set(&ButtonProperties::Caption, "Start");
  DestroyWindow(form.hwnd());
  EXPECT_EQ(button->hwnd(), nullptr);
  EXPECT_EQ(button->properties().Caption, "Start");
  button->set(&ButtonProperties::Caption, "Stop");
}

TEST_F(ChameleonButton, TenThousandPaintsLeakNoObject) {
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

TEST_F(ChameleonButton, ChangesOfStyleAndFontLeakNoObject) {
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
