#include "machine/computer/Environment.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

TEST(Environment, IsThatOfA32BitProcessOn64Bits) {
  const Environment environment(true, u"Ann");
  EXPECT_EQ(environment.get(u"ProgramFiles"), u"C:\\Program Files (x86)");
  EXPECT_EQ(environment.get(u"ProgramFiles(x86)"), u"C:\\Program Files (x86)");
  EXPECT_EQ(environment.get(u"ProgramW6432"), u"C:\\Program Files");
  EXPECT_EQ(environment.get(u"CommonProgramFiles"), u"C:\\Program Files (x86)\\Common Files");
  EXPECT_EQ(environment.get(u"CommonProgramW6432"), u"C:\\Program Files\\Common Files");
  EXPECT_EQ(environment.get(u"SystemRoot"), u"C:\\Windows");
  EXPECT_EQ(environment.get(u"SystemDrive"), u"C:");
  EXPECT_EQ(environment.get(u"ProgramData"), u"C:\\ProgramData");
  EXPECT_EQ(environment.get(u"APPDATA"), u"C:\\Users\\Ann\\AppData\\Roaming");
  EXPECT_EQ(environment.get(u"TMP"), u"C:\\Users\\Ann\\AppData\\Local\\Temp");
  EXPECT_EQ(environment.get(u"USERNAME"), u"Ann");
}

TEST(Environment, Has32BitNamesAloneOn32Bits) {
  const Environment environment(false, u"Ann");
  EXPECT_EQ(environment.get(u"ProgramFiles"), u"C:\\Program Files");
  EXPECT_EQ(environment.get(u"CommonProgramFiles"), u"C:\\Program Files\\Common Files");
  EXPECT_FALSE(environment.get(u"ProgramFiles(x86)"));
  EXPECT_FALSE(environment.get(u"ProgramW6432"));
  EXPECT_FALSE(environment.get(u"CommonProgramW6432"));
}

TEST(Environment, ComparesNamesWithoutRegardToCase) {
  Environment environment;
  environment.set(u"Größe", u"1");
  EXPECT_EQ(environment.get(u"GRÖßE"), u"1");
  environment.set(u"GRÖßE", u"2");
  EXPECT_EQ(environment.get(u"Größe"), u"2");
}

TEST(Environment, ExpandsNamesBetweenPercentSigns) {
  Environment environment;
  environment.set(u"A", u"x");
  EXPECT_EQ(environment.expand(u"%a%\\%A%"), u"x\\x");
  EXPECT_EQ(environment.expand(u"plain"), u"plain");
  EXPECT_EQ(environment.expand(u""), u"");
}

TEST(Environment, LeavesANameOfNoVariableUnchanged) {
  Environment environment;
  environment.set(u"A", u"x");
  EXPECT_EQ(environment.expand(u"%b%"), u"%b%");
  EXPECT_EQ(environment.expand(u"100% %A%"), u"100% x");
  EXPECT_EQ(environment.expand(u"%%A%"), u"%x");
  EXPECT_EQ(environment.expand(u"50%"), u"50%");
}

TEST(Environment, DoesNotExpandWhatItPutIn) {
  Environment environment;
  environment.set(u"A", u"%B%");
  environment.set(u"B", u"x");
  EXPECT_EQ(environment.expand(u"%A%"), u"%B%");
}

}  // namespace
}  // namespace zelvreg::machine
