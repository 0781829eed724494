// The menus are the system's.
#include "controls/CoolMenu.h"

#include <algorithm>
#include <array>

#include "controls/CMWndProc.h"
#include "controls/FormFixture.h"
#include "form/Form42.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

class CoolMenuTest : public ::testing::Test {
 protected:
  CoolMenuTest() {
    AppendMenuW(bar, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(popup), L"&File");
    AppendMenuW(popup, MF_STRING, 1, L"&Open\tCtrl+O");
    AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(popup, MF_STRING | MF_GRAYED, 3, L"&Print");
    AppendMenuW(popup, MF_STRING, 4, L"&Properties");
    images = ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 1);
    Bitmap red(16, 16);
    for (int index = 0; index < 16 * 16; ++index) {
      // The upper half is transparent.
      red.pixels[static_cast<std::size_t>(index)] = index < 128 ? 0 : 0xFFFF0000;
    }
    HICON icon = makeIcon(red);
    ImageList_ReplaceIcon(images, -1, icon);
    DestroyIcon(icon);
    menus.hold(std::make_unique<CoolMenu>(MenuPictures{images, {"Open"}}));
    menus.current()->installBar(bar);
  }
  ~CoolMenuTest() override {
    menus.release();
    DestroyMenu(bar);
    ImageList_Destroy(images);
  }

  static MENUITEMINFOW infoOf(HMENU menu, UINT position) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_STATE;
    GetMenuItemInfoW(menu, position, TRUE, &info);
    return info;
  }
  static std::string textOf(HMENU menu, UINT position) {
    std::array<char16_t, 64> text{};
    GetMenuStringW(menu, position, roomIn(text), static_cast<int>(text.size()), MF_BYPOSITION);
    return utf8(text.data());
  }
  MEASUREITEMSTRUCT measured(HMENU menu, UINT position) const {
    MEASUREITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemData = infoOf(menu, position).dwItemData;
    EXPECT_EQ(SendMessageW(form.hwnd(), WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&request)),
              TRUE);
    return request;
  }
  // An entry drawn by the form's window procedure, 160 x 24 pixels at (10, 4) of a green ground.
  Bitmap drawn(UINT position, UINT state) const {
    const PaintBuffer buffer({180, 32});
    buffer.canvas().clear(rgb(0x00FF00));
    DRAWITEMSTRUCT request{};
    request.CtlType = ODT_MENU;
    request.itemState = state;
    request.hDC = buffer.dc();
    request.rcItem = {10, 4, 170, 28};
    request.itemData = infoOf(popup, position).dwItemData;
    EXPECT_EQ(SendMessageW(form.hwnd(), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&request)), TRUE);
    return buffer.copy();
  }
  LRESULT answer(wchar_t key) const {
    return SendMessageW(form.hwnd(), WM_MENUCHAR, MAKEWPARAM(key, MF_POPUP),
                        reinterpret_cast<LPARAM>(popup));
  }
  static std::uint32_t system(int index) { return opaque(fromProperty(GetSysColor(index))); }
  static int countOf(const Bitmap& bitmap, std::uint32_t color) {
    return static_cast<int>(std::ranges::count_if(
        bitmap.pixels, [color](std::uint32_t pixel) { return (pixel | 0xFF000000) == color; }));
  }

  fixture::Form form;
  HMENU bar = CreateMenu();
  HMENU popup = CreatePopupMenu();
  HIMAGELIST images = nullptr;
  CMWndProc menus{form.hwnd()};
};

TEST_F(CoolMenuTest, KeepsARecordOfEachEntry) {
  const CMyItemDatas& items = menus.current()->items();
  ASSERT_EQ(items.Count(), 5U);
  EXPECT_EQ(*items.Item(1), (CMyItemData{true, -1, MFT_STRING, "&File"}));
  EXPECT_EQ(*items.Item(2), (CMyItemData{false, 0, MFT_STRING, "&Open\tCtrl+O"}));
  EXPECT_EQ(items.Item(3)->fType, static_cast<std::uint32_t>(MFT_SEPARATOR));
  EXPECT_EQ(*items.Item(5), (CMyItemData{false, -1, MFT_STRING, "&Properties"}));
}

TEST_F(CoolMenuTest, EntriesBecomeOwnerDrawnAndKeepTheirText) {
  EXPECT_TRUE(infoOf(bar, 0).fType & MFT_OWNERDRAW);
  EXPECT_TRUE(infoOf(popup, 0).fType & MFT_OWNERDRAW);
  EXPECT_TRUE(infoOf(popup, 1).fType & MFT_SEPARATOR);
  EXPECT_EQ(textOf(popup, 0), "&Open\tCtrl+O");
  EXPECT_TRUE(infoOf(popup, 2).fState & MFS_GRAYED);
}

