// Only here can a test give the rights of an administrator up.
#include <gtest/gtest.h>
#include <unistd.h>

#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "machine/OrdinaryUser.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

const std::string run = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

class DeniedFileTest : public fixture::ComputerFixture {
 protected:
  DeniedFileTest() {
    form.safeguards = {};
    setText("HKEY_CURRENT_USER\\" + run, "a", "C:\\DeniedTest\\gone.exe");
    ScannerRun counts;
    addRow(form, counts,
           {.location = "Startup programs",
            .badValue = "a",
            .kindCode = "144",
            .rootName = "HKEY_CURRENT_USER",
            .subKey = run,
            .iconKey = ""});
  }
};

TEST_F(DeniedFileTest, WhatCannotBeLookedAtIsInDoubt) {
  {
    // The drives lie in a folder of whoever runs the tests, which nobody else may look into.
    const fixture::OrdinaryUser other;
    lookAgain(form);
  }
  ASSERT_NE(evidenceOf(form, 1), nullptr);
  EXPECT_EQ(reasonCodes(*evidenceOf(form, 1)), "access-denied");
  EXPECT_EQ(evidenceOf(form, 1)->confidence, Confidence::Unsure);
}

TEST_F(DeniedFileTest, ARecordThatCannotBeOpenedIsInDoubt) {
  const std::string record = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\DeniedTest";
  makeKey("HKEY_CURRENT_USER\\" + record);
  form.View2.clear();
  ScannerRun counts;
  addRow(form, counts, {"x", "DeniedTest", "133", "HKEY_CURRENT_USER", record, ""});
  lookAgain(form);
  EXPECT_EQ(reasonCodes(*evidenceOf(form, 1)), "empty-record");
  setAccessOfKey("HKEY_CURRENT_USER\\" + record, "D:(A;;WD;;;BA)");
  lookAgain(form);
  EXPECT_EQ(reasonCodes(*evidenceOf(form, 1)), "access-denied");
}

}  // namespace
}  // namespace zelvreg
