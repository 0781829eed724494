#include "shell/WindowMemory.h"

#include <array>

#include "scan/Settings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class WindowMemoryTest : public fixture::ComputerFixture {
 protected:
  WindowMemoryTest() {
    emptyKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\regscan");
  }

  static void keep(const char* name, const std::string& text) {
    EXPECT_TRUE(keepSetting(settings::regscan, name, text));
  }
  static constexpr std::array<int, 4> standard{240, 346, 0, 98};
  const std::vector<int> untouched{240, 346, 0, 0};
};

TEST_F(WindowMemoryTest, ThereIsNoneBeforeTheFirstTime) {
  EXPECT_EQ(readWindowMemory(), std::nullopt);
}

TEST_F(WindowMemoryTest, WhatIsKeptIsReadAgain) {
  for (const bool isMaximized : {true, false}) {
    const WindowMemory memory{
        .left = -1280, .top = 40, .width = 1100, .height = 700, .isMaximized = isMaximized};
    keepWindowMemory(memory);
    EXPECT_EQ(readWindowMemory(), memory);
  }
  EXPECT_EQ(readSetting(settings::regscan, "windowleft"), "-1280");
}

TEST_F(WindowMemoryTest, DamagedValuesAreNone) {
  for (const char* damage : {"", "x", "12px", " 5", "99999999999999", "200000", "-200000"}) {
    keepWindowMemory({.left = 1, .top = 2, .width = 1100, .height = 700});
    keep("windowheight", damage);
    EXPECT_EQ(readWindowMemory(), std::nullopt) << damage;
  }
}

TEST_F(WindowMemoryTest, ColumnsAreKeptForEachListAndTheLastTakesWhatIsLeftUntilThen) {
  EXPECT_EQ(readColumnWidths("view1", standard), untouched);
  const std::vector<int> wanted{100, 200, 0, 0};
  keepColumnWidths("view1", wanted);
  EXPECT_EQ(readColumnWidths("view1", standard), wanted);
  EXPECT_EQ(readColumnWidths("view2", standard), untouched);
  const std::vector<int> dragged{100, 200, 0, 150};
  keepColumnWidths("view1", dragged);
  EXPECT_EQ(readColumnWidths("view1", standard), dragged);
}

TEST_F(WindowMemoryTest, AHiddenColumnStaysHiddenAndAVisibleOneCanBeFound) {
  keepColumnWidths("view1", std::vector<int>{0, 3, 90, 5});
  EXPECT_EQ(readColumnWidths("view1", standard), (std::vector<int>{24, 24, 0, 24}));
}

TEST_F(WindowMemoryTest, ColumnsOfAnotherListAreNotTaken) {
  for (const char* text :
       {"1 2 3", "240 346 0 98 7", "240 346 0 x", "240  346 0", "240 -3 0 98", "240 346 0 99999"}) {
    keep("columnsview1", text);
    EXPECT_EQ(readColumnWidths("view1", standard), untouched) << text;
  }
}

}  // namespace
}  // namespace zelvreg
