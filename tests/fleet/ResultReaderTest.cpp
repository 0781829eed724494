#include "fleet/ResultReader.h"

#include <gtest/gtest.h>

#include "fleet/MadeResult.h"
#include "unicode/Unicode.h"

namespace zelvreg::fleet {
namespace {

struct Read {
  ComputerSummary summary;
  std::vector<SeenFinding> findings;
  std::vector<std::string> users;
};

Read readText(const std::string& text) {
  std::istringstream stream(text);
  JsonSource source(stream);
  Read read;
  const ResultListener listener{
      .onFinding = [&read](const SeenFinding& finding) { read.findings.push_back(finding); },
      .onUser = [&read](const SeenUser& user) { read.users.push_back(user.name + user.sid); }};
  EXPECT_TRUE(source.findNext());
  read.summary = readResult(source, listener);
  return read;
}

std::string reasonFor(const std::string& text) {
  try {
    readText(text);
  } catch (const BadResult& why) {
    return why.what();
  }
  return "";
}

TEST(ResultReader, TellsTheComputerAndEachFinding) {
  Json result = madeResult("PC", {madeFinding("C:\\a.dll"), madeFinding("b", "font", "unsure")});
  result["users"] = {{{"name", "Ann"}, {"sid", "S-1"}, {"findings", 1}}};
  result["warnings"] = {"one", "two"};
  result["complete"] = false;
  result["repaired"] = 3;
  result["hives"] = {{{"file", "a"}, {"state", "clean"}}, {{"file", "b"}, {"state", "clean"}}};
  const Read read = readText(textOfJson(result));
  EXPECT_EQ(read.summary.name, "PC");
  EXPECT_EQ(read.summary.identity, "identity of PC");
  EXPECT_EQ(read.summary.product, "Windows 10 Pro");
  EXPECT_EQ(read.summary.bits, 64U);
  EXPECT_EQ(read.summary.started, "2026-11-23T06:53:29Z");
  EXPECT_FALSE(read.summary.isComplete);
  EXPECT_EQ(read.summary.repaired, 3U);
  EXPECT_EQ(read.summary.users, 1U);
  EXPECT_EQ(read.users, std::vector<std::string>{"AnnS-1"});
  EXPECT_EQ(read.summary.warnings, (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(read.summary.hives.at("clean"), 2U);
  EXPECT_EQ(read.summary.findings, 2U);
  EXPECT_EQ(read.summary.byConfidence, (ConfidenceCounts{1, 0, 1}));
  EXPECT_EQ(read.summary.byCategory.at("font"), (ConfidenceCounts{0, 0, 1}));
  ASSERT_EQ(read.findings.size(), 2U);
  EXPECT_EQ(read.findings[0].badValue, "C:\\a.dll");
  EXPECT_EQ(read.findings[0].rootName, "HKEY_X");
  EXPECT_EQ(read.findings[1].category, "font");
}

TEST(ResultReader, AStreamIsTheSame) {
  const Read read = readText(madeLines("PC", {madeFinding("a"), madeFinding("b")}));
  EXPECT_EQ(read.summary.findings, 2U);
  EXPECT_EQ(read.findings.back().badValue, "b");
}

TEST(ResultReader, ResultsStandOneBehindTheOther) {
  std::istringstream stream(textOfJson(madeResult("A", {madeFinding("a")})) +
                            madeLines("B", {madeFinding("b")}) + lineOfJson(madeResult("C", {})));
  JsonSource source(stream);
  std::string names;
  while (source.findNext()) {
    names += readResult(source, {}).name;
  }
  EXPECT_EQ(names, "ABC");
}

TEST(ResultReader, MembersOfLaterProgramsArePassedOver) {
  Json result = madeResult("PC", {madeFinding("a")});
  result["later"] = {{"findings", {1, 2}}, {"schema", 7}};
  result["findings"][0]["later"] = {{"badValue", "x"}, {"list", {{{"badValue", "y"}}}}};
  EXPECT_EQ(readText(textOfJson(result)).findings.front().badValue, "a");
}

TEST(ResultReader, TextsKeepWhatNoUtf8Has) {
  const std::string half = utf8(u"\xD800");
  EXPECT_EQ(readText(textOfJson(madeResult(half, {madeFinding("a" + half)}))).findings[0].badValue,
            "a" + half);
}

TEST(ResultReader, LongTextsAndListsAreCut) {
  Json result = madeResult("PC", {madeFinding(std::string(5000, 'x'))});
  for (int line = 0; line < 100; ++line) {
    result["warnings"].push_back("w");
  }
  const Read read = readText(textOfJson(result));
  EXPECT_EQ(read.findings[0].badValue, std::string(longestText, 'x') + "…");
  EXPECT_EQ(read.summary.warnings.size(), 20U);
}

TEST(ResultReader, WhatIsCutShortIsSaid) {
  const std::string text = textOfJson(madeResult("PC", {madeFinding("a"), madeFinding("b")}));
  for (std::size_t size = 1; size + 2 < text.size(); size += 7) {
    EXPECT_EQ(reasonFor(text.substr(0, size)), cutShort) << size;
  }
  const std::string lines = madeLines("PC", {madeFinding("a"), madeFinding("b")});
  EXPECT_EQ(reasonFor(lines.substr(0, lines.find('\n') + 1)), cutShort);
  EXPECT_EQ(reasonFor(lines.substr(0, lines.size() - 5)), cutShort);
  Json fewer = madeResult("PC", {madeFinding("a")});
  fewer["total"] = 2;
  EXPECT_EQ(reasonFor(textOfJson(fewer)), cutShort);
}

TEST(ResultReader, WhatIsNoResultIsRefused) {
  for (const char* text :
       {"[]", "7", "\"text\"", "hello", "{}", "{\"findings\": 7}", "{\"schema\": 1}",
        "{\"schema\": 1, \"findings\": [7]}", "{\"schema\": 1, \"findings\": [[]]}",
        "{\"schema\": 1, \"findings\": [{\"badValue\": \"a\"}]}"}) {
    EXPECT_EQ(reasonFor(text), notAResult) << text;
  }
  for (const char* member : {"schema", "computer", "started", "seconds", "complete", "users",
                             "warnings", "implausible", "hives", "total"}) {
    Json result = madeResult("PC", {madeFinding("a")});
    Json without = result;
    without.erase(member);
    EXPECT_EQ(reasonFor(textOfJson(without)), notAResult) << member;
    result[member] = Json::array({Json::array()});
    EXPECT_NE(reasonFor(textOfJson(result)), "") << member;
  }
  Json odd = madeResult("PC", {madeFinding("a", "dll", "perhaps")});
  EXPECT_EQ(reasonFor(textOfJson(odd)), notAResult);
}

TEST(ResultReader, AnotherSchemaIsNamed) {
  Json result = madeResult("PC", {});
  result["schema"] = 2;
  result["findings"] = "elsewhere";
  EXPECT_NE(reasonFor(textOfJson(result)).find("has a schema that"), std::string::npos);
}

TEST(ResultReader, DepthAndSizeHaveAnEnd) {
  const std::string deep(1'000'000, '[');
  EXPECT_NE(reasonFor("{\"x\": " + deep).find("nests deeper"), std::string::npos);
  EXPECT_NE(reasonFor("{\"findings\": [{\"x\": " + deep).find("nests deeper"), std::string::npos);
  EXPECT_EQ(reasonFor(deep), notAResult);
  std::string wide = "{\"warnings\": [\"\"";
  for (int line = 0; line < 400'000; ++line) {
    wide += ",\"\"";
  }
  EXPECT_NE(reasonFor(wide).find("has more beside its findings"), std::string::npos);
}

}  // namespace
}  // namespace zelvreg::fleet
