// Only the clock of the emulated computer stands still, so that a name made of the time is known,
// and only its calls fail.
#include "runtime/FileText.h"

#include "machine/Machine.h"
#include "machine/base/FaultPlan.h"
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

TEST_F(FileTextTest, AFileThatCannotEvenBeLookedAtIsToBeKept) {
  const std::string path = "C:\\FileText\\kept.txt";
  makeFile(path, "mine");
  auto& faults = machine::Machine::current()->faults();
  faults.failFrom(machine::ApiCall::CreateFile, 1, ERROR_ACCESS_DENIED);
  faults.failFrom(machine::ApiCall::GetFileAttributes, 1, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(isSurelyMissing(path));
  EXPECT_FALSE(contentToKeep(path));
  faults.clear();
  EXPECT_TRUE(isSurelyMissing("C:\\FileText\\none.txt"));
  EXPECT_EQ(contentToKeep("C:\\FileText\\none.txt"), "");
}

}  // namespace
}  // namespace zelvreg
