// Servers of the machine's classes, and toolbox bitmaps: both read directly and cut in one way.
#include <algorithm>

#include "form/Form42.h"
#include "scanners/KeptScannersFixture.h"
#include "text/Wide.h"

namespace zelvreg::serverPrograms {
namespace {

struct Scanner {
  std::string name;
  void (*scan)(Form42& form);
  std::string keyPrefix;  // of a class in a finding
  std::string kindCode;
  std::string rootName;
  std::int64_t countsEach;        // how much a finding adds to the count
  std::vector<std::string> keys;  // in the order in which they are asked
};

const Scanner servers{"Servers",
                      Command18,
                      "SOFTWARE\\Classes\\CLSID\\",
                      "8",
                      "",
                      1,
                      {"\\InprocServer32", "\\LocalServer32", "\\InprocServer", "\\LocalServer"}};
const Scanner bitmaps{"Bitmaps",
                      Command19,
                      "clsid\\",
                      "10",
                      "HKEY_CLASSES_ROOT",
                      2,
                      {"\\toolboxbitmap32", "\\toolboxbitmap"}};

class ServerProgramsDirectTest : public ServerProgramsFixture,
                                 public ::testing::WithParamInterface<Scanner> {
 protected:
  void set(const std::string& name, std::size_t keyNumber, const std::string& text) {
    setText(classKeys + name + scanner.keys[keyNumber], "", text);
  }

  Texts finding(const std::string& name, std::size_t keyNumber, const std::string& program) {
    const std::string key = scanner.keyPrefix + name + scanner.keys[keyNumber];
    const std::string subKey = scanner.rootName.empty() ? "" : key;
    return {key, program, scanner.kindCode, scanner.rootName, subKey, "g"};
  }

  const Scanner& scanner = GetParam();
};

INSTANTIATE_TEST_SUITE_P(Scanners, ServerProgramsDirectTest, ::testing::Values(servers, bitmaps),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(ServerProgramsDirectTest, OnlyARowWithItsFieldsIsFollowed) {
  set(classA, 0, gone);
  set(classB, 0, gone);
  scanner.scan(form);
  ASSERT_GE(form.View2.count(), 2U);
  EXPECT_EQ(form.View2.rowInView(), scanner.rootName.empty() ? 0U : form.View2.count());
}

TEST_P(ServerProgramsDirectTest, AProgramThatIsGoneIsReportedUnderWhicheverKeyNamesIt) {
  for (std::size_t number = 0; number < scanner.keys.size(); ++number) {
    SCOPED_TRACE(scanner.keys[number]);
    removeClasses();
    form.View2.clear();
    form.Text1.setText("0");
    set(classA, number, gone);
    set(classB, number, there);
    scanner.scan(form);
    EXPECT_EQ(findings(), (std::vector<Texts>{finding(classA, number, gone)}));
    EXPECT_FALSE(form.View2.isChecked(1));
  }
}

TEST_P(ServerProgramsDirectTest, TheFirstKeyThatIsNotBlankDecides) {
  const std::size_t count = scanner.keys.size();
  for (std::size_t first = 0; first < count; ++first) {
    SCOPED_TRACE(scanner.keys[first]);
    form.View2.clear();
    form.Text1.setText("0");
    for (std::size_t number = 0; number < count; ++number) {
      set(classA, number, number < first ? "  " : folder + "\\" + std::to_string(number) + ".exe");
    }
    scanner.scan(form);
    EXPECT_EQ(findings(), (std::vector<Texts>{finding(
                              classA, first, folder + "\\" + std::to_string(first) + ".exe")}));
  }
}

TEST_P(ServerProgramsDirectTest, AKeyThatNamesNoProgramHidesThoseAfterIt) {
  set(classA, 0, folder + "\\Gone.dll");
  set(classA, 1, gone);
  scanner.scan(form);
  EXPECT_TRUE(findings().empty());
}

TEST_P(ServerProgramsDirectTest, ATextIsCutAndMustBeAProgramOnADrive) {
  struct Case {
    std::string text;
    std::string reported;  // empty if it is not
  };
  makeFile(folder + "\\" + userName() + ".exe");
  makeFolder(folder + "\\Folder.exe");
  const std::vector<Case> cases{
      {gone + " /automation", gone},
      {gone + ",101", gone},
      {gone + ".bak", gone},
      {folder + "\\GONE.EXE", folder + "\\GONE.EXE"},
      {folder + "\\Folder.exe", folder + "\\Folder.exe"},
      {folder + "\\%NoSuchVariable%.exe", folder + "\\%NoSuchVariable%.exe"},
      {"C:\\Windows\\System32\\server programs.exe", "C:\\Windows\\System32\\server programs.exe"},
      {"\":\\Gone.exe\" \"/automation.exe\"", ":\\Gone.exe"},
      {" :\\Gone.exe", ":\\Gone.exe"},
      {there, ""},
      {there + ",101", ""},
      {"C:/ServerProgramsTest/There.exe", ""},
      {folder + "\\%USERNAME%.exe", ""},
      {folder + "\\*.exe", ""},
      {"\"" + gone + "\"", ""},
      {" " + gone, ""},
      {"%SystemDrive%\\ServerProgramsTest\\Gone.exe", ""},
      {"Gone.exe", ""},
      {"\\ServerProgramsTest\\Gone.exe", ""},
      {folder + "\\Gone.bmp", ""},
      {folder + "\\exe\\Gone.exe", ""},
      {folder + "\\DLL\\Gone.exe", ""},
      {folder + "\\ovl\\Gone.exe", ""},
      {folder + "\\ocx\\Gone.exe", ""},
      {"", ""},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.text);
    form.View2.clear();
    form.Text1.setText("0");
    set(classA, 0, tested.text);
    scanner.scan(form);
    std::vector<Texts> expected;
    if (!tested.reported.empty()) {
      expected.push_back(finding(classA, 0, tested.reported));
    }
    EXPECT_EQ(findings(), expected);
  }
}

TEST_P(ServerProgramsDirectTest, TheOtherViewPlaysNoPart) {
  makeKey(classKeys + classA);
  for (const std::string& key : scanner.keys) {
    setText(classKeys32 + classA + key, "", gone);
  }
  set(classB, 0, there);
  setText(classKeys32 + classB + scanner.keys[0], "", gone);
  scanner.scan(form);
  EXPECT_TRUE(findings().empty());
}

TEST_P(ServerProgramsDirectTest, AProgramThatIsThereLosesAllAttributesButArchive) {
  SetFileAttributesW(Wide(there).get(),
                     FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  set(classA, 0, there + ",101");
  scanner.scan(form);
  EXPECT_TRUE(findings().empty());
  EXPECT_EQ(GetFileAttributesW(Wide(there).get()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_P(ServerProgramsDirectTest, TheCountContinuesAndTheListedTextsAreTheBadValues) {
  form.List1.add("left over");
  form.List2.add("left over");
  form.View2.add("before");
  form.Text1.setText("1");
  form.categoryFound = 40;
  set(classA, 0, gone);
  set(classB, 0, folder + "\\Other.exe");
  scanner.scan(form);
  const Texts listed = fixture::entriesOf(form.List2);
  EXPECT_EQ(listed.size() + 1, form.View2.count());
  EXPECT_EQ(std::ranges::count(listed, gone), 1);
  EXPECT_EQ(std::ranges::count(listed, "left over"), 0);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), "left over"), 0);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(classA, 0, gone),
                                            finding(classB, 0, folder + "\\Other.exe")}));
  EXPECT_EQ(form.categoryFound, 40 + scanner.countsEach * static_cast<std::int64_t>(listed.size()));
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"before", "", "", "", "", ""}));
  EXPECT_EQ(form.Text1.text(), rowCount());
}

