#include "fleet/Page.h"

#include <gtest/gtest.h>

#include <sstream>

#include "fleet/MadeResult.h"
#include "fleet/MergedText.h"
#include "support/ParsedJson.h"
#include "text/Text.h"

namespace zelvreg::fleet {
namespace {

std::string between(const std::string& text, const std::string& front, const std::string& back) {
  const std::size_t start = text.find(front) + front.size();
  return text.substr(start, text.find(back, start) - start);
}

nlohmann::json dataIn(const std::string& page) {
  return fixture::parsedJson(
      between(page, "<script type=\"application/json\" id=\"data\">", "</script>"));
}

Merged sample() {
  Merged merged = mergeResults(
      {madeSource("a", textOfJson(madeResult("A", {madeFinding("x"), madeFinding("y", "font")}))),
       madeSource("b", textOfJson(madeResult("B", {madeFinding("x", "dll", "unsure")}))),
       madeSource("pc-3.error", "pc-3.vhdx is encrypted\n"),
       madeSource("pc-4.error", "pc-4.vhdx is encrypted\n")},
      {});
  merged.made = "2026-11-23T06:53:29Z";
  merged.version = "1.2.3";
  return merged;
}

TEST(Page, ShowsTheFiguresWithoutAnyScript) {
  const std::string page = pageText(sample());
  EXPECT_TRUE(contains(page, "<title>Dead registry references on 2 computers</title>"));
  EXPECT_TRUE(contains(page, "<dt>Findings</dt><dd>3</dd>"));
  EXPECT_TRUE(contains(page, "class=\"failed\"><dt>Failed</dt><dd>2</dd>"));
  EXPECT_TRUE(contains(page, "Made 2026-11-23 06:53:29 UTC"));
  EXPECT_TRUE(contains(page, "zelvreg 1.2.3"));
  EXPECT_FALSE(contains(page, "{{"));
}

TEST(Page, NamesNoOtherPlace) {
  const std::string page = lowerCase(pageText(sample()));
  for (const char* lead : {"http:", "https:", "src=", "@import", "url(", "fetch(", "xmlhttp",
                           "websocket", "<link", "<iframe", "import("}) {
    EXPECT_FALSE(contains(page, lead)) << lead;
  }
  const std::string policy = between(page, "content-security-policy\" content=\"", "\"");
  EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'sha256-")) << policy;
  EXPECT_FALSE(contains(policy, "unsafe"));
}

TEST(Page, DataHasRowsAndCounts) {
  const auto data = dataIn(pageText(sample(), "all.csv"));
  EXPECT_EQ(data["csv"], "all.csv");
  EXPECT_EQ(data["totals"]["computers"], 2);
  EXPECT_EQ(data["confidence"], nlohmann::json::array({2, 0, 1}));
  EXPECT_EQ(data["categories"].size(), 2U);
  EXPECT_EQ(data["references"][0], (nlohmann::json{0, "x", 2, 2, 1, 0, 1, "HKEY_X\\Key"}));
  EXPECT_EQ(data["computers"][0][0], "A");
  EXPECT_EQ(data["reasons"], nlohmann::json::parse(R"([["NAME.vhdx is encrypted", 2]])"));
  EXPECT_EQ(data["failed"].size(), 2U);
}

TEST(Page, ComputersAreCountedByTheirFindings) {
  Merged merged;
  for (const std::uint64_t findings : {0U, 1U, 10U, 11U, 25U, 26U, 1000U, 1001U, 90000U}) {
    merged.computers.push_back({.findings = findings});
  }
  const auto sizes = dataIn(pageText(merged))["sizes"];
  std::string counts;
  for (const auto& size : sizes) {
    counts += std::to_string(size[1].get<int>()) + " ";
  }
  EXPECT_EQ(counts, "1 2 2 1 0 0 0 1 2 ");
}

TEST(Page, NoTextIsMarkup) {
  const std::string name = "</script><img src=x onerror=alert(1)>&amp;\xE2\x80\xA8<!--";
  const Merged merged =
      mergeResults({madeSource(name, textOfJson(madeResult(name, {madeFinding(name, name)}))),
                    madeSource("b.error", name)},
                   {});
  const std::string page = pageText(merged, name);
  EXPECT_FALSE(contains(page, "onerror=alert(1)>"));
  const auto data = dataIn(page);
  EXPECT_EQ(data["computers"][0][0], name);
  EXPECT_EQ(data["references"][0][1], name);
  EXPECT_EQ(data["csv"], name);
}

TEST(Page, HoldsTenThousandRowsAtMost) {
  Merged merged;
  for (std::uint64_t number = 0; number < 12'000; ++number) {
    merged.computers.push_back({.name = std::to_string(number), .findings = number});
    merged.references.push_back({.badValue = "x"});
    merged.failures.push_back({.file = "f", .why = std::to_string(number)});
  }
  const auto data = dataIn(pageText(merged));
  EXPECT_EQ(data["computers"].size() + data["references"].size() + data["failed"].size(), mostRows);
  EXPECT_EQ(data["computers"][0][0], "11999");
  EXPECT_EQ(data["totals"]["computers"], 12'000);
  EXPECT_EQ(data["totals"]["references"], 12'000);
  EXPECT_EQ(data["reasons"].size(), 12U);
}

TEST(MergedText, CsvHasARowForEachReference) {
  Merged merged = sample();
  merged.references[0].badValue = "=cmd|'/c calc'!A1";
  EXPECT_EQ(csvText(merged),
            "category,badValue,computers,findings,sure,likely,unsure,place\n"
            "dll,'=cmd|'/c calc'!A1,2,2,1,0,1,HKEY_X\\Key\n"
            "font,y,1,1,1,0,0,HKEY_X\\Key\n");
}

TEST(MergedText, JsonTellsAllOfIt) {
  const auto object = fixture::parsedJson(jsonText(sample()));
  EXPECT_EQ(object["command"], "merge");
  EXPECT_EQ(object["counts"]["computers"], 2);
  EXPECT_EQ(object["counts"]["failed"], 2);
  EXPECT_EQ(object["confidence"]["unsure"], 1);
  EXPECT_EQ(object["computers"][0]["windows"]["version"], "10.0.19045");
  EXPECT_EQ(object["computers"][0]["categories"]["font"], 1);
  EXPECT_EQ(object["references"][0]["computers"], 2);
  EXPECT_EQ(object["failed"][1]["why"], "pc-4.vhdx is encrypted");
  EXPECT_EQ(fixture::parsedJson(jsonText({}))["computers"].size(), 0U);
}

}  // namespace
}  // namespace zelvreg::fleet
