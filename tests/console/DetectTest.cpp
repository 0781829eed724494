#include "console/DetectCommand.h"

#include <sstream>
#include <stdexcept>

#include "console/Commands.h"
#include "console/GivenComputer.h"
#include "form/Version.h"
#include "support/ComputerFixture.h"

namespace zelvreg::console {
namespace {

const std::string fontsKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts";
const std::string policies = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\zelvane\\zelvreg";

class DetectTest : public fixture::ComputerFixture {
 protected:
  DetectTest() {
    emptyKey(fontsKey);
    removeKey(policies);
    options.command = Command::Detect;
    options.leastSure = Confidence::Sure;
    options.rows = {1};
  }
  ~DetectTest() override { removeKey(policies); }

  int run() {
    out.str("");
    return detect(options,
                  [this] {
                    auto computer = std::make_unique<GivenComputer>();
                    computer->damaged = damage;
                    return computer;
                  },
                  {.out = out, .error = out});
  }
  // What the line says behind the program and its version.
  [[nodiscard]] std::string said() const {
    const std::string beginning = std::string("zelvreg ") + programVersion() + ": ";
    const std::string line = out.str();
    EXPECT_TRUE(line.starts_with(beginning)) << line;
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    return line.substr(beginning.size(), line.size() - beginning.size() - 1);
  }

  Options options;
  std::vector<std::string> damage;
  std::ostringstream out;
};

TEST_F(DetectTest, WithoutFindingsItEndsWithZero) {
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(said(), "nothing sure to repair; 0 likely, 0 unsure left to review");
}

TEST_F(DetectTest, SureFindingsAreCountedByCategory) {
  setText(fontsKey, "Gone", "C:\\gone.ttf");
  setText(fontsKey, "Gone too", "C:\\gone too.ttf");
  EXPECT_EQ(run(), problemsFound);
  EXPECT_EQ(said(), "2 sure in 1 category (fonts 2); 0 likely, 0 unsure left to review");
  EXPECT_EQ(storedText(fontsKey, "Gone"), "C:\\gone.ttf");
}

TEST_F(DetectTest, WhatIsNotSureIsLeftToReview) {
  setText(fontsKey, "Share", "\\\\server\\share\\gone.ttf");
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(said(), "nothing sure to repair; 0 likely, 1 unsure left to review");
}

TEST_F(DetectTest, WhatAnAdministratorExcludesDoesNotCount) {
  setText(fontsKey, "Gone", "C:\\gone.ttf");
  setText(policies + "\\Exclusions", "1", "HKEY_LOCAL_MACHINE");
  EXPECT_EQ(run(), nothingFound);
  removeKey(policies);
  setText(policies, "categories", "dlls");
  EXPECT_EQ(run(), nothingFound);
  removeKey(policies);
  EXPECT_EQ(run(), problemsFound);
}

TEST_F(DetectTest, WhatCannotBeToldIsNoReasonForARepair) {
  setText(fontsKey, "Gone", "C:\\gone.ttf");
  const std::string beginning = "not known whether there is anything to repair: ";
  damage = {"SOFTWARE is damaged"};
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(said(), beginning + "SOFTWARE is damaged; nothing was repaired");
  damage.clear();
  options.deadline = std::chrono::steady_clock::time_point::min();
  EXPECT_EQ(run(), nothingFound);
  EXPECT_EQ(said(), beginning + "the scan was ended by --timeout; nothing was repaired");
  options.deadline.reset();
  setText(policies, "categories", "dlls");
  options.areRowsNamed = true;
  EXPECT_EQ(run(), nothingFound);
  EXPECT_TRUE(said().starts_with(beginning + "--only fonts contradicts")) << said();
}

TEST_F(DetectTest, ALongFailureIsCutToOneLine) {
  const int status =
      detect(options,
             []() -> std::unique_ptr<Computer> {
               throw std::runtime_error("first\nsecond\x1b[31m " + std::string(5000, 'x'));
             },
             {.out = out, .error = out});
  EXPECT_EQ(status, nothingFound);
  EXPECT_NE(said().find("first second [31m xxx"), std::string::npos) << said();
  EXPECT_EQ(out.str().size(), longestDetection + 1);
}

}  // namespace
}  // namespace zelvreg::console
