#include "console/LanguageCheckCommand.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "support/ParsedJson.h"
#include "support/ShippedLanguages.h"
#include "support/SourceFolder.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

// A folder with the list of languages and the English file, and one file to check.
class LanguageCheckCommand : public ::testing::Test {
 protected:
  LanguageCheckCommand() {
    fs::create_directories(folder);
    write("data.lang", fixture::languageAsset("data.lang"));
    write("zelvreg-english.lang", fixture::languageAsset("zelvreg-english.lang"));
  }
  ~LanguageCheckCommand() override { fs::remove_all(folder); }

  void write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }

  int check(const std::string& name, const std::string& bytes) {
    write(name, bytes);
    options.command = Command::CheckLanguage;
    options.languageFile = (folder / name).string();
    out.str("");
    return checkLanguage(options, {.out = out, .error = out});
  }

  fs::path folder = fs::temp_directory_path() / "zelvreg-language-check";
  Options options;
  std::ostringstream out;
};

const std::string startMissing =
    replaceAll(fixture::languageAsset("zelvreg-german.lang"), "cmd_start=Start\r\n", "");

TEST_F(LanguageCheckCommand, TellsNothingButHintsOfAWholeFile) {
  EXPECT_EQ(check("zelvreg-german.lang", fixture::languageAsset("zelvreg-german.lang")), 0);
  EXPECT_TRUE(contains(out.str(), ": hint: [Form42] cmd_start: is the same as in English\n"))
      << out.str();
  EXPECT_EQ(check("zelvreg-english.lang", fixture::languageAsset("zelvreg-english.lang")), 0);
  EXPECT_EQ(out.str(), "");
}

TEST_F(LanguageCheckCommand, HasALineForEachProblemAndEndsWithOne) {
  EXPECT_EQ(check("zelvreg-german.lang", startMissing), 1);
  EXPECT_TRUE(contains(out.str(), "zelvreg-german.lang: [Form42] cmd_start: has no text\n"))
      << out.str();
  options.exitsZero = true;
  EXPECT_EQ(check("zelvreg-german.lang", startMissing), 0);
}

TEST_F(LanguageCheckCommand, TellsTheSameAsJson) {
  options.format = Format::Json;
  EXPECT_EQ(check("zelvreg-german.lang", startMissing + "[Form42]\r\nbegin=\r\n"), 1);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["codePage"], 1252);
  const auto& last = object["problems"].back();
  EXPECT_EQ(last["kind"], "missing");
  EXPECT_EQ(last["key"], "cmd_start");
  EXPECT_EQ(last["line"], 0);
  EXPECT_FALSE(last["hint"]);
}

TEST_F(LanguageCheckCommand, TakesTheCharsetFromTheListOrFromTheCall) {
  const std::string polish = fixture::languageAsset("zelvreg-polish.lang");
  EXPECT_EQ(check("zelvreg-polish.lang", polish), 0);
  EXPECT_THROW(check("zelvreg-silesian.lang", polish), std::runtime_error);
  options.charset = 238;
  EXPECT_EQ(check("zelvreg-silesian.lang", polish), 0);
  options.charset = 128;
  EXPECT_EQ(check("zelvreg-polish.lang", polish), 1);
}

TEST_F(LanguageCheckCommand, NeedsNoCharsetForAMarkedFile) {
  EXPECT_EQ(check("zelvreg-klingon.lang", "\xEF\xBB\xBF[Form42]\r\n"), 1);
}

TEST_F(LanguageCheckCommand, RefusesAFileThatCannotBeRead) {
  options.languageFile = (folder / "zelvreg-none.lang").string();
  EXPECT_THROW(checkLanguage(options, {.out = out, .error = out}), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::console
