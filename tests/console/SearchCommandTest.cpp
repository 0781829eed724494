#include <sstream>

#include "console/Commands.h"
#include "console/GivenComputer.h"
#include "support/ComputerFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

const std::string ownKey = "HKEY_CURRENT_USER\\Software\\SearchCommandTest";

class SearchCommandTest : public fixture::ComputerFixture {
 protected:
  SearchCommandTest() {
    emptyKey(ownKey);
    setText(ownKey + "\\Needle", "SearchNeedle", "C:\\SearchNeedle\\Gone.exe");
    options.command = Command::Search;
    options.search.root = "HKEY_CURRENT_USER";
    options.search.text = "needle";
    options.search.testsData = true;
  }
  ~SearchCommandTest() override { removeKey(ownKey); }

  int run() { return runCommand(options, given, {.out = out, .error = error}); }
  // The keys and values that a search lists.
  std::vector<std::string> locations() {
    out.str("");
    options.format = Format::Json;
    run();
    std::vector<std::string> all;
    const auto object = fixture::parsedJson(out.str());
    for (const auto& finding : object["findings"]) {
      all.push_back(finding["location"]);
    }
    return all;
  }

  Options options;
  GivenComputer given;
  std::ostringstream out;
  std::ostringstream error;
};

TEST_F(SearchCommandTest, DeadPathsAreListedAndNothingIsSaved) {
  EXPECT_EQ(run(), problemsFound);
  EXPECT_NE(out.str().find("c:\\searchneedle\\gone.exe"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("HKCU\\Software\\SearchCommandTest\\Needle"), std::string::npos);
  EXPECT_TRUE(out.str().ends_with("\n1 entry found.\n"));
  EXPECT_EQ(error.str(), "");
  EXPECT_EQ(given.saves, 0);
}

TEST_F(SearchCommandTest, ATimeThatIsOverEndsTheSearch) {
  options.deadline = std::chrono::steady_clock::time_point::min();
  try {
    run();
    ADD_FAILURE();
  } catch (const std::runtime_error& reason) {
    EXPECT_STREQ(reason.what(),
                 "the search was ended by --timeout; what was found so far is listed");
  }
}

TEST_F(SearchCommandTest, FindingNothingEndsWithZero) {
  options.search.text = "no such text";
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(out.str(), "0 entries found.\n");
}

TEST_F(SearchCommandTest, JsonIsOneObjectWithoutCategories) {
  options.format = Format::Json;
  options.exitsZero = true;
  EXPECT_EQ(run(), nothingFound);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["total"], 1);
  EXPECT_EQ(object["findings"][0]["badValue"], "SearchNeedle");
  EXPECT_EQ(object["findings"][0]["kindCode"], "11");
  EXPECT_FALSE(object.contains("categories"));
  EXPECT_TRUE(object["findings"][0].contains("confidence"));
  EXPECT_EQ(object["confidence"].size(), 3U);
  EXPECT_TRUE(object["implausible"].is_array());
}

TEST_F(SearchCommandTest, QuietPrintsNothing) {
  options.isQuiet = true;
  EXPECT_EQ(run(), problemsFound);
  EXPECT_EQ(out.str(), "");
}

TEST_F(SearchCommandTest, EachOptionReachesItsControl) {
  using Texts = std::vector<std::string>;
  SearchOptions& search = options.search;
  const std::string key = "Software\\SearchCommandTest\\Needle";
  search.testsData = false;
  search.testsKeys = true;
  EXPECT_EQ(locations(), Texts{key});
  search.testsValues = true;
  EXPECT_EQ(locations(), (Texts{key, key + "\\SearchNeedle"}));
  search.mode = SearchMode::Left;
  EXPECT_EQ(locations(), Texts{key});
  search.mode = SearchMode::Right;
  EXPECT_EQ(locations(), (Texts{key, key + "\\SearchNeedle"}));
  search.mode = SearchMode::Exact;
  EXPECT_EQ(locations(), Texts{key});
  search.matchesCase = true;
  EXPECT_EQ(locations(), Texts{});
}

TEST_F(SearchCommandTest, ARootThatIsNotListedIsRefused) {
  options.search.root = "HKEY_NOWHERE";
  EXPECT_THROW(run(), std::runtime_error);
}

TEST_F(SearchCommandTest, ADamagedPartIsNamedAndTheSearchEndsWithTwo) {
  given.damaged = {"SOFTWARE is damaged"};
  EXPECT_EQ(run(), failed);
  EXPECT_EQ(error.str(), "zelvreg: SOFTWARE is damaged\n");
}

TEST_F(SearchCommandTest, ProgressIsShownAndTakenAway) {
  runCommand(options, given, {.out = out, .error = error, .showsProgress = true});
  EXPECT_TRUE(error.str().starts_with("\r\x1b[K0 found  ")) << error.str();
  EXPECT_TRUE(error.str().ends_with("\r\x1b[K"));
}

}  // namespace
}  // namespace zelvreg::console
