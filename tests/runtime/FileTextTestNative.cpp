// Only the clock of the emulated computer stands still, so that a name made of the time is known.
#include "runtime/FileText.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class FileTextTest : public fixture::ComputerFixture {};

TEST_F(FileTextTest, NobodyCanTakeTheNameOfTheNewFileFirst) {
  const std::string path = "C:\\FileText\\a.txt";
  const ULONGLONG now = GetTickCount64();
  for (ULONGLONG number = now; number < now + 200; ++number) {
    makeFile(path + "." + std::to_string(number) + ".new", "mine");
  }
  EXPECT_TRUE(replaceFileText(path, "text"));
  EXPECT_EQ(readFileText(path), "text");
  EXPECT_EQ(readFileText(path + "." + std::to_string(now) + ".new"), "mine");
}

}  // namespace
}  // namespace zelvreg