TEST_P(ServerProgramsDirectTest, WithNothingFoundTheSecondLoopStillTurnsOnce) {
  form.View2.add("before");
  scanner.scan(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.categoryFound, 1);
  // No scanner has said that there is a row, so the turn takes it for its own.
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"before", "", scanner.kindCode, "", "", "g"}));
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_P(ServerProgramsDirectTest, AStopBeforeItLeavesNothingToTest) {
  set(classA, 0, gone);
  form.Text2.setText("2");
  scanner.scan(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.Label3.caption.get(), "Checking    1 / 0");
}

class ServerProgramsTogetherTest : public ServerProgramsFixture {};

TEST_F(ServerProgramsTogetherTest, AMachineWithoutABadClassCountsTwo) {
  Command18(form);
  Command19(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.categoryFound, 2);
}

TEST_F(ServerProgramsTogetherTest, OnlyTheBitmapsShowTheCountInTheCellOfTheClasses) {
  Texts expected = cells();
  setText(classKeys + classA + "\\InprocServer32", "", gone);
  Command18(form);
  EXPECT_EQ(cells(), expected);
  form.categoryFound = 5;
  Command19(form);
  expected[6] = "6";
  EXPECT_EQ(cells(), expected);
}

}  // namespace
}  // namespace zelvreg::serverPrograms
