#include "console/Table.h"

#include <gtest/gtest.h>

#include "console/DisplayText.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

TEST(Table, AlignsByCharactersNotByBytes) {
  Table table({{"Name"}, {"Count", true}});
  table.addRow({"Füße", "7"});
  EXPECT_EQ(table.text({}), "Name  Count\n----  -----\nFüße      7\n");
}

TEST(Table, AlignsByTheColumnsOfATerminal) {
  Table table({{"Name"}, {"Count", true}});
  table.addRow({"ソフト", "7"});
  table.addRow({"и\u0306", "8"});
  EXPECT_EQ(table.text({}), "Name    Count\n------  -----\nソフト      7\nи\u0306           8\n");
}

TEST(Table, MakesControlCharactersHarmless) {
  Table table({{"Text"}});
  table.addRow({"a\x1b[2J\nb"});
  EXPECT_NE(table.text({}).find("a [2J b"), std::string::npos);
}

Table twoPaths() {
  Table table({{"No.", true}, {"Sure", false, false, true}, {"Path", false, true}});
  table.addRow({"1", "likely", "C:\\Program Files\\Some Vendor\\Some Program\\program.exe"});
  table.addRow({"2", "sure", "C:\\a.exe"});
  return table;
}

TEST(Table, OnATerminalALongCellLosesItsMiddle) {
  EXPECT_EQ(twoPaths().text({.width = 45}),
            "No.  Sure    Path\n"
            "---  ------  --------------------------------\n"
            "  1  likely  C:\\Program…e Program\\program.exe\n"
            "  2  sure    C:\\a.exe\n");
}

TEST(Table, AFullOneBreaksALongCellIntoLines) {
  EXPECT_EQ(twoPaths().text({.width = 45, .isFull = true}),
            "No.  Sure    Path\n"
            "---  ------  --------------------------------\n"
            "  1  likely  C:\\Program Files\\Some Vendor\\\n"
            "             Some Program\\program.exe\n"
            "  2  sure    C:\\a.exe\n");
}

TEST(Table, AFullOneOnANarrowTerminalHasABlockForEachRow) {
  EXPECT_EQ(twoPaths().text({.width = 30, .isFull = true}),
            "No.   1\n"
            "Sure  likely\n"
            "Path  C:\\Program Files\\Some Vendor\\Some Program\\program.exe\n"
            "\n"
            "No.   2\n"
            "Sure  sure\n"
            "Path  C:\\a.exe\n");
}

TEST(Table, AFullOneKeepsEachCharacterOfEachCell) {
  Table table({{"Text", false, true}, {"Other", false, true}});
  const std::string text = "日本語ソフトウェアのパス名がここにありますとても長いので";
  table.addRow({text, "C:\\x"});
  std::string whole;
  const std::string shown = table.text({.width = 40, .isFull = true});
  for (const std::string_view line : split(shown, "\n")) {
    EXPECT_LE(displayWidth(line), 40U);
    const std::string_view cell = trim(line.substr(0, line.find("  ")));
    whole += text.find(cell) == std::string::npos ? "" : std::string(cell);
  }
  EXPECT_EQ(whole, text);
}

TEST(Table, NothingIsCutWithoutATerminal) {
  EXPECT_NE(twoPaths().text({}).find("Some Vendor\\Some Program\\program.exe"), std::string::npos);
}

TEST(Table, ConfidencesHaveTheirColors) {
  const std::string text = twoPaths().text({.paint = Paint(true)});
  EXPECT_NE(text.find("\x1b[1mNo.  Sure    Path\x1b[0m\n"), std::string::npos) << text;
  EXPECT_NE(text.find("  \x1b[38;5;130mlikely\x1b[0m  C:"), std::string::npos) << text;
  EXPECT_NE(text.find("  \x1b[38;5;28msure\x1b[0m    C:"), std::string::npos) << text;
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
