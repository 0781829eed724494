// How the window shows how sure a finding is. The window exists only on Windows.
#include <algorithm>

#include "desktop/MainWindowFixture.h"
#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "reports/EntryDetails.h"
#include "support/SourceFolder.h"

namespace zelvreg::desktop {
namespace {

using controls::Rgb;

class EvidenceWindowTest : public MainWindowTest {
 protected:
  // A row for each confidence, and one that was not looked at.
  EvidenceWindowTest() {
    form.evidence = {
        {.confidence = Confidence::Sure, .reasons = {Reason::Absent}, .tested = {}},
        {.confidence = Confidence::Likely, .reasons = {Reason::SharedCount}, .tested = {}},
        {.confidence = Confidence::Unsure, .reasons = {Reason::Share}, .tested = {}}};
    for (std::size_t row = 1; row <= form.evidence.size(); ++row) {
      form.View2.add("a row");
      form.View2.setItemData(row, row);
    }
    form.View2.add("a row");
    serve();
    list = windowOf(form.View2, WC_LISTVIEWW);
  }

  // What the peer draws between the tick and the icon of a row: whether it differs from the ground,
  // pixel by pixel.
  std::vector<bool> markOf(int item) const {
    RECT bounds{};
    ListView_GetItemRect(list, item, &bounds, LVIR_BOUNDS);
    const controls::PaintBuffer screen({bounds.right, bounds.bottom});
    NMLVCUSTOMDRAW request{};
    request.nmcd.hdr = {list, 0, NM_CUSTOMDRAW};
    request.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    request.nmcd.dwItemSpec = static_cast<DWORD_PTR>(item);
    request.nmcd.hdc = screen.dc();
    request.nmcd.rc = bounds;
    Peer::of(list)->notice(request.nmcd.hdr);
    constexpr int left = 33;
    constexpr int length = 22;
    const COLORREF ground = GetPixel(screen.dc(), bounds.left + left, bounds.top + 2);
    std::vector<bool> differs;
    for (int y = bounds.top + 1; y < bounds.bottom - 1; ++y) {
      for (int x = bounds.left + left; x < bounds.left + left + length; ++x) {
        differs.push_back(GetPixel(screen.dc(), x, y) != ground);
      }
    }
    return differs;
  }

  void expectFourDifferentMarks() const {
    std::vector<std::vector<bool>> marks;
    for (int item = 0; item < 4; ++item) {
      marks.push_back(markOf(item));
      for (int before = 0; before < item; ++before) {
        EXPECT_NE(marks[static_cast<std::size_t>(before)], marks.back()) << before << " " << item;
      }
    }
    EXPECT_EQ(std::ranges::count(marks.back(), true), 0) << "a row without evidence has no mark";
  }

  // What the tip says while the mouse rests on the last column of a row.
  std::u16string tipOf(int item) const {
    return dynamic_cast<const ListViewPeer&>(*Peer::of(list)).tipText(item, 4);
  }