TEST_F(CoolMenuTest, UninstallingRestoresTheEntries) {
  CoolMenu& menu = *menus.current();
  menu.uninstall();
  EXPECT_EQ(menu.items().Count(), 0U);
  for (UINT position = 0; position < 4; ++position) {
    EXPECT_FALSE(infoOf(popup, position).fType & MFT_OWNERDRAW);
    EXPECT_EQ(infoOf(popup, position).dwItemData, 0U);
  }
  EXPECT_FALSE(infoOf(bar, 0).fType & MFT_OWNERDRAW);
  EXPECT_EQ(textOf(popup, 0), "&Open\tCtrl+O");
}

TEST_F(CoolMenuTest, WhenTheProgramEndsTheMenusAreReleased) {
  menus.release();
  EXPECT_EQ(menus.current(), nullptr);
  EXPECT_FALSE(infoOf(popup, 0).fType & MFT_OWNERDRAW);
}

TEST_F(CoolMenuTest, InstallingAgainAddsNewEntries) {
  AppendMenuW(popup, MF_STRING, 5, L"&New");
  menus.current()->installPopup(popup);
  EXPECT_EQ(menus.current()->items().Count(), 6U);
  EXPECT_TRUE(infoOf(popup, 4).fType & MFT_OWNERDRAW);
}

TEST_F(CoolMenuTest, SubmenusAreInstalled) {
  HMENU inner = CreatePopupMenu();
  AppendMenuW(inner, MF_STRING, 6, L"&Deep");
  AppendMenuW(popup, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(inner), L"&More");
  menus.current()->installPopup(popup);
  EXPECT_TRUE(infoOf(inner, 0).fType & MFT_OWNERDRAW);
  EXPECT_EQ(menus.current()->items().Count(), 7U);
  menus.current()->uninstall();
  EXPECT_FALSE(infoOf(inner, 0).fType & MFT_OWNERDRAW);
}

TEST_F(CoolMenuTest, ARecordHolds127CharactersOfACaption) {
  for (const std::size_t length : {127U, 128U, 300U}) {
    AppendMenuW(popup, MF_STRING, 7, std::wstring(length, L'x').c_str());
    menus.current()->installPopup(popup);
    const CMyItemDatas& items = menus.current()->items();
    EXPECT_EQ(items.Item(items.Count())->sMenuText.size(), 127U) << length;
  }
}

TEST_F(CoolMenuTest, TheSizeFollowsFromTextAndSystem) {
  const MEASUREITEMSTRUCT open = measured(popup, 0);
  const MEASUREITEMSTRUCT print = measured(popup, 2);
  EXPECT_GT(open.itemWidth, print.itemWidth) << "it has keys as well";
  EXPECT_EQ(open.itemHeight, print.itemHeight);
  EXPECT_GE(open.itemHeight, 24U);
  EXPECT_LT(measured(popup, 1).itemHeight, open.itemHeight);
  EXPECT_GE(measured(bar, 0).itemHeight, static_cast<UINT>(GetSystemMetrics(SM_CYMENU)));
  EXPECT_LT(measured(bar, 0).itemWidth, print.itemWidth);
}

TEST_F(CoolMenuTest, TheSizeGrowsWithTheResolution) {
  const UINT small = measured(popup, 0).itemHeight;
  menus.hold(std::make_unique<CoolMenu>(MenuPictures{images, {"Open"}},
                                        MenuSettings{.dpi = 192, .charset = {}, .colors = {}}));
  menus.current()->installBar(bar);
  EXPECT_EQ(measured(popup, 0).itemHeight, 2 * small);
}

TEST_F(CoolMenuTest, RequestsForOtherControlsAreNotAnswered) {
  MEASUREITEMSTRUCT request{};
  request.CtlType = ODT_MENU;
  request.itemData = 12345;
  EXPECT_FALSE(menus.current()->measure(reinterpret_cast<LPARAM>(&request)));
  DRAWITEMSTRUCT drawing{};
  drawing.CtlType = ODT_BUTTON;
  drawing.itemData = infoOf(popup, 0).dwItemData;
  EXPECT_FALSE(menus.current()->draw(reinterpret_cast<LPARAM>(&drawing)));
}

TEST_F(CoolMenuTest, DrawsGroundTextAndPictureOnlyInsideItsPlace) {
  const Bitmap entry = drawn(0, 0);
  EXPECT_EQ(entry.at(5, 16), 0xFF00FF00);
  EXPECT_EQ(entry.at(172, 16), 0xFF00FF00);
  EXPECT_EQ(countOf(entry, 0xFF00FF00), 180 * 32 - 160 * 24);
  EXPECT_EQ(countOf(entry, 0xFFFF0000), 128);
  EXPECT_GT(countOf(entry, system(COLOR_MENU)), 1000);
  EXPECT_NE(entry, drawn(3, 0));
}

