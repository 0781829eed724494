// The second look on the disk of a computer that is not running, which only the emulated one reads.
#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "machine/OfflineDiskFixture.h"
#include "scan/Findings.h"

namespace zelvreg {
namespace {

class OfflineLookTest : public fixture::OfflineDiskTest {
 protected:
  OfflineLookTest() {
    disk.write("Windows/System32/kernel.dll", "");
    disk.write("Program Files/x", "");
    hive(anna).text(R"(Software\Microsoft\Windows\CurrentVersion\Run)", "gone", R"(C:\gone.exe)");
    fixture::HiveBuilder computers = hive(software);
    computers.text(R"(Microsoft\Windows\CurrentVersion\Run)", "gone", R"(C:\gone.exe)");
    computers.text(R"(Microsoft\Windows\CurrentVersion\Run)", "unknown", R"(E:\gone.exe)");
  }

  // The reasons for a startup program of this root.
  std::string reasonsOf(const char* rootName, const char* name) {
    if (computer == nullptr) {
      open();
    }
    const machine::Running running(*computer);
    Form42 form;
    ScannerRun counts;
    addRow(form, counts,
           {"x", name, "144", rootName, R"(Software\Microsoft\windows\currentversion\Run)", ""});
    lookAgain(form);
    return reasonCodes(*evidenceOf(form, 1));
  }
};

TEST_F(OfflineLookTest, JudgesByTheFilesOfTheDisk) {
  EXPECT_EQ(reasonsOf("HKEY_LOCAL_MACHINE", "gone"), "absent");
  EXPECT_EQ(reasonsOf("HKEY_CURRENT_USER", "gone"), "absent");
}

TEST_F(OfflineLookTest, ADriveThatWasNotGivenIsAbsent) {
  EXPECT_EQ(reasonsOf("HKEY_LOCAL_MACHINE", "unknown"), "drive-absent");
}

TEST_F(OfflineLookTest, WhatAHiveSaysWhoseLogsAreNewerIsNotCertain) {
  constexpr std::size_t firstSequence = 4;
  makeUnclean(software, firstSequence);
  EXPECT_EQ(reasonsOf("HKEY_LOCAL_MACHINE", "gone"), "absent logs-not-replayed");
  EXPECT_EQ(reasonsOf("HKEY_CURRENT_USER", "gone"), "absent");
}

}  // namespace
}  // namespace zelvreg
