#include "console/Doctor.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "console/Installation.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

DoctorProbe probe(const char* name, bool isNeeded, const Fact& fact) {
  return {.name = name, .isNeeded = isNeeded, .ask = [fact] { return fact; }};
}

class DoctorTest : public testing::Test {
 protected:
  int run(const std::vector<DoctorProbe>& probes, Format format = Format::Tables) {
    out.str("");
    return runDoctor(probes, format, streams);
  }

  std::ostringstream out;
  std::ostringstream error;
  Streams streams{.out = out, .error = error};
};

TEST_F(DoctorTest, SaysEachFactInALineWithItsMark) {
  EXPECT_EQ(run({probe("languages", true, {true, "12 in /usr/lang"}),
                 probe("Wine", false, {false, "install it"})}),
            nothingFound);
  EXPECT_EQ(out.str(),
            "ok       languages   12 in /usr/lang\n"
            "missing  Wine        install it\n");
  EXPECT_EQ(error.str(), "");
}

TEST_F(DoctorTest, FailsOnlyWhereSomethingIsMissingThatIsNeeded) {
  EXPECT_EQ(run({probe("a", false, {false, "x"}), probe("b", true, {true, "y"})}), nothingFound);
  EXPECT_EQ(run({probe("a", true, {false, "x"}), probe("b", true, {true, "y"})}), failed);
}

TEST_F(DoctorTest, AProbeThatThrowsHasFoundOutWhatIsMissing) {
  const auto refuse = []() -> Fact { throw std::runtime_error("no \x1b[2J mounts"); };
  EXPECT_EQ(run({{.name = "mounts", .isNeeded = false, .ask = refuse}}), nothingFound);
  EXPECT_EQ(out.str(), "missing  mounts      no  [2J mounts\n");
}

TEST_F(DoctorTest, TellsOtherProgramsTheSame) {
  EXPECT_EQ(run({probe("languages", true, {false, "none"}), probe("Wine", false, {true, "wine"})},
                Format::Json),
            failed);
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(object["ok"], false);
  EXPECT_EQ(object["facts"].size(), 2U);
  EXPECT_EQ(object["facts"][0]["name"], "languages");
  EXPECT_EQ(object["facts"][0]["ok"], false);
  EXPECT_EQ(object["facts"][0]["needed"], true);
  EXPECT_EQ(object["facts"][1]["text"], "wine");
}

TEST_F(DoctorTest, MarksAreColoredInLinesButNotInJson) {
  streams.tables.paint = Paint(true);
  run({probe("a", true, {true, "x"})});
  EXPECT_NE(out.str().find("\x1b[38;5;28mok\x1b[0m"), std::string::npos);
  run({probe("a", true, {true, "x"})}, Format::Json);
  EXPECT_EQ(out.str().find('\x1b'), std::string::npos);
}

TEST_F(DoctorTest, OfThisSystemThereAreTenLinesAtMost) {
  const auto probes = doctorProbes(streams);
  EXPECT_GE(probes.size(), 8U);
  EXPECT_LE(probes.size(), 10U);
}

TEST_F(DoctorTest, ACheckThatFindsNothingMissingSaysWhatIsThere) {
  EXPECT_TRUE(factOf("", "all of it").isThere);
  EXPECT_EQ(factOf("", "all of it").text, "all of it");
  EXPECT_FALSE(factOf("qemu-img is not here", "all of it").isThere);
  EXPECT_EQ(factOf("qemu-img is not here", "all of it").text, "qemu-img is not here");
}

TEST_F(DoctorTest, LanguagesAreThoseOfTheFilesBesideTheProgram) {
  const std::vector<std::string> files{"zelvreg-german.lang", "data.lang", "zelvreg-.lang",
                                       "zelvreg-english.lang", "notes.txt"};
  EXPECT_EQ(languageTags(files), (std::vector<std::string>{"english", "german"}));
  EXPECT_EQ(languagesFact("there", files).text, "2 in there");
  EXPECT_FALSE(languagesFact("there", {"zelvreg-german.lang"}).isThere);
  EXPECT_FALSE(languagesFact("there", {"data.lang"}).isThere);
}

TEST_F(DoctorTest, LittleMemoryIsTold) {
  constexpr unsigned long long gigabyte = 1ULL << 30;
  EXPECT_EQ(memoryFact(4 * gigabyte, 3 * gigabyte + gigabyte / 2).text,
            "3.5 GB of 4.0 GB are free");
  EXPECT_TRUE(memoryFact(4 * gigabyte, gigabyte).isThere);
  EXPECT_FALSE(memoryFact(4 * gigabyte, gigabyte / 4).isThere);
}

TEST_F(DoctorTest, TheTerminalIsAsWideAsTheTables) {
  streams.tables = {.width = 132, .paint = Paint(true)};
  EXPECT_EQ(terminalProbe(streams).ask().text, "132 columns; in color");
  streams.tables = {};
  EXPECT_EQ(terminalProbe(streams).ask().text, "none, so tables are not cut; no color");
}

}  // namespace
}  // namespace zelvreg::console
