// Only the emulated computer can be a 32-bit one.
#include "scan/Findings.h"
#include "scanners/DefaultIcons.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string classesRoot = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";

class DefaultIcons32Test : public fixture::Computer32Fixture {};

TEST_F(DefaultIcons32Test, APathKeepsItsCaseAndOneOfTheSystemFolderIsNeverReported) {
  setText(classesRoot + "1\\DefaultIcon", "", "C:\\Windows\\System32\\Gone.dll,1");
  setText(classesRoot + "2\\DefaultIcon", "", "C:\\Windows\\Gone.dll,1");
  Command10(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1),
            (std::vector<std::string>{"2", "C:\\Windows\\Gone.dll", "6", "HKEY_CLASSES_ROOT",
                                      "\\defaulticon", "e"}));
}

}  // namespace
}  // namespace zelvreg