  HWND list = nullptr;
};

TEST_F(EvidenceWindowTest, EachConfidenceHasAMarkOfItsOwnShape) { expectFourDifferentMarks(); }

TEST_F(EvidenceWindowTest, TheMarksDifferInTheTwoColorsOfHighContrastToo) {
  constexpr int ground = 5;
  constexpr int highlightText = 14;
  window.sharedDesk().colors.useSystem([](int number) {
    return number == ground || number == highlightText ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
  });
  expectFourDifferentMarks();
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.View2.setSelected(row, true);
  }
  serve();
  expectFourDifferentMarks();
}

TEST_F(EvidenceWindowTest, OtherListsHaveNoMarks) {
  form.View1.add("a row");
  form.View1.setItemData(1, 1);
  serve();
  list = windowOf(form.View1, WC_LISTVIEWW);
  const std::vector<bool> first = markOf(0);
  EXPECT_EQ(std::ranges::count(first, true), 0);
}

TEST_F(EvidenceWindowTest, TheMouseOnARowIsToldHowSureItIsAndWhy) {
  EXPECT_EQ(tipOf(2), u"Unsure. It names a file on another computer, which is not asked.");
  EXPECT_EQ(tipOf(3), u"") << "a row without evidence has no text of its own";
}

struct Heard {
  static inline HWND window = nullptr;
  static inline int count = 0;
  static void CALLBACK event(HWINEVENTHOOK /*hook*/, DWORD /*event*/, HWND hwnd, LONG /*object*/,
                             LONG /*child*/, DWORD /*thread*/, DWORD /*time*/) {
    count += hwnd == window ? 1 : 0;
  }
};

TEST_F(EvidenceWindowTest, AScreenReaderIsToldOfEachNewSentence) {
  constexpr DWORD liveRegionChanged = 0x8019;
  HWND label = windowOf(form.EvidenceText, L"Static");
  Heard::window = label;
  Heard::count = 0;
  HWINEVENTHOOK hook =
      SetWinEventHook(liveRegionChanged, liveRegionChanged, GetModuleHandleW(nullptr), Heard::event,
                      GetCurrentProcessId(), 0, WINEVENT_INCONTEXT);
  ASSERT_NE(hook, nullptr);
  form.Frame2.visible = true;
  form.Picture1.visible = true;
  ShowWindow(window.hwnd(), SW_SHOW);
  const auto draw = [label] {
    RedrawWindow(label, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  };
  draw();
  EXPECT_EQ(Heard::count, 0);
  ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
  draw();
  EXPECT_EQ(textOf(label), L"Sure. What it names does not exist.");
  EXPECT_EQ(Heard::count, 1);
  draw();
  EXPECT_EQ(Heard::count, 1);
  UnhookWinEvent(hook);
}

TEST_F(EvidenceWindowTest, APressOnCarefulChangesItAndRunsWhatIsBound) {
  int presses = 0;
  form.CarefulBox.bind([&presses] { ++presses; });
  HWND box = windowOf(form.CarefulBox, L"Button");
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(GetParent(box), windowOf(form.Frame1, L"ZelvregFrame"));
  SendMessageW(box, BM_CLICK, 0, 0);
  EXPECT_TRUE(form.CarefulBox.value);
  EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(presses, 1);
  form.CarefulBox.enabled = false;
  EXPECT_EQ(IsWindowEnabled(box), FALSE);
}

// Of a text in a font: how high it is in that width, or how wide it is in one line.
SIZE extentOf(HFONT font, const std::string& text, int width, UINT format) {
  const controls::PaintBuffer screen({1, 1});
  const controls::Selection selected(screen.dc(), font);
  const std::u16string shown = utf16(text);
  RECT place{0, 0, width, 0};
  DrawTextW(screen.dc(), wideText(shown), static_cast<int>(shown.size()), &place,
            format | DT_CALCRECT | DT_NOPREFIX);
  return {place.right, place.bottom};
}

TEST_F(EvidenceWindowTest, TheTextsOfEachLanguageFit) {
  form.programFolder = sourceFolder() + "/assets";
  Desk& desk = window.sharedDesk();
  for (const char* language : {"english", "german", "french", "spanish", "portuguese", "polish"}) {
    form.langFileName = std::string("zelvreg-") + language + ".lang";
    form.langCode = std::string_view(language) == "polish" ? 238 : 0;
    const Font font{.name = "Segoe UI", .size = 9, .charset = form.langCode};
    const auto text = [&](const char* key) { return readLanguageText(form, "Form42", key); };
    for (const int resolution : {96, 120, 144, 192}) {
      desk.setResolution(resolution);
      const auto room = [&desk](int twips) { return desk.fromTwips(twips); };
      for (const ReasonRule& rule : reasonRules()) {
        form.evidence[0].reasons = {rule.reason};
        const std::string sentence = evidenceText(form, 1);
        EXPECT_LE(
            extentOf(desk.font(font), sentence, room(form.EvidenceText.width), DT_WORDBREAK).cy,
            room(form.EvidenceText.height))
            << language << " " << resolution << " " << sentence;
      }
      constexpr int besideTheBox = 15 + 6 + 4;
      EXPECT_LE(extentOf(desk.font(font), text("CarefulBox"), 0, DT_SINGLELINE).cx,
                room(form.CarefulBox.width) - desk.pixels(besideTheBox))
          << language << " " << resolution;
      EXPECT_LE(extentOf(desk.font(font), text("Label2(0)"), 0, DT_SINGLELINE).cx,
                room(form.Label2[0].width))
          << language << " " << resolution;
    }
  }
}

TEST_F(EvidenceWindowTest, CarefulEndsWhereTheButtonsAboveItEnd) {
  const auto endOf = [this](const Control& control) {
    RECT place{};
    GetWindowRect(windowOf(control, L"Button"), &place);
    return place.right;
  };
  const auto expectFlush = [&] {
    EXPECT_NEAR(endOf(form.CarefulBox), endOf(form.chameleonButton22), 1);
  };
  int width = 0;
  for (const char* caption : {"Careful", "Careful: longer", "Careful: with more than before"}) {
    form.CarefulBox.caption = caption;
    serve();
    expectFlush();
    EXPECT_GT(form.CarefulBox.width, width) << caption;
    width = form.CarefulBox.width;
  }
}

}  // namespace
}  // namespace zelvreg::desktop
