// The values that are directly under the keys of Software.
#include "form/Form42.h"
#include "keys/Deletion.h"
#include "scanners/ApplicationPathsFixture.h"

namespace zelvreg {
namespace {

using fixture::Rows;

enum class Place { Machine, Machine32Bit, User };

class ApplicationPathsSoftwareTest : public fixture::ApplicationPathsFixture,
                                     public ::testing::WithParamInterface<Place> {
 protected:
  [[nodiscard]] fixture::Texts finding(const std::string& name) const {
    return named(name, root, reported);
  }

  const bool isOfUser = GetParam() == Place::User;
  const bool isOf32Bit = GetParam() == Place::Machine32Bit;
  const std::string key = isOfUser ? ownOfUser : isOf32Bit ? own32 : own;
  const std::string root = isOfUser ? user : machine;
  const std::string reported = isOf32Bit ? own32Reported : ownReported;
};

std::string placeName(const ::testing::TestParamInfo<Place>& place) {
  switch (place.param) {
    case Place::Machine:
      return "Machine";
    case Place::Machine32Bit:
      return "Machine32Bit";
    default:
      return "User";
  }
}
INSTANTIATE_TEST_SUITE_P(Places, ApplicationPathsSoftwareTest,
                         ::testing::Values(Place::Machine, Place::Machine32Bit, Place::User),
                         placeName);

TEST_P(ApplicationPathsSoftwareTest, AValueNamingAProgramThatIsGoneIsReportedByItsName) {
  setText(key, "Program", gone + " /silent");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding("Program")});
}

TEST_P(ApplicationPathsSoftwareTest, WhatIsThereIsNotReported) {
  setText(key, "Arguments", there + " /silent");
  setText(key, "After a launcher", "rundll32.exe " + there + ",Entry");
  setText(key, "Folder", folder);
  setText(key, "Folder with backslash", folder + "\\");
  setText(key, "Plain", there);
  setText(key, "Quoted", "\"" + there + "\" /silent");
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsSoftwareTest, DataWithoutColonAndBackslashIsNeverTested) {
  setText(key, "Bare name", "gone.exe");
  setText(key, "Drive alone", "C:");
  setText(key, "Empty", "");
  setText(key, "Slashes", "C:/ApplicationPathsTest/Gone.exe");
  setText(key, "Variable", "%SystemDrive%\\ApplicationPathsTest\\Gone.exe", REG_EXPAND_SZ);
  setNumber(key, "Z number", 3);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsSoftwareTest, DataThatHoldsThemIsTestedEvenIfItIsNoPath) {
  setText(key, "Note", "see also:\\ the manual");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding("Note")});
}

TEST_P(ApplicationPathsSoftwareTest, AMissingFileOfTheSystemFolderIsReported) {
  setText(key, "Program", "C:\\Windows\\System32\\application paths test.exe");
  Command5(form);
  EXPECT_EQ(findings(), Rows{finding("Program")});
}

TEST_P(ApplicationPathsSoftwareTest, EachValueIsTestedAndItsNameReportedAsItIs) {
  setText(key, " a ", gone);
  setText(key, "b", there);
  setText(key, "c", gone);
  Command5(form);
  EXPECT_EQ(findings(), (Rows{finding(" a "), finding("c")}));
}

TEST_P(ApplicationPathsSoftwareTest, NeitherTheDefaultValueNorDeeperKeysAreLookedAt) {
  setText(key, "", gone);
  setText(key + "\\Deeper", "Program", gone);
  Command5(form);
  EXPECT_EQ(findings(), Rows{});
}

TEST_P(ApplicationPathsSoftwareTest, NoAccessIsGranted) {
  setText(key, "Program", gone);
  Command5(form);
  EXPECT_FALSE(isGranted(key));
}

// Values of the keys that contain the others.
class ApplicationPathsRootsTest : public fixture::ApplicationPathsFixture {
 protected:
  static constexpr const char* value = "ApplicationPathsTest";

  ApplicationPathsRootsTest() {
    setText(machine + "\\SOFTWARE", value, gone);
    setText(machine + "\\SOFTWARE\\Wow6432Node", value, gone);
    setText(user + "\\Software", value, gone);
  }
  ~ApplicationPathsRootsTest() override {
    fDeleteValue("HKLM", "Software", value);
    fDeleteValue("HKLM", "Software\\Wow6432Node", value);
    fDeleteValue("HKCU", "Software", value);
  }

  // The findings of that value, wherever.
  [[nodiscard]] Rows rootFindings() const {
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      if (form.View2.text(row, locationColumn) == value) {
        rows.push_back(fixture::findingOf(form, row));
      }
    }
    return rows;
  }
};

TEST_F(ApplicationPathsRootsTest, ValuesOfSoftwareItselfAreNotLookedAtAfterItsLastKey) {
  makeKey(own);
  makeKey(own32);
  makeKey(ownOfUser);
  Command5(form);
  // The 32-bit one is a key of Software like any other.
  EXPECT_EQ(rootFindings(), Rows{named(value, machine, "Software\\Wow6432Node")});
}

TEST_F(ApplicationPathsRootsTest, AnEmptyListOfKeysHasTheValuesOfSoftwareItselfLookedAt) {
  form.Text2.setText("2");
  Command5(form);
  EXPECT_EQ(rootFindings(), (Rows{named(value, machine, "Software\\"),
                                  named(value, machine, "Software\\Wow6432Node\\"),
                                  named(value, user, "Software\\")}));
}

}  // namespace
}  // namespace zelvreg
