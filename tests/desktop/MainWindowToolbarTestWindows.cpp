// The tool bar, and the pictures of the window. The window exists only on Windows.
#include <algorithm>

#include "desktop/MainWindowFixture.h"
#include "form/Form42.h"
#include "shell/Navigation.h"

namespace zelvreg::desktop {
namespace {

class ToolbarTest : public MainWindowTest {
 protected:
  ToolbarTest() {
    ShowWindow(window.hwnd(), SW_SHOW);
    serve();
  }

  // The visible buttons with a name. The tool bar's have no caption, but the same name.
  std::vector<HWND> named(const std::wstring& name) const {
    std::vector<HWND> found = children(L"Button");
    std::erase_if(found, [&name](HWND button) {
      std::wstring text = textOf(button);
      std::erase(text, L'&');
      return IsWindowVisible(button) == FALSE || text != name;
    });
    return found;
  }
  void showToolbar() {
    form.ToolbarBox.value = true;
    serve();
  }
};

TEST_F(ToolbarTest, ItTakesThePlaceOfTheCommandButtonsWhenTheUserWantsIt) {
  HWND start = windowOf(form.cmd_start, L"Button");
  EXPECT_EQ(named(L"Start"), std::vector<HWND>{start});
  showToolbar();
  EXPECT_EQ(IsWindowVisible(start), FALSE);
  const std::vector<HWND> tool = named(L"Start");
  ASSERT_EQ(tool.size(), 1U);
  EXPECT_NE(tool.front(), start);
  EXPECT_TRUE(form.Toolbar1.visible);
  form.ToolbarBox.value = false;
  serve();
  EXPECT_EQ(named(L"Start"), std::vector<HWND>{start});
}

TEST_F(ToolbarTest, EachButtonPressesItsCommandAndIsEnabledAsThatIs) {
  showToolbar();
  Button* const commands[] = {&form.cmd_search, &form.cmd_exclud, &form.cmd_start,
                              &form.cmd_fix,    &form.cmd_cancel, &form.cmd_report};
  for (Button* command : commands) {
    int presses = 0;
    command->bind([&presses] { ++presses; });
    for (const bool isEnabled : {false, true}) {
      command->enabled = isEnabled;
      serve();
      const std::string& caption = command->caption;
      const std::vector<HWND> tool = named({caption.begin(), caption.end()});
      ASSERT_EQ(tool.size(), 1U) << caption;
      EXPECT_EQ(IsWindowEnabled(tool.front()) != FALSE, isEnabled) << caption;
      if (isEnabled) {
        SendMessageW(tool.front(), BM_CLICK, 0, 0);
      }
    }
    EXPECT_EQ(presses, 1) << command->caption.get();
  }
}

TEST_F(ToolbarTest, ItIsShownWhenCaptionsDoNotFitEvenInTwoLines) {
  const std::string long1 = "Verylongwordwithoutanyblankinitthatgoesonandonuntilnobodycanread";
  for (Button* command : {&form.cmd_search, &form.cmd_exclud, &form.cmd_fix}) {
    command->caption = long1;
  }
  serve();
  EXPECT_TRUE(form.Toolbar1.visible);
  for (Button* command : {&form.cmd_search, &form.cmd_exclud, &form.cmd_fix}) {
    command->caption = "Short";
  }
  serve();
  EXPECT_FALSE(form.Toolbar1.visible);
}

TEST_F(ToolbarTest, TheShieldOfTheTitleIsThereWhileTheScanIsCareful) {
  HWND shield = windowOf(form.Image14, L"Static");
  ASSERT_NE(shield, nullptr);
  form.CarefulBox.value = true;
  EXPECT_NE(IsWindowVisible(shield), FALSE);
  form.CarefulBox.value = false;
  EXPECT_EQ(IsWindowVisible(shield), FALSE);
}

// How many pixels of a picture differ from its first.
int drawnPixels(HWND picture) {
  RECT place{};
  GetClientRect(picture, &place);
  const controls::PaintBuffer buffer({place.right, place.bottom});
  DRAWITEMSTRUCT request{};
  request.CtlType = ODT_STATIC;
  request.hwndItem = picture;
  request.hDC = buffer.dc();
  request.rcItem = place;
  Peer::of(picture)->draw(request);
  const controls::Bitmap drawn = buffer.copy();
  return static_cast<int>(std::ranges::count_if(
      drawn.pixels, [&drawn](std::uint32_t pixel) { return pixel != drawn.pixels.front(); }));
}

TEST_F(ToolbarTest, WithoutItsFileTheAnimationStaysEmpty) {
  form.Gif89a1.file = "C:\\no such folder\\search.gif";
  EXPECT_EQ(drawnPixels(windowOf(form.Gif89a1, L"Static")), 0);
}

TEST_F(ToolbarTest, TheConfidenceOfTheRowIsAPictureBesideItsSentence) {
  HWND picture = windowOf(form.Image3, L"Static");
  EXPECT_EQ(drawnPixels(picture), 0);
  form.evidence = {{.confidence = Confidence::Sure, .reasons = {Reason::Absent}, .tested = {}}};
  form.View2.add("a row");
  form.View2.setItemData(1, 1);
  form.selectedRow = 1;
  form.EvidenceText.caption = "Sure.";
  EXPECT_GT(drawnPixels(picture), 0);
}

}  // namespace
}  // namespace zelvreg::desktop
