#include "fleet/Merging.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fleet/MadeResult.h"
#include "fleet/MergedText.h"

namespace zelvreg::fleet {
namespace {

std::string result(const std::string& name, const std::vector<Json>& findings,
                   const char* started = "2026-11-23T06:53:29Z") {
  Json made = madeResult(name, findings);
  made["started"] = started;
  return textOfJson(made);
}

TEST(Merging, CountsComputersAndFindingsOfEachReference) {
  Told told;
  const Merged merged = mergeResults(
      {madeSource("a.json", result("A", {madeFinding("C:\\X.dll"), madeFinding("C:\\x.dll"),
                                         madeFinding("only A", "font", "unsure")})),
       madeSource("b.jsonl", madeLines("B", {madeFinding("c:\\x.DLL", "dll", "likely")}))},
      told.listener());
  ASSERT_EQ(merged.computers.size(), 2U);
  EXPECT_EQ(merged.computers[1].file, "b.jsonl");
  ASSERT_EQ(merged.references.size(), 2U);
  const ReferenceSummary& first = merged.references[0];
  EXPECT_EQ(first.badValue, "C:\\X.dll");
  EXPECT_EQ(first.place, "HKEY_X\\Key");
  EXPECT_EQ(first.computers, 2U);
  EXPECT_EQ(first.findings, 3U);
  EXPECT_EQ(first.byConfidence, (ConfidenceCounts{2, 1, 0}));
  ASSERT_EQ(merged.categories.size(), 2U);
  EXPECT_EQ(merged.categories[0].key, "dll");
  EXPECT_EQ(merged.categories[0].computers, 2U);
  EXPECT_EQ(sumOf(merged.categories[0].byConfidence), 3U);
  EXPECT_EQ(totalsOf(merged).findings, 4U);
  EXPECT_EQ(told.bad, std::vector<std::string>());
}

TEST(Merging, OneReferenceInTwoCategoriesIsTwo) {
  const Merged merged = mergeResults(
      {madeSource("a", result("A", {madeFinding("x", "dll"), madeFinding("x", "font")}))}, {});
  EXPECT_EQ(merged.references.size(), 2U);
}

TEST(Merging, TheOrderOfTheArgumentsDoesNotMatter) {
  std::vector<ResultSource> sources{
      madeSource("a", result("A", {madeFinding("x"), madeFinding("Y")})),
      madeSource("b", result("B", {madeFinding("X"), madeFinding("z")})),
      madeSource("c", "no result"), madeSource("d.error", "why\n"),
      madeSource("e", result("A", {}, "2026-11-24T00:00:00Z"))};
  const std::string text = jsonText(mergeResults(sources, {}));
  std::ranges::reverse(sources);
  EXPECT_EQ(jsonText(mergeResults(sources, {})), text);
  std::swap(sources[1], sources[3]);
  EXPECT_EQ(jsonText(mergeResults(sources, {})), text);
}

TEST(Merging, TheNewerResultOfAComputerCounts) {
  const std::string older = result("pc", {madeFinding("old")}, "2026-11-22T00:00:00Z");
  Json renamed = madeResult("PC", {madeFinding("new")});
  renamed["computer"]["identity"] = "identity of pc";
  for (const auto& [first, second] : {std::pair("a", "b"), std::pair("b", "a")}) {
    Told told;
    const Merged merged = mergeResults(
        {madeSource(first, older), madeSource(second, textOfJson(renamed))}, told.listener());
    ASSERT_EQ(merged.computers.size(), 1U);
    ASSERT_EQ(merged.references.size(), 1U);
    EXPECT_EQ(merged.references[0].badValue, "new");
    ASSERT_EQ(merged.superseded.size(), 1U);
    EXPECT_EQ(merged.superseded[0].file, first);
    EXPECT_EQ(merged.superseded[0].newerFile, second);
    ASSERT_EQ(told.superseded.size(), 1U);
    EXPECT_NE(told.superseded[0].find("2026-11-23T06:53:29Z counts"), std::string::npos);
    EXPECT_TRUE(told.bad.empty());
  }
}

TEST(Merging, AnotherNameOrNoIdentityIsAnotherComputer) {
  Json clone = madeResult("clone", {});
  clone["computer"]["identity"] = "identity of A";
  Json unknown = madeResult("A", {});
  unknown["computer"]["identity"] = "";
  const Merged merged =
      mergeResults({madeSource("a", result("A", {})), madeSource("b", textOfJson(clone)),
                    madeSource("c", textOfJson(unknown)), madeSource("d", textOfJson(unknown))},
                   {});
  EXPECT_EQ(merged.computers.size(), 4U);
  EXPECT_TRUE(merged.superseded.empty());
}

TEST(Merging, ABadFileIsToldAndTheOthersCount) {
  Told told;
  ResultSource missing = madeSource("z.json", "");
  missing.open = [] { return nullptr; };
  const std::string whole = result("A", {madeFinding("a")});
  const Merged merged =
      mergeResults({madeSource("a.json", whole + "{\"schema\": 1,"), madeSource("b.json", ""),
                    madeSource("c.error", "the disk is\x1b[2J encrypted\nmore"),
                    madeSource("d.error", ""), missing},
                   told.listener());
  EXPECT_EQ(merged.computers.size(), 1U);
  EXPECT_EQ(merged.references.size(), 1U);
  ASSERT_EQ(merged.failures.size(), 5U);
  EXPECT_EQ(merged.failures[0].why, cutShort);
  EXPECT_EQ(merged.failures[2].why, "the disk is\x1b[2J encrypted");
  EXPECT_EQ(merged.failures[3].why, "it does not say why");
  ASSERT_EQ(told.bad.size(), 3U);
  EXPECT_EQ(told.bad[0], std::string("folder/a.json ") + cutShort);
  EXPECT_EQ(told.bad[1], "folder/b.json is empty; scan that computer again");
  EXPECT_EQ(told.bad[2], "folder/z.json cannot be read; name a file or a folder that exists");
}

TEST(Merging, AFileThatChangesMeanwhileEndsIt) {
  for (const char* later : {"", "{}", "{\"schema\": 1"}) {
    ResultSource source = madeSource("a", "");
    auto texts = std::make_shared<std::vector<std::string>>(
        std::vector<std::string>{later, result("A", {madeFinding("a")})});
    source.open = [texts] {
      auto stream = std::make_unique<std::istringstream>(texts->back());
      texts->pop_back();
      return stream;
    };
    EXPECT_THROW(mergeResults({source}, {}), std::runtime_error) << later;
  }
}

TEST(ReferenceTable, DropsThoseOnTheFewestComputers) {
  ReferenceTable table({.references = 10});
  const auto add = [&table](const std::string& badValue) {
    table.add({.category = "dll", .badValue = badValue});
  };
  for (int computer = 0; computer < 3; ++computer) {
    table.beginComputer();
    add("everywhere");
  }
  EXPECT_FALSE(table.leavesOut());
  for (int number = 0; number < 1000; ++number) {
    add("made up " + std::to_string(number));
  }
  EXPECT_TRUE(table.leavesOut());
  const auto references = table.take();
  EXPECT_LE(references.size(), 10U);
  EXPECT_EQ(std::ranges::count(references, "everywhere", &ReferenceSummary::badValue), 1);
  EXPECT_EQ(std::ranges::find(references, "everywhere", &ReferenceSummary::badValue)->computers,
            3U);
}

TEST(ReferenceTable, LongTextsCountByTheirSize) {
  ReferenceTable table({.references = 1000, .bytes = 10'000});
  table.beginComputer();
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    table.add({.category = "dll", .badValue = std::string(1000, letter)});
  }
  EXPECT_TRUE(table.leavesOut());
  EXPECT_LE(table.take().size(), 5U);
}

TEST(ReferenceTable, CategoriesHaveAnEnd) {
  ReferenceTable table;
  table.beginComputer();
  for (int number = 0; number < 1000; ++number) {
    table.add({.category = std::to_string(number), .badValue = "x"});
  }
  EXPECT_EQ(table.take().size(), mostCategories);
}

}  // namespace
}  // namespace zelvreg::fleet
