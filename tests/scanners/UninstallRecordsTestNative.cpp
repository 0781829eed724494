// Only the emulated computer can be a 32-bit one.
#include "form/Form42.h"
#include "scanners/UninstallRecordsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;

class UninstallRecords32Test : public fixture::UninstallRecordsFixture {
 protected:
  UninstallRecords32Test() : UninstallRecordsFixture(32) {
    removeKey(machine + "\\SOFTWARE\\Wow6432Node");
    setText(probe, "SystemRoot", "C:\\Windows");
  }

  const std::string probe = machine + "\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
};

TEST_F(UninstallRecords32Test, NothingOfTheSystemFolderIsReported) {
  setText(ofMachine + "\\A", "Program", "C:\\Windows\\System32\\gone.exe");
  setText(ofUser + "\\A", "Program", "C:\\Windows\\System32\\gone.exe");
  uninstall(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_F(UninstallRecords32Test, TheListOfTheOtherViewCountsAsOneRecordWithoutAName) {
  uninstall32(form);
  EXPECT_EQ(findings(), Rows{shellOfMachine32("")});
}

TEST_F(UninstallRecords32Test, EachRunLooksForTheSystemFolderInItsOwnPlace) {
  uninstall(form);
  EXPECT_EQ(form.ntSpelling, 0);
  uninstall32(form);
  EXPECT_EQ(form.ntSpelling, 2);
  setText(probe32, "SystemRoot", "C:\\Windows");
  setText(probe, "SystemRoot", "");
  uninstall(form);
  EXPECT_EQ(form.ntSpelling, 2);
  uninstall32(form);
  EXPECT_EQ(form.ntSpelling, 0);
}

}  // namespace
}  // namespace zelvreg
