#include "controls/KeyStrokes.h"

#include <gtest/gtest.h>

namespace zelvreg::controls {
namespace {

TEST(KeyStrokes, ArrowsMoveTheFocusAsTabDoes) {
  EXPECT_EQ(focusKeys(0x27), "{Tab}");
  EXPECT_EQ(focusKeys(0x28), "{Tab}");
  EXPECT_EQ(focusKeys(0x25), "+{Tab}");
  EXPECT_EQ(focusKeys(0x26), "+{Tab}");
  EXPECT_EQ(focusKeys(0x20), "");
}

TEST(KeyStrokes, AKeyStringIsPressedAndReleased) {
  using Strokes = std::vector<KeyStroke>;
  EXPECT_EQ(keyStrokes("{Tab}"), (Strokes{{9, true}, {9, false}}));
  EXPECT_EQ(keyStrokes("+{Tab}"), (Strokes{{16, true}, {9, true}, {9, false}, {16, false}}));
  EXPECT_TRUE(keyStrokes("").empty());
  EXPECT_TRUE(keyStrokes("+").empty());
  EXPECT_TRUE(keyStrokes("Tab").empty());
}

}  // namespace
}  // namespace zelvreg::controls
