// Whether the templates for administrators set what the program reads, and nothing else.
#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

#include "scan/Policies.h"
#include "scan/SafeguardSources.h"
#include "support/SourceFolder.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

std::string templateText() {
  std::ifstream file(sourceFolder() + "/fleet/policy/zelvreg.admx", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::vector<std::string> allOf(const std::string& text, const char* pattern) {
  std::vector<std::string> found;
  const std::regex search(pattern);
  for (std::sregex_iterator match(text.begin(), text.end(), search), end; match != end; ++match) {
    found.push_back((*match)[1]);
  }
  return found;
}

TEST(PolicyTemplates, SetTheValuesThatAreRead) {
  std::vector<std::string> set = allOf(templateText(), "valueName=\"([^\"]*)\"");
  std::vector<std::string> read = policyValueNames();
  std::ranges::sort(set);
  std::ranges::sort(read);
  EXPECT_EQ(set, read);
}

TEST(PolicyTemplates, SetThemBelowTheKeyThatIsRead) {
  std::vector<std::string> keys = allOf(templateText(), " key=\"([^\"]*)\"");
  EXPECT_EQ(std::erase(keys, std::string(policyKey) + "\\" + exclusionsPolicy), 1U);
  EXPECT_FALSE(keys.empty());
  for (const std::string& key : keys) {
    EXPECT_EQ(key, policyKey);
  }
}

// Whichever of a policy's two texts lifts a safeguard, the other is the one that keeps it.
TEST(PolicyTemplates, HaveTheTextsOfTheSafeguards) {
  const std::string text = templateText();
  for (const SafeguardRule& rule : safeguardRules) {
    const auto begin = text.find("valueName=\"" + std::string(rule.setting) + "\"");
    ASSERT_NE(begin, std::string::npos) << rule.setting;
    std::vector<std::string> texts = allOf(
        text.substr(begin, text.find("</policy>", begin) - begin), "<string>([^<]*)</string>");
    std::vector<std::string> known{rule.liftingText, rule.keepingText};
    std::ranges::sort(texts);
    std::ranges::sort(known);
    EXPECT_EQ(texts, known) << rule.setting;
  }
}

}  // namespace
}  // namespace zelvreg
