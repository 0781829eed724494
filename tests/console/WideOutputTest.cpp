#include "console/WideOutput.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

class WideOutputTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::u16string shown() const {
    std::u16string all;
    for (const std::u16string& piece : pieces) {
      all += piece;
    }
    return all;
  }

  bool isBroken = false;
  std::vector<std::u16string> pieces;
  WideOutput output{[this](std::u16string_view piece) {
    pieces.emplace_back(piece);
    return !isBroken;
  }};
  std::ostream stream{&output};
};

TEST_F(WideOutputTest, TextOfAnyScriptIsShownWhenItIsFlushed) {
  stream << "Füße " << 'x' << " サーバー \U0001F600\n";
  EXPECT_TRUE(pieces.empty());
  stream << std::flush;
  EXPECT_EQ(shown(), u"Füße x サーバー \U0001F600\n");
  stream << std::flush;
  EXPECT_EQ(pieces.size(), 1U);
}

TEST_F(WideOutputTest, ACharacterWaitsForItsLastByte) {
  const std::string text = "aéサ\U0001F600";
  for (const char byte : text) {
    stream << byte << std::flush;
  }
  EXPECT_EQ(pieces, (std::vector<std::u16string>{u"a", u"é", u"サ", u"\U0001F600"}));
}

TEST_F(WideOutputTest, LongTextComesInPiecesWithoutAPairCutInHalf) {
  std::string text = "a";
  for (int count = 0; count < 20000; ++count) {
    text += "\U0001F600";
  }
  stream << text << std::flush;
  EXPECT_EQ(shown(), utf16(text));
  EXPECT_GT(pieces.size(), 1U);
  for (const std::u16string& piece : pieces) {
    EXPECT_EQ(utf16(utf8(piece)), piece);
    EXPECT_LE(piece.size(), 4096U);
    EXPECT_NE(piece.back(), u"\U0001F600"[0]);
  }
}

TEST_F(WideOutputTest, MuchIsShownBeforeItIsFlushed) {
  stream << std::string(5000, 'x');
  EXPECT_EQ(shown().size(), 5000U);
}

TEST_F(WideOutputTest, BytesThatAreNoCharacterAreReplaced) {
  stream << "a\xFF"
         << "b\x80\x80\x80\x80." << std::flush;
  EXPECT_EQ(shown(),
            u"a\xFFFD"
            u"b\xFFFD\xFFFD\xFFFD\xFFFD.");
}

TEST_F(WideOutputTest, WhatCannotBeWrittenFailsTheStream) {
  isBroken = true;
  stream << "a" << std::flush;
  EXPECT_FALSE(stream.good());
}

}  // namespace
}  // namespace zelvreg::console
