// What only the emulated computer can be told: the kinds of its drives.
#include <algorithm>

#include "evidence/Reasons.h"
#include "evidence/TextLook.h"
#include "machine/files/Drives.h"
#include "support/MachineFixture.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

class TextLookOfDrivesTest : public fixture::MachineFixture {
 protected:
  static std::string reasonsOf(const std::string& text, Shares shares = Shares::Refused) {
    TextLook look(shares, 1);
    return reasonCodes(look.at(text, {}, Reading::Command));
  }
};

TEST_F(TextLookOfDrivesTest, WhatIsGoneFromADiskThatCanBeChangedMayComeBack) {
  file("D:\\there.exe");
  start().drives().setType(u'd', DRIVE_REMOVABLE);
  EXPECT_EQ(reasonsOf("D:\\there.exe"), "found");
  EXPECT_EQ(reasonsOf("D:\\gone.exe"), "drive-removable absent");
}

TEST_F(TextLookOfDrivesTest, BelowAFolderThatIsMissingNothingIsAsked) {
  file("C:\\Vendor\\there.exe");
  machine::Machine& computer = start();
  TextLook look(Shares::Refused, 1);
  const auto reasons = [&](const std::string& text) {
    return reasonCodes(look.at(text, {}, Reading::Command));
  };
  EXPECT_EQ(reasons("C:\\Vendor\\Gone\\one.exe"), "absent parent-absent");
  std::vector<std::string> asked;
  computer.drives().onFind = [&](std::u16string_view path) { asked.push_back(utf8(path)); };
  EXPECT_EQ(reasons("C:\\Vendor\\Gone\\two.exe"), "absent parent-absent");
  EXPECT_EQ(asked, std::vector<std::string>());
}

TEST_F(TextLookOfDrivesTest, WhatTheSystemSaysOfAFileTellsWhyItIsMissing) {
  folder("C:\\Vendor");
  machine::Machine& computer = start();
  for (const auto& [error, codes] : std::vector<std::pair<LONG, std::string>>{
           {ERROR_FILE_NOT_FOUND, "absent"},
           {ERROR_INVALID_NAME, "absent"},
           {ERROR_BAD_PATHNAME, "absent"},
           {ERROR_FILENAME_EXCED_RANGE, "absent"},
           {ERROR_NOT_READY, "reparse-broken"},
           {ERROR_CANT_ACCESS_FILE, "reparse-broken"},
           {ERROR_CANT_RESOLVE_FILENAME, "reparse-broken"},
           {ERROR_NOT_A_REPARSE_POINT, "reparse-broken"},
           {ERROR_REPARSE_TAG_MISMATCH, "reparse-broken"},
           {ERROR_ACCESS_DENIED, "access-denied"},
           {ERROR_SHARING_VIOLATION, "access-denied"},
       }) {
    computer.faults().clear();
    computer.faults().fail(machine::ApiCall::GetFileAttributes, 1, error);
    EXPECT_EQ(reasonsOf("C:\\Vendor\\gone.exe"), codes) << error;
  }
}

TEST_F(TextLookOfDrivesTest, ADriveOfAnotherComputerIsAskedOnlyIfThatIsAllowed) {
  file("Z:\\there.exe");
  machine::Machine& computer = start();
  computer.drives().setType(u'z', DRIVE_REMOTE);
  std::vector<std::string> asked;
  computer.drives().onFind = [&](std::u16string_view path) { asked.push_back(utf8(path)); };
  EXPECT_EQ(reasonsOf("Z:\\there.exe"), "share");
  EXPECT_TRUE(std::ranges::none_of(
      asked, [](const std::string& path) { return path.starts_with("Z:\\there"); }));
  EXPECT_EQ(reasonsOf("Z:\\there.exe", Shares::Asked), "found");
  EXPECT_EQ(reasonsOf("Z:\\gone.exe", Shares::Asked), "absent-on-share");
}

}  // namespace
}  // namespace zelvreg
