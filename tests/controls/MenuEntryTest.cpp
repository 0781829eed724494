#include "controls/MenuEntry.h"

#include <gtest/gtest.h>

namespace zelvreg::controls {
namespace {

CMyItemData entry(std::string text, bool isMain = false, std::uint32_t type = 0) {
  return {isMain, -1, type, std::move(text)};
}

TEST(MyItemDatas, CountsFromOne) {
  CMyItemDatas datas;
  EXPECT_EQ(datas.Count(), 0U);
  datas.Add(entry("first"));
  datas.Add(entry("second"));
  EXPECT_EQ(datas.Count(), 2U);
  EXPECT_EQ(datas.Item(0), nullptr);
  EXPECT_EQ(datas.Item(1)->sMenuText, "first");
  EXPECT_EQ(datas.Item(2)->sMenuText, "second");
  EXPECT_EQ(datas.Item(3), nullptr);
}

TEST(MyItemDatas, RemovingARecordDoesNotMoveTheOthers) {
  CMyItemDatas datas;
  datas.Add(entry("first"));
  const CMyItemData* second = &datas.Add(entry("second"));
  datas.Remove(1);
  datas.Remove(7);
  EXPECT_EQ(datas.Count(), 1U);
  EXPECT_EQ(datas.Item(1), second);
}

TEST(MyItemDatas, AreInOrder) {
  CMyItemDatas datas;
  datas.Add(entry("first"));
  datas.Add(entry("second"));
  std::string walked;
  for (const CMyItemData* data : datas.NewEnum()) {
    walked += data->sMenuText + " ";
  }
  EXPECT_EQ(walked, "first second ");
}

TEST(MenuCaption, KeysFollowAfterATab) {
  EXPECT_EQ(splitCaption("&Save\tCtrl+S").text, "&Save");
  EXPECT_EQ(splitCaption("&Save\tCtrl+S").keys, "Ctrl+S");
  EXPECT_EQ(splitCaption("&Save").keys, "");
}

TEST(MenuCaption, IsPlainWithoutItsMarks) {
  EXPECT_EQ(plainCaption("Select &All\tCtrl+A"), "Select All");
  EXPECT_EQ(plainCaption("Cut && &Paste"), "Cut & Paste");
  EXPECT_EQ(plainCaption("end&"), "end&");
}

TEST(MenuCaption, TheAccessKeyIsMarked) {
  EXPECT_EQ(accessKey("Select &All"), U'A');
  EXPECT_EQ(accessKey("Cut && &Paste"), U'P');
  EXPECT_EQ(accessKey("\xE8\xA1\xA8\xE7\xA4\xBA(&\xE3\x82\xBD)"), U'\u30BD');
}

TEST(MenuCaption, WithoutAMarkTheFirstCharacterIsTheAccessKey) {
  EXPECT_EQ(accessKey("R && D"), U'R');
  EXPECT_EQ(accessKey("Select"), U'S');
  EXPECT_EQ(accessKey("x\t&y"), U'x');
  EXPECT_EQ(accessKey("\xD0\x96\xD1\x83\xD0\xBA"), U'\u0416');
  EXPECT_EQ(accessKey(""), U'\0');
}

TEST(MenuCaption, EntriesAreFoundByTheirKey) {
  CMyItemDatas datas;
  datas.Add(entry("&Open"));
  datas.Add(entry("Close"));
  datas.Add(entry("Show &objects"));
  datas.Add(entry(""));
  datas.Add(entry("&\xD0\x96\xD1\x83\xD0\xBA"));
  EXPECT_EQ(entriesWithKey(datas.NewEnum(), U"oO"), (std::vector<int>{0, 2}));
  EXPECT_EQ(entriesWithKey(datas.NewEnum(), U"cC"), (std::vector<int>{1}));
  EXPECT_EQ(entriesWithKey(datas.NewEnum(), U"\u0436\u0416"), (std::vector<int>{4}));
  EXPECT_TRUE(entriesWithKey(datas.NewEnum(), U"xX").empty());
  EXPECT_TRUE(entriesWithKey(datas.NewEnum(), std::u32string_view(U"\0", 1)).empty());
  EXPECT_TRUE(entriesWithKey({nullptr}, U"xX").empty());
}

TEST(EntrySize, HoldsPictureTextAndKeys) {
  const MenuMetrics metrics;
  const Size plain = entrySize(entry("Open"), {30, 13}, {}, metrics);
  EXPECT_EQ(plain, (Size{26 + 6 + 30 + 16, 24}));
  const Size withKeys = entrySize(entry("Open\tCtrl+O"), {30, 13}, {35, 13}, metrics);
  EXPECT_EQ(withKeys.width, plain.width + 24 + 35);
}

TEST(EntrySize, OfTheMenuBarHasNoRoomForAPicture) {
  EXPECT_EQ(entrySize(entry("File", true), {24, 13}, {}, {}), (Size{42, 19}));
}

TEST(EntrySize, OfASeparatorIsLow) {
  EXPECT_EQ(entrySize(entry("", false, menuSeparator), {}, {}, {}).height, 9);
}

TEST(EntrySize, GrowsWithTheResolution) {
  const Size small = entrySize(entry("Open"), {30, 13}, {}, {96, 19, {16, 16}});
  const Size large = entrySize(entry("Open"), {60, 26}, {}, {192, 38, {32, 32}});
  EXPECT_EQ(large, (Size{2 * small.width, 2 * small.height}));
}

TEST(EntrySize, GrowsWithALargeFont) {
  EXPECT_EQ(entrySize(entry("Open"), {90, 40}, {}, {}).height, 50);
}

TEST(EntryPlaces, AreSideBySide) {
  const MenuEntryPlaces places = placeEntry(entry("Open"), {0, 24, 100, 48}, {});
  EXPECT_EQ(places.picture, (Rectangle{5, 28, 21, 44}));
  EXPECT_EQ(places.frame, (Rectangle{2, 25, 24, 47}));
  EXPECT_EQ(places.text, (Rectangle{32, 24, 84, 48}));
  EXPECT_EQ(places.separator, (Rectangle{32, 36, 94, 37}));
  EXPECT_EQ(places.highlight, (Rectangle{2, 24, 98, 48}));
}

TEST(EntryPlaces, OfTheMenuBarHoldTextOnly) {
  const MenuEntryPlaces places = placeEntry(entry("File", true), {10, 0, 52, 19}, {});
  EXPECT_EQ(places.text, (Rectangle{10, 0, 52, 19}));
  EXPECT_EQ(places.highlight, places.text);
  EXPECT_EQ(places.picture, Rectangle());
}

}  // namespace
}  // namespace zelvreg::controls
