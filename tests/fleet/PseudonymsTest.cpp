#include "fleet/Pseudonyms.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fleet/MadeResult.h"
#include "fleet/MergedText.h"
#include "fleet/Page.h"
#include "text/Text.h"

namespace zelvreg::fleet {
namespace {

Json findingAt(const std::string& badValue, const std::string& root, const std::string& key) {
  Json finding = madeFinding(badValue);
  finding["rootName"] = root;
  finding["subKey"] = key;
  return finding;
}

// The names of people and computers in it must all go.
const std::string sid = "S-1-5-21-1-2-3-1001";
Merged mergedOf(const std::string& key) {
  Json berlin = madeResult(
      "Berlin-7", {findingAt("C:\\Users\\Ann\\a.exe", "HKEY_USERS", sid + "_Classes\\x"),
                   findingAt("c:/users/ANN.CONTOSO/b", "HKEY_X", "Software\\Ann Lee\\Annual"),
                   findingAt("C:\\Documents and Settings\\Zoë\\z", "HKEY_X", "S-1-5-21-9-9-9-500"),
                   findingAt("C:\\Users\\Public\\p", "HKEY_X", "S-1-5-18\\%USERNAME%")});
  berlin["users"] = {{{"name", "Ann"}, {"sid", sid}},
                     {{"name", "Ann Lee"}, {"sid", ""}},
                     {{"name", "SYSTEM"}, {"sid", "S-1-5-18"}}};
  berlin["warnings"] = {"the hive /images/berlin-7/Users/ann/NTUSER.DAT is damaged"};
  Pseudonyms pseudonyms(key);
  Merged merged =
      mergeResults({madeSource("berlin-7.json", textOfJson(berlin)),
                    madeSource("Oslo.json", textOfJson(madeResult("OSLO-1", {madeFinding("x")}))),
                    madeSource("Prag.error", "Prag.vhdx is encrypted\n")},
                   {}, &pseudonyms);
  pseudonyms.applyTo(merged);
  return merged;
}

TEST(Pseudonyms, NoNameIsLeftInAnyOutput) {
  const Merged merged = mergedOf("key");
  for (const std::string& text : {jsonText(merged), csvText(merged), pageText(merged)}) {
    const std::string low = lowerCase(text);
    for (const char* name : {"berlin", "oslo", "prag", "users\\ann", "users\\\\ann", "users/ann",
                             "ann lee", "contoso", "zoë", "s-1-5-21", "identity of"}) {
      EXPECT_FALSE(contains(low, name)) << name;
    }
  }
  EXPECT_TRUE(merged.isAnonymous);
}

TEST(Pseudonyms, ANameIsTheSameWhereverItStands) {
  const Merged merged = mergedOf("key");
  const auto placeOf = [&merged](const std::string& end) {
    const auto found = std::ranges::find_if(merged.references, [&end](const auto& reference) {
      return reference.badValue.ends_with(end);
    });
    return found == merged.references.end() ? std::pair<std::string, std::string>()
                                            : std::pair(found->badValue, found->place);
  };
  const std::string ann = placeOf("a.exe").first.substr(9, 6);
  EXPECT_TRUE(ann.starts_with("user-")) << ann;
  EXPECT_EQ(placeOf("a.exe").first, "C:\\Users\\" + ann + "\\a.exe");
  EXPECT_EQ(placeOf("a.exe").second, "HKEY_USERS\\" + ann + "_Classes\\x");
  EXPECT_EQ(placeOf("b").first, "c:/users/" + ann + "/b");
  // Neither another name nor another word is taken for hers.
  EXPECT_TRUE(placeOf("b").second.ends_with("\\Annual")) << placeOf("b").second;
  EXPECT_FALSE(contains(placeOf("b").second, ann));
  EXPECT_EQ(placeOf("p").first, "C:\\Users\\Public\\p");
  EXPECT_EQ(placeOf("p").second, "HKEY_X\\S-1-5-18\\%USERNAME%");
  const auto berlin = std::ranges::find_if(
      merged.computers, [](const ComputerSummary& computer) { return computer.findings == 4; });
  ASSERT_NE(berlin, merged.computers.end());
  EXPECT_EQ(berlin->file, berlin->name + ".json");
  EXPECT_EQ(berlin->warnings[0],
            "the hive /images/" + berlin->name + "/Users/" + ann + "/NTUSER.DAT is damaged");
  ASSERT_EQ(merged.failures.size(), 1U);
  EXPECT_EQ(merged.failures[0].why, merged.failures[0].file.substr(0, 10) + ".vhdx is encrypted");
}

TEST(Pseudonyms, TheKeyAloneDecidesTheNumbers) {
  EXPECT_EQ(jsonText(mergedOf("key")), jsonText(mergedOf("key")));
  bool differs = false;
  for (const char* key : {"b", "c", "d", "e", "f", "g", "h", "i"}) {
    differs = differs || jsonText(mergedOf(key)) != jsonText(mergedOf("key"));
  }
  EXPECT_TRUE(differs);
}

TEST(Pseudonyms, AnUnnamedComputerAndSharedFilesHaveNames) {
  Pseudonyms pseudonyms("key");
  Merged merged = mergeResults(
      {madeSource("all.json", textOfJson(madeResult("", {})) + textOfJson(madeResult("B", {})))},
      {}, &pseudonyms);
  pseudonyms.applyTo(merged);
  ASSERT_EQ(merged.computers.size(), 2U);
  EXPECT_EQ(merged.computers[0].name, "computer-1");
  EXPECT_EQ(merged.computers[1].name, "computer-2");
}

}  // namespace
}  // namespace zelvreg::fleet
