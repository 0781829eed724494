#include "console/ScanResult.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "console/DisplayText.h"
#include "console/Progress.h"
#include "console/Table.h"

namespace zelvreg::console {
namespace {

ScanResult sample() {
  return {{{1, "font", "Fonts", true, "1", "Finished"}, {2, "dll", "Shared DLLs", false, "", ""}},
          {{"a,\"b\"", "C:\\x", "1", "HKEY_LOCAL_MACHINE", "Software", "a", true}}};
}

TEST(JsonText, IsOneObjectWithTheFieldsInTheirOrder) {
  const std::string text = jsonText(sample());
  const auto object = nlohmann::ordered_json::parse(text);
  EXPECT_EQ(object["total"], 1);
  EXPECT_EQ(object["categories"][0].dump(),
            R"({"row":1,"key":"font","name":"Fonts","checked":true,"problems":"1",)"
            R"("status":"Finished"})");
  EXPECT_EQ(object["findings"][0].dump(),
            R"({"location":"a,\"b\"","badValue":"C:\\x","kindCode":"1",)"
            R"("rootName":"HKEY_LOCAL_MACHINE","subKey":"Software","iconKey":"a","checked":true})");
  EXPECT_EQ(text.back(), '\n');
}

TEST(JsonText, HoldsEmptyListsWhenNothingWasFound) {
  const auto object = nlohmann::json::parse(jsonText({}));
  EXPECT_TRUE(object["findings"].is_array());
  EXPECT_EQ(object["total"], 0);
}

TEST(CsvText, QuotesFieldsThatNeedIt) {
  EXPECT_EQ(csvText(sample()),
            "location,badValue,kindCode,rootName,subKey,iconKey,checked\n"
            "\"a,\"\"b\"\"\",C:\\x,1,HKEY_LOCAL_MACHINE,Software,a,true\n");
}

TEST(CsvText, WhatASpreadsheetWouldRunStandsBehindAnApostrophe) {
  ScanResult result = sample();
  for (const char* formula : {"=cmd|'/c calc'!A1", "+1", "-1", "@SUM(A1)", "\tx", "\r=x", "=1,2"}) {
    result.findings[0].badValue = formula;
    EXPECT_NE(csvText(result).find("'" + std::string(formula)), std::string::npos) << formula;
    EXPECT_EQ(nlohmann::json::parse(jsonText(result))["findings"][0]["badValue"], formula);
  }
  result.findings[0].badValue = "a=1";
  EXPECT_EQ(csvText(result).find('\''), std::string::npos);
}

TEST(Printable, WhatSteersATerminalOrTheDirectionOfWritingBecomesABlank) {
  for (const char* sign : {"\x1b", "\x7f", "\r", "\u0085", "\u009b", "\u061c", "\u200e", "\u200f",
                           "\u2028", "\u202a", "\u202e", "\u2066", "\u2069", "\ufeff"}) {
    EXPECT_EQ(printable("a" + std::string(sign) + "b"), "a b") << sign;
  }
}

TEST(Printable, AllOtherCharactersStayAndStrayBytesDoNot) {
  const std::string text = "C:\\Füße\\שלום\\日本\\\U0001F600 \u00a0\u200b";
  EXPECT_EQ(printable(text), text);
  EXPECT_EQ(printable("a\x9b"
                      "b\xff\xc3"),
            "a?b??");
  // Longer forms of an escape and of a control character.
  EXPECT_EQ(printable("\xc0\x9b\xe0\x82\x9b"), "?????");
}

TEST(TableText, ShowsCategoriesFindingsAndTheirNumber) {
  const std::string text = tableText(sample(), 0);
  EXPECT_NE(text.find("  1  Fonts        font         1  Finished\n"), std::string::npos) << text;
  EXPECT_NE(text.find("not ticked"), std::string::npos) << text;
  EXPECT_NE(text.find("HKLM\\Software"), std::string::npos) << text;
  EXPECT_TRUE(text.ends_with("1 problem found.\n"));
  EXPECT_TRUE(tableText({}, 0).ends_with("\n0 problems found.\n"));
}

TEST(TableText, FitsATerminal) {
  ScanResult result = sample();
  result.findings[0].subKey = std::string(300, 'k');
  const std::string text = tableText(result, 80);
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find('\n', start);
    EXPECT_LE(displayWidth(text.substr(start, end - start)), 80U);
    start = end + 1;
  }
}

TEST(Table, AlignsByCharactersNotByBytes) {
  Table table({{"Name"}, {"Count", true}});
  table.addRow({"Füße", "7"});
  EXPECT_EQ(table.text(0), "Name  Count\n----  -----\nFüße      7\n");
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

TEST(ProgressLine, FillsWithTheRowsThatAreDone) {
  EXPECT_EQ(progressLine(0, 16, "x"), "[" + std::string(32, '.') + "] 0/16 x");
  EXPECT_EQ(progressLine(8, 16, "x"),
            "[" + std::string(16, '#') + std::string(16, '.') + "] 8/16 x");
  EXPECT_EQ(progressLine(16, 16, ""), "[" + std::string(32, '#') + "] 16/16 ");
}

}  // namespace
}  // namespace zelvreg::console
