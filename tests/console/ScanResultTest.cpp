#include "console/ScanResult.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "console/DisplayText.h"
#include "console/Progress.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

ScanResult sample() {
  return {{{1, "font", "Fonts", true, "1", "Finished"}, {2, "dll", "Shared DLLs", false, "", ""}},
          {{"a,\"b\"",
            "C:\\x",
            "1",
            "HKEY_LOCAL_MACHINE",
            "Software",
            "a",
            true,
            {Confidence::Likely, {Reason::Absent, Reason::BareName}, {"C:\\x", "D:\\x"}},
            "font",
            "Ann",
            "S-1-5-21-1"}},
          {"half of it is gone"},
          {{"SYSTEM", "replayed", 2, 30, ""}}};
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
            R"("rootName":"HKEY_LOCAL_MACHINE","subKey":"Software","iconKey":"a","checked":true,)"
            R"("confidence":"likely","reasons":["absent","bare-name"],"tested":["C:\\x","D:\\x"],)"
            R"("category":"font","user":"Ann","sid":"S-1-5-21-1"})");
  EXPECT_EQ(object["confidence"].dump(), R"({"sure":0,"likely":1,"unsure":0})");
  EXPECT_EQ(object["implausible"].dump(), R"(["half of it is gone"])");
  EXPECT_EQ(object["hives"].dump(),
            R"([{"file":"SYSTEM","state":"replayed","entries":2,"pages":30,"why":""}])");
  EXPECT_EQ(text.back(), '\n');
}

TEST(JsonText, HoldsEmptyListsWhenNothingWasFound) {
  const auto object = fixture::parsedJson(jsonText({}));
  EXPECT_TRUE(object["findings"].is_array());
  EXPECT_EQ(object["total"], 0);
  EXPECT_EQ(object["implausible"].dump(), "[]");
  EXPECT_EQ(object["hives"].dump(), "[]");
  EXPECT_EQ(object["confidence"]["unsure"], 0);
}

TEST(CsvText, IsPlainUtf8) {
  ScanResult result = sample();
  result.findings[0].badValue = "サ\xED\xA0\x80\xFF";
  EXPECT_NE(csvText(result).find(",サ\uFFFD\uFFFD,"), std::string::npos);
}

TEST(CsvText, QuotesFieldsThatNeedIt) {
  EXPECT_EQ(csvText(sample()),
            "location,badValue,kindCode,rootName,subKey,iconKey,checked,"
            "confidence,reasons,tested\n"
            "\"a,\"\"b\"\"\",C:\\x,1,HKEY_LOCAL_MACHINE,Software,a,true,"
            "likely,absent bare-name,C:\\x | D:\\x\n");
}

TEST(JsonText, OfASearchHasWhatItHasInCommonWithAScan) {
  const auto scanned = fixture::parsedJson(jsonText(sample()));
  const auto searched = fixture::parsedJson(searchJsonText(sample()));
  EXPECT_FALSE(searched.contains("categories") || searched.contains("schema"));
  for (const char* member : {"total", "confidence", "implausible", "hives"}) {
    EXPECT_EQ(searched[member], scanned[member]) << member;
  }
  EXPECT_EQ(searched["findings"][0]["badValue"], "C:\\x");
  EXPECT_FALSE(searched["findings"][0].contains("category"));
}

TEST(JsonText, CountsWhatItLists) {
  ScanResult result = sample();
  result.findings.push_back(result.findings[0]);
  result.findings.back().isChecked = false;
  // A row that a scan has left without its fields.
  result.findings.emplace_back();
  result.facts.users = {{"Ann", "S-1-5-21-1", "key"}};
  const auto object = fixture::parsedJson(jsonText(result));
  EXPECT_EQ(object["counts"].dump(),
            R"({"categories":{"font":2},"checked":1,"findings":3,"kinds":{"1":2}})");
  EXPECT_EQ(object["users"][0].dump(), R"({"findings":2,"name":"Ann","sid":"S-1-5-21-1"})");
}

