#include "console/RunLog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <stdexcept>

#include "console/HostFile.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class RunLogTest : public ::testing::Test {
 protected:
  RunLogTest() { fs::remove(path); }
  ~RunLogTest() override { fs::remove(path); }

  [[nodiscard]] std::string content() const { return readHostFile(path); }

  // Other tests of this suite may run at the same time, in other processes.
  const std::string path =
      (fs::temp_directory_path() / ("zelvreg-run-log-" + std::to_string(processNumber()) + ".log"))
          .string();
};

TEST_F(RunLogTest, EachStepIsALineWithItsTimeAndProcess) {
  RunLog log(path);
  log.note("started");
  log.end(1);
  const std::regex lines(
      "(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ) zelvreg\\[\\d+\\] started\n"
      "\\S+Z zelvreg\\[\\d+\\] ended with status 1 after \\d+\\.\\d seconds\n");
  EXPECT_TRUE(std::regex_match(content(), lines)) << content();
  EXPECT_TRUE(log.isWhole());
}

TEST_F(RunLogTest, RunsAddToTheFileAlsoAtTheSameTime) {
  RunLog first(path);
  RunLog second(path);
  const std::string longText(20000, 'x');
  first.note("a" + longText);
  second.note("b" + longText);
  first.note("c" + longText);
  const std::string text = content();
  const auto lines = split(text, "\n");
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_TRUE(lines[0].ends_with("] a" + longText));
  EXPECT_TRUE(lines[1].ends_with("] b" + longText));
  EXPECT_TRUE(lines[2].ends_with("] c" + longText));
}

TEST_F(RunLogTest, ANameMakesNoLineOfItsOwn) {
  RunLog log(path);
  log.note("left alone: a\r\n2026-01-01T00:00:00Z zelvreg[1] ended\x1b[2J Grün");
  const std::string text = content();
  EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
  EXPECT_EQ(text.find('\x1b'), std::string::npos) << text;
  EXPECT_NE(text.find("Grün"), std::string::npos) << text;
}

TEST_F(RunLogTest, AFileThatCannotBeMadeIsNamed) {
  const std::string file = path + "/no folder/run.log";
  try {
    const RunLog log(file);
    ADD_FAILURE();
  } catch (const std::runtime_error& refusal) {
    EXPECT_EQ(refusal.what(),
              file + " cannot be written; check the folder and the free disk space");
  }
}

}  // namespace
}  // namespace zelvreg::console
