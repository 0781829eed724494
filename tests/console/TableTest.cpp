#include "console/Table.h"

#include <gtest/gtest.h>

#include "console/DisplayText.h"

namespace zelvreg::console {
namespace {

TEST(Table, AlignsByCharactersNotByBytes) {
  Table table({{"Name"}, {"Count", true}});
  table.addRow({"Füße", "7"});
  EXPECT_EQ(table.text(0), "Name  Count\n----  -----\nFüße      7\n");
}

TEST(Table, AlignsByTheColumnsOfATerminal) {
  Table table({{"Name"}, {"Count", true}});
  table.addRow({"ソフト", "7"});
  table.addRow({"и\u0306", "8"});
  EXPECT_EQ(table.text(0), "Name    Count\n------  -----\nソフト      7\nи\u0306           8\n");
}

TEST(Table, MakesControlCharactersHarmless) {
  Table table({{"Text"}});
  table.addRow({"a\x1b[2J\nb"});
  EXPECT_NE(table.text(0).find("a [2J b"), std::string::npos);
}

TEST(Shortened, KeepsBothEndsAndWholeCharacters) {
  EXPECT_EQ(shortened("abcdefghij", 10), "abcdefghij");
  EXPECT_EQ(shortened("abcdefghij", 7), "ab…ghij");
  EXPECT_EQ(displayWidth(shortened("ääääääääää", 7)), 7U);
}

TEST(Shortened, CountsColumnsAndParesNoMarkFromItsLetter) {
  EXPECT_EQ(shortened("日本語ソフト", 12), "日本語ソフト");
  EXPECT_EQ(shortened("日本語ソフト", 11), "日…ソフト");
  EXPECT_EQ(shortened("日本語ソフト", 5), "…ト");
  EXPECT_EQ(shortened("abcde\u0301fgh", 5), "a…fgh");
  EXPECT_EQ(shortened("a\u0301bcdefgh", 5), "a\u0301…fgh");
}

}  // namespace
}  // namespace zelvreg::console