TEST_F(CoolMenuTest, AChosenEntryIsHighlighted) { EXPECT_NE(drawn(0, ODS_SELECTED), drawn(0, 0)); }

TEST_F(CoolMenuTest, ACheckedPictureHasAFrame) {
  EXPECT_NE(drawn(0, ODS_CHECKED), drawn(0, 0));
  EXPECT_EQ(countOf(drawn(0, ODS_CHECKED), 0xFFFF0000), 128);
}

TEST_F(CoolMenuTest, ACheckedEntryWithoutAPictureHasATick) {
  EXPECT_NE(drawn(3, ODS_CHECKED), drawn(3, 0));
}

TEST_F(CoolMenuTest, ADisabledPictureLosesItsColors) {
  const Bitmap entry = drawn(0, ODS_GRAYED);
  EXPECT_EQ(countOf(entry, 0xFFFF0000), 0);
  EXPECT_GT(countOf(entry, system(COLOR_3DSHADOW)), 100);
}

TEST_F(CoolMenuTest, ACaptionThatCannotBeChosenIsDrawnTwiceDarkOverLight) {
  const std::array<INT, 2> indices{COLOR_MENU, COLOR_3DHILIGHT};
  const std::array<COLORREF, 2> before{GetSysColor(COLOR_MENU), GetSysColor(COLOR_3DHILIGHT)};
  const std::array<COLORREF, 2> apart{RGB(120, 130, 140), RGB(250, 255, 245)};
  SetSysColors(2, indices.data(), apart.data());
  const Bitmap entry = drawn(2, ODS_GRAYED);
  const int light = countOf(entry, system(COLOR_3DHILIGHT));
  const int dark = countOf(entry, system(COLOR_GRAYTEXT));
  const int lightOfOther = countOf(drawn(2, 0), system(COLOR_3DHILIGHT));
  SetSysColors(2, indices.data(), before.data());
  EXPECT_GT(light, 0);
  EXPECT_GT(dark, light) << "the dark one is in front";
  EXPECT_EQ(lightOfOther, 0);
}

TEST_F(CoolMenuTest, APictureGrowsWithTheResolution) {
  menus.hold(std::make_unique<CoolMenu>(MenuPictures{images, {"Open"}},
                                        MenuSettings{.dpi = 192, .charset = {}, .colors = {}}));
  menus.current()->installBar(bar);
  const auto countInItsColumn = [this](UINT state, std::uint32_t color) {
    const Bitmap entry = drawn(0, state);
    int count = 0;
    for (int row = 0; row < entry.height; ++row) {
      for (int column = 10; column < 62; ++column) {
        count += (entry.at(column, row) | 0xFF000000) == color;
      }
    }
    return count;
  };
  // Of 32 x 32 pixels the upper half is transparent and four rows are outside the entry.
  EXPECT_GT(countInItsColumn(0, 0xFFFF0000), 32 * 12 * 3 / 4);
  EXPECT_GT(countInItsColumn(ODS_GRAYED, system(COLOR_3DSHADOW)), 32 * 12 * 3 / 4);
}

TEST_F(CoolMenuTest, TheDisabledPictureIsDarkOverLightMovedByOnePixel) {
  const PaintBuffer buffer({20, 20});
  buffer.canvas().clear(rgb(0x00FF00));
  drawDisabledPicture(buffer.dc(), images, 0, {1, 1, 17, 17});
  const Bitmap picture = buffer.copy();
  const auto at = [&](int x, int y) { return picture.at(x, y) | 0xFF000000; };
  EXPECT_EQ(at(3, 3), 0xFF00FF00) << "above, it is transparent";
  EXPECT_EQ(at(1, 9), system(COLOR_3DSHADOW));
  EXPECT_EQ(at(16, 16), system(COLOR_3DSHADOW));
  EXPECT_EQ(at(17, 17), system(COLOR_3DHILIGHT));
  EXPECT_EQ(at(18, 18), 0xFF00FF00);
}