TEST(JsonLines, AreOneForTheScanAndOneForEachFinding) {
  ScanResult result = sample();
  result.findings[0].badValue = "line\nbreak \xED\xA0\x80";
  std::istringstream lines(jsonLines(result));
  std::string line;
  ASSERT_TRUE(std::getline(lines, line));
  const auto head = fixture::parsedJson(line);
  EXPECT_EQ(head["stream"], true);
  EXPECT_FALSE(head.contains("findings"));
  ASSERT_TRUE(std::getline(lines, line));
  EXPECT_NE(line.find(R"("badValue":"line\nbreak \ud800")"), std::string::npos) << line;
  EXPECT_FALSE(std::getline(lines, line));
}

TEST(CsvText, WhatWasTestedIsOneFieldThatNoSpreadsheetRuns) {
  ScanResult result = sample();
  result.findings[0].evidence.tested = {"=x", "a,b"};
  EXPECT_TRUE(csvText(result).ends_with(",\"'=x | a,b\"\n")) << csvText(result);
}

TEST(CsvText, WhatASpreadsheetWouldRunGetsAnApostrophe) {
  ScanResult result = sample();
  for (const char* formula : {"=cmd|'/c calc'!A1", "+1", "-1", "@SUM(A1)", "\tx", "\r=x", "=1,2",
                              "＝1", "＋1", "－1", "＠x"}) {
    result.findings[0].badValue = formula;
    EXPECT_NE(csvText(result).find("'" + std::string(formula)), std::string::npos) << formula;
    EXPECT_EQ(fixture::parsedJson(jsonText(result))["findings"][0]["badValue"], formula);
  }
  result.findings[0].badValue = "a=1";
  EXPECT_EQ(csvText(result).find('\''), std::string::npos);
}

TEST(TableText, ShowsCategoriesFindingsAndTheirNumber) {
  const std::string text = tableText(sample(), {});
  EXPECT_NE(text.find("No.  Kind  Sure    Location"), std::string::npos) << text;
  EXPECT_NE(text.find("  1     1  likely  a,"), std::string::npos) << text;
  EXPECT_NE(text.find("  1  Fonts        font         1  Finished\n"), std::string::npos) << text;
  EXPECT_NE(text.find("not ticked"), std::string::npos) << text;
  EXPECT_NE(text.find("HKLM\\Software"), std::string::npos) << text;
  EXPECT_TRUE(text.ends_with("1 problem found.\n"));
  EXPECT_TRUE(tableText({}, {}).ends_with("\n0 problems found.\n"));
}

TEST(TableText, ARootHasItsShortNameIfThereIsOne) {
  ScanResult result = sample();
  for (const auto& [name, shown] : {std::pair{"HKEY_CURRENT_CONFIG", "HKCC\\Software"},
                                    {"HKEY_USERS", "HKU\\Software"},
                                    {"HKEY_PERFORMANCE_DATA", "HKEY_PERFORMANCE_DATA\\Software"},
                                    {"hkey_users", "hkey_users\\Software"},
                                    {"Other", "Other\\Software"}}) {
    result.findings[0].rootName = name;
    EXPECT_NE(tableText(result, {}).find(shown), std::string::npos) << name;
  }
}

TEST(TableText, OfASearchSaysHowSureARowIs) {
  EXPECT_NE(searchTableText(sample(), {}).find("  1     1  likely  a,"), std::string::npos);
}

TEST(TableText, FitsATerminal) {
  ScanResult result = sample();
  FindingResult& finding = result.findings[0];
  for (std::string* cell : {&finding.location, &finding.badValue, &finding.subKey}) {
    *cell = std::string(300, 'k');
  }
  finding.evidence.confidence = Confidence::Unsure;
  const std::string text = tableText(result, {.width = 80});
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find('\n', start);
    EXPECT_LE(displayWidth(text.substr(start, end - start)), 80U);
    start = end + 1;
  }
}

TEST(ProgressLine, FillsWithTheRowsThatAreDone) {
  EXPECT_EQ(progressLine(0, 16, "x"), "[" + std::string(32, '.') + "] 0/16 x");
  EXPECT_EQ(progressLine(8, 16, "x"),
            "[" + std::string(16, '#') + std::string(16, '.') + "] 8/16 x");
  EXPECT_EQ(progressLine(16, 16, ""), "[" + std::string(32, '#') + "] 16/16 ");
}

}  // namespace
}  // namespace zelvreg::console
