#include "controls/TrayArea.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zelvreg::controls {
namespace {

class RecordingHost : public TrayHost {
 public:
  void notify(TrayCall call, const TrayRecord& record) override {
    calls.emplace_back(call, record);
  }
  std::uint32_t window() override { return 4711; }
  std::uint32_t icon(const Picture& picture) override {
    return static_cast<std::uint32_t>(picture->width);
  }
  double randomFraction() override { return fraction; }

  double fraction = 0.5;
  std::vector<std::pair<TrayCall, TrayRecord>> calls;
};

class TrayAreaTest : public ::testing::Test {
 protected:
  static Picture picture(int size) { return std::make_shared<const Bitmap>(size, size); }
  const TrayRecord& lastRecord() const { return host.calls.back().second; }
  std::u16string lastTip() const { return lastRecord().tip.data(); }

  RecordingHost host;
  TrayArea area{host, true};
};

TEST(TrayRecord, HasTheLayoutOfThe32BitSystem) {
  EXPECT_EQ(sizeof(TrayRecord), 152U);
  EXPECT_EQ(offsetof(TrayRecord, window), 4U);
  EXPECT_EQ(offsetof(TrayRecord, id), 8U);
  EXPECT_EQ(offsetof(TrayRecord, flags), 12U);
  EXPECT_EQ(offsetof(TrayRecord, callbackMessage), 16U);
  EXPECT_EQ(offsetof(TrayRecord, icon), 20U);
  EXPECT_EQ(offsetof(TrayRecord, tip), 24U);
}

TEST_F(TrayAreaTest, ShowingItAddsOneRecord) {
  area.setIcon(picture(16));
  area.setToolTip("Fix Registry Problems");
  area.setVisible(true);
  ASSERT_EQ(host.calls.size(), 1U);
  EXPECT_EQ(host.calls[0].first, TrayCall::Add);
  EXPECT_EQ(lastRecord().size, 152U);
  EXPECT_EQ(lastRecord().window, 4711U);
  EXPECT_EQ(lastRecord().id, 32768U);
  EXPECT_EQ(lastRecord().flags, 7U);
  EXPECT_EQ(lastRecord().callbackMessage, 512U);
  EXPECT_EQ(lastRecord().icon, 16U);
  EXPECT_EQ(lastTip(), u"Fix Registry Problems");
}

TEST_F(TrayAreaTest, FlagsSayOnlyWhatIsSet) {
  area.setVisible(true);
  EXPECT_EQ(lastRecord().flags, 1U);
  area.setVisible(false);
  area.setIcon(picture(16));
  area.setVisible(true);
  EXPECT_EQ(lastRecord().flags, 3U);
}

TEST_F(TrayAreaTest, HidingItDeletesTheSameRecord) {
  area.setVisible(true);
  const std::uint32_t id = lastRecord().id;
  host.fraction = 0.1;
  area.setVisible(false);
  EXPECT_EQ(host.calls.back().first, TrayCall::Delete);
  EXPECT_EQ(lastRecord().id, id);
  EXPECT_FALSE(area.isShown());
}

TEST_F(TrayAreaTest, SettingVisibleToItsOldValueDoesNothing) {
  area.setVisible(false);
  EXPECT_TRUE(host.calls.empty());
  EXPECT_TRUE(area.changedKeys().empty());
  area.setVisible(true);
  area.setVisible(true);
  EXPECT_EQ(host.calls.size(), 1U);
}

TEST_F(TrayAreaTest, AtDesignTimeNoIconIsShown) {
  TrayArea designed(host, false);
  designed.setIcon(picture(16));
  designed.setVisible(true);
  designed.setVisible(false);
  EXPECT_TRUE(host.calls.empty());
  EXPECT_TRUE(designed.changedKeys().contains("Visible"));
}

TEST_F(TrayAreaTest, ANewIconReplacesTheOneThatIsShown) {
  area.setIcon(picture(16));
  EXPECT_TRUE(host.calls.empty());
  area.setVisible(true);
  area.setIcon(picture(32));
  EXPECT_EQ(host.calls.back().first, TrayCall::Modify);
  EXPECT_EQ(lastRecord().flags, 2U);
  EXPECT_EQ(lastRecord().icon, 32U);
}

TEST_F(TrayAreaTest, ANewTipReplacesTheOneThatIsShown) {
  area.setVisible(true);
  area.setToolTip("Scanning");
  EXPECT_EQ(host.calls.back().first, TrayCall::Modify);
  EXPECT_EQ(lastRecord().flags, 4U);
  EXPECT_EQ(lastTip(), u"Scanning");
}

TEST_F(TrayAreaTest, TheTipIsTextOfAnyScript) {
  const std::string tip = "\xC3\xBC \xD0\x96 \xE8\xA1\xA8";
  area.setToolTip(tip);
  area.setVisible(true);
  EXPECT_EQ(lastTip(), u"\u00FC \u0416 \u8868");
  EXPECT_EQ(area.toolTip(), tip);
}

TEST_F(TrayAreaTest, ALongTipIsCutBeforeItsNul) {
  area.setToolTip(std::string(100, 'x'));
  area.setVisible(true);
  EXPECT_EQ(lastTip(), std::u16string(63, u'x'));
}

TEST_F(TrayAreaTest, ALongTipIsNotCutInTheMiddleOfACharacter) {
  area.setToolTip(std::string(62, 'x') + "\xF0\x9F\x98\x80 and more");
  area.setVisible(true);
  EXPECT_EQ(lastTip(), std::u16string(62, u'x'));
}

TEST_F(TrayAreaTest, EachSetterMarksItsMember) {
  area.setIcon(nullptr);
  area.setToolTip("x");
  area.setVisible(true);
  EXPECT_EQ(area.changedKeys(), (std::set<std::string_view>{"Icon", "ToolTip", "Visible"}));
}

TEST_F(TrayAreaTest, IsStoredUnderTheNamesOfItsMembers) {
  area.setIcon(picture(16));
  area.setToolTip("tip");
  area.setVisible(true);
  PropertyBag bag;
  area.save(bag);
  TrayArea other(host, true);
  other.read(bag);
  EXPECT_EQ(other.icon(), area.icon());
  EXPECT_EQ(other.toolTip(), "tip");
  EXPECT_TRUE(other.visible());
  EXPECT_TRUE(bag.holds("Icon") && bag.holds("ToolTip") && bag.holds("Visible"));
}

TEST_F(TrayAreaTest, RemovesItsIconWhenItIsDestroyed) {
  {
    TrayArea brief(host, true);
    brief.setVisible(true);
  }
  EXPECT_EQ(host.calls.back().first, TrayCall::Delete);
}

TEST(TrayId, RunsFrom1To65535) {
  EXPECT_EQ(trayId(0), 1U);
  EXPECT_EQ(trayId(0.5), 32768U);
  EXPECT_EQ(trayId(0.99999999), 65535U);
}

TEST_F(TrayAreaTest, TheXPositionOfAMouseMoveIsAMessageNumber) {
  struct Row {
    int number;
    TrayNotice notice;
  };
  const std::vector<Row> rows = {
      {512, {TrayEvent::MouseMove, 0}},   {513, {TrayEvent::MouseDown, 1}},
      {514, {TrayEvent::MouseUp, 1}},     {515, {TrayEvent::DoubleClick, 0}},
      {516, {TrayEvent::MouseDown, 2}},   {517, {TrayEvent::MouseUp, 2}},
      {518, {TrayEvent::DoubleClick, 0}},
  };
  std::vector<TrayNotice> heard;
  area.onNotice = [&](TrayNotice notice) { heard.push_back(notice); };
  // 96, 144 and 192 dpi.
  for (const double twips : {15.0, 10.0, 7.5}) {
    for (const Row& row : rows) {
      heard.clear();
      area.mouseMoved(row.number * twips, twips);
      ASSERT_EQ(heard.size(), 1U) << row.number;
      EXPECT_EQ(heard[0], row.notice) << row.number;
    }
  }
  heard.clear();
  area.mouseMoved(511 * 15, 15);
  area.mouseMoved(519 * 15, 15);
  EXPECT_TRUE(heard.empty());
}

}  // namespace
}  // namespace zelvreg::controls