TEST_F(CoolMenuTest, ADisabledPictureIsAsLargeAsItsPlace) {
  const PaintBuffer buffer({40, 40});
  buffer.canvas().clear(rgb(0x00FF00));
  drawDisabledPicture(buffer.dc(), images, 0, {1, 1, 33, 33});
  const Bitmap picture = buffer.copy();
  const auto at = [&](int x, int y) { return picture.at(x, y) | 0xFF000000; };
  EXPECT_EQ(at(5, 15), 0xFF00FF00) << "above, it is transparent";
  EXPECT_EQ(at(1, 17), system(COLOR_3DSHADOW));
  EXPECT_EQ(at(32, 32), system(COLOR_3DSHADOW));
  EXPECT_EQ(at(33, 33), system(COLOR_3DHILIGHT));
  EXPECT_EQ(at(34, 34), 0xFF00FF00);
}

TEST_F(CoolMenuTest, AnAccessKeyRunsItsEntryOrChoosesTheFirstOfSeveral) {
  EXPECT_EQ(answer(L'o'), MAKELRESULT(0, MNC_EXECUTE));
  EXPECT_EQ(answer(L'P'), MAKELRESULT(2, MNC_SELECT));
  EXPECT_EQ(menus.current()->findKey(popup, u'z'), std::nullopt);
}

TEST_F(CoolMenuTest, PressingAnAccessKeyAgainReachesEachOfItsEntries) {
  const auto choose = [this](UINT position, UINT state) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STATE;
    info.fState = state;
    SetMenuItemInfoW(popup, position, TRUE, &info);
  };
  choose(2, MFS_HILITE);
  EXPECT_EQ(answer(L'p'), MAKELRESULT(3, MNC_SELECT));
  choose(2, MFS_ENABLED);
  choose(3, MFS_HILITE);
  EXPECT_EQ(answer(L'p'), MAKELRESULT(2, MNC_SELECT));
}

TEST_F(CoolMenuTest, AnAccessKeyIsALetterOfAnyScript) {
  AppendMenuW(popup, MF_STRING, 5, L"&\u00C4ndern");
  AppendMenuW(popup, MF_STRING, 6, L"\u015Bled\u017A");
  AppendMenuW(popup, MF_STRING, 7, L"\u0438 &\u0416\u0443\u043A");
  AppendMenuW(popup, MF_STRING, 8, L"\u8868\u793A(&\u30BD)");
  menus.current()->installPopup(popup);
  EXPECT_EQ(answer(L'\u00E4'), MAKELRESULT(4, MNC_EXECUTE));
  EXPECT_EQ(answer(L'\u015A'), MAKELRESULT(5, MNC_EXECUTE)) << "the first one, in another case";
  EXPECT_EQ(answer(L'\u0436'), MAKELRESULT(6, MNC_EXECUTE));
  EXPECT_EQ(answer(L'\u30BD'), MAKELRESULT(7, MNC_EXECUTE));
  EXPECT_EQ(menus.current()->findKey(popup, u'\u0437'), std::nullopt);
}

TEST_F(CoolMenuTest, ARecordKeepsACaptionOfAnyScript) {
  const std::u16string caption = u"\u8868\u793A\t\u0416";
  AppendMenuW(popup, MF_STRING, 5, wideText(caption));
  menus.current()->installPopup(popup);
  const CMyItemDatas& items = menus.current()->items();
  EXPECT_EQ(items.Item(items.Count())->sMenuText, utf8(caption));
  menus.current()->uninstall();
  EXPECT_EQ(textOf(popup, 4), utf8(caption));
}

TEST_F(CoolMenuTest, ACaptionIsMeasuredByItsCharacters) {
  const auto widthOf = [this](const wchar_t* caption) {
    AppendMenuW(popup, MF_STRING, 5, caption);
    menus.current()->installPopup(popup);
    return static_cast<int>(
        measured(popup, static_cast<UINT>(GetMenuItemCount(popup)) - 1).itemWidth);
  };
  // Letters of three alphabets that fonts draw alike.
  const int latin = widthOf(L"HHHHHHHHHH");
  EXPECT_NEAR(widthOf(L"\u041D\u041D\u041D\u041D\u041D\u041D\u041D\u041D\u041D\u041D"), latin, 10);
  EXPECT_NEAR(widthOf(L"\u0397\u0397\u0397\u0397\u0397\u0397\u0397\u0397\u0397\u0397"), latin, 10);
}

TEST_F(CoolMenuTest, DrawingLeaksNoObject) {
  const auto drawEach = [this] {
    drawn(0, ODS_GRAYED);
    drawn(0, ODS_CHECKED);
    measured(popup, 0);
  };
  // The system keeps what it creates at the first use of a color or a font.
  drawEach();
  const int before = fixture::graphicsObjectsLeft();
  for (int count = 0; count < 200; ++count) {
    drawEach();
  }
  EXPECT_EQ(fixture::graphicsObjectsLeft(), before);
}

}  // namespace
}  // namespace zelvreg::controls
