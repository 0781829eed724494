#include "scan/Resolver.h"

#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

struct Cut {
  const char* text;
  const char* path;
};

class FilePathCuts : public ::testing::TestWithParam<Cut> {};

TEST_P(FilePathCuts, LeadToThePathThatIsTested) {
  std::string text = GetParam().text;
  EXPECT_EQ(FilePath(text), GetParam().path) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, FilePathCuts,
    ::testing::Values(
        // A quoted path with a switch: the folder as written, the name in lower case.
        Cut{"\"C:\\Program Files\\App\\Tool.EXE\" /silent", "C:\\Program Files\\App\\tool.exe"},
        Cut{"C:\\App\\tool.exe /silent", "C:\\App\\tool.exe"},
        Cut{"rundll32.exe C:\\App\\lib.dll,Entry", "C:\\App\\lib.dll"},
        Cut{"C:\\App\\README", "C:\\App\\README"}, Cut{"C:\\App\\README /x", "C:\\App\\README /x"},
        Cut{"C:\\App\\book.html", "C:\\App\\book.htm"},
        Cut{"C:\\App\\icons.dll,-12", "C:\\App\\icons.dll"},
        Cut{"C:\\App\\tool.exe/x", "C:\\App\\tool.exe"},
        Cut{"C:\\App\\tool.v2.exe", "C:\\App\\tool.v2.exe"},
        // The last dot decides, also one in an argument.
        Cut{"C:\\App\\tool.exe a.b", "C:\\App\\tool.exe a.b"},
        // A backslash in an argument takes the folder with it.
        Cut{"C:\\App\\tool.exe \\x.y", "C:\\App\\tool.exe \\x.y"}, Cut{"C:\\App\\", "C:\\App\\."},
        Cut{"C:\\App\\.Hidden", "C:\\App\\.hid"}, Cut{"C:\\App\\..a", "C:\\App\\.a"},
        Cut{"C:\\App\\a.", "C:\\App\\a."}, Cut{"C:\\App\\a.c x", "C:\\App\\a.c"}, Cut{"", "."},
        Cut{"tool.exe", "tool.exe"},
        // A drive root at the very front cannot be cut before.
        Cut{":\\a.exe", ":\\a.exe"}, Cut{"\"unclosed.exe", "unclosed.exe"}, Cut{"a\"b\"c", "b"},
        Cut{"a\"\"c", "."}));

TEST(FilePathTest, LeavesTheTextWithoutItsQuotes) {
  std::string text = "\"C:\\A b\\c.exe\" /x";
  FilePath(text);
  EXPECT_EQ(text, "C:\\A b\\c.exe");
}

class ResolverTest : public fixture::ComputerFixture {
 protected:
  std::string resolved(std::string path) const { return GetPath(form, path); }
  // With the NUL that belongs to a resolved path.
  static std::string ended(const std::string& text) { return text + '\0'; }
};

TEST_F(ResolverTest, TheSystemFolderOf64BitWindowsIsReachedByItsOtherName) {
  EXPECT_EQ(resolved("C:\\Windows\\System32\\X.dll"), ended("c:\\windows\\Sysnative\\x.dll"));
}

TEST_F(ResolverTest, A32BitSystemKeepsTheText) {
  form.Is64BitOS = false;
  EXPECT_EQ(resolved("C:\\Windows\\System32\\X.dll"), ended("C:\\Windows\\System32\\X.dll"));
}

TEST_F(ResolverTest, ProgramFoldersAreThoseOfThe64BitSystem) {
  EXPECT_EQ(resolved("%ProgramFiles%\\A\\b.exe"), ended("C:\\Program Files\\a\\b.exe"));
  EXPECT_EQ(resolved("C:\\Program Files\\A\\b.exe"), ended("C:\\Program Files\\a\\b.exe"));
  EXPECT_EQ(resolved("%CommonProgramFiles%\\b.exe"),
            ended("C:\\Program Files\\Common Files\\b.exe"));
}

TEST_F(ResolverTest, The32BitProgramFolderStays) {
  EXPECT_EQ(resolved("%ProgramFiles(x86)%\\A.exe"), ended("C:\\Program Files (x86)\\a.exe"));
  EXPECT_EQ(resolved("C:\\Program Files (x86)\\A.exe"), ended("c:\\program files (x86)\\a.exe"));
}

TEST_F(ResolverTest, ATextThatHoldsThe32BitFolderKeepsItsVariableToo) {
  // The variable then expands as for the 32-bit process.
  EXPECT_EQ(resolved("%ProgramFiles%;C:\\Program Files (x86)"),
            ended("C:\\Program Files (x86);c:\\program files (x86)"));
}

TEST_F(ResolverTest, AnotherDriveIsNotRewritten) {
  EXPECT_EQ(resolved("D:\\Program Files\\A.exe"), ended("d:\\program files\\a.exe"));
}

TEST_F(ResolverTest, AnUnknownVariableStays) {
  EXPECT_EQ(resolved("%NoSuchVariable%\\a"), ended("%nosuchvariable%\\a"));
}

TEST_F(ResolverTest, AVeryLongPathIsExpandedWhole) {
  const std::string tail(2000, 'x');
  EXPECT_EQ(resolved("%SystemDrive%\\" + tail), ended("C:\\" + tail));
}

TEST_F(ResolverTest, ThePathItselfIsRewrittenButNotExpanded) {
  std::string path = "%ProgramFiles%\\A";
  GetPath(form, path);
  EXPECT_EQ(path, "%ProgramW6432%\\a");
}

TEST_F(ResolverTest, AResolvedPathCanBeResolvedAgain) {
  std::string path = "C:\\Windows\\System32\\x.dll";
  std::string once = GetPath(form, path);
  EXPECT_EQ(GetPath(form, once), ended("c:\\windows\\sysnative\\x.dll"));
}

TEST_F(ResolverTest, AFileExistsForATextThatEndsInANul) {
  makeFile("C:\\ResolverTest\\there.txt");
  EXPECT_TRUE(FileExists(form, ended("C:\\ResolverTest\\there.txt")));
  EXPECT_FALSE(FileExists(form, ended("C:\\ResolverTest\\gone.txt")));
  EXPECT_TRUE(FolderExists(form, ended("C:\\ResolverTest")));
}

TEST_F(ResolverTest, WhatNamesTheSystemFolderIsNeverGone) {
  EXPECT_TRUE(FileExists(form, "C:\\Windows\\System32\\nothing.dll"));
  EXPECT_TRUE(FileExists(form, "no path at all, but SYSTEM32"));
}

TEST_F(ResolverTest, AMissingFileOfTheSystemFolderIsSeenThroughTheResolver) {
  std::string path = "C:\\Windows\\System32\\nothing.dll";
  EXPECT_FALSE(FileExists(form, GetPath(form, path)));
}

TEST_F(ResolverTest, AScanAsksForAPathOnce) {
  const std::string path = "C:\\ResolverTest\\later.txt";
  form.safeguards.touches = false;
  {
    const MemoryOfScan memory(form);
    EXPECT_FALSE(FileExists(form, path));
    makeFile(path);
    EXPECT_FALSE(FileExists(form, ended(path)));
    EXPECT_FALSE(FolderExists(form, path));
    // Every question counts, whoever answers it.
    EXPECT_EQ(form.filesAsked, 2U);
    // A folder may tell names apart by their case.
    EXPECT_TRUE(FileExists(form, "C:\\ResolverTest\\LATER.txt"));
  }
  EXPECT_TRUE(FileExists(form, path));
}

TEST_F(ResolverTest, AScanForgetsWhenItKnowsTooMuch) {
  const std::string path = "C:\\ResolverTest\\soon.txt";
  form.safeguards.touches = false;
  const MemoryOfScan memory(form);
  EXPECT_FALSE(FileExists(form, path));
  makeFile(path);
  for (int number = 0; number < 32768; ++number) {
    FileExists(form, "C:\\ResolverTest\\Missing\\" + std::to_string(number));
  }
  EXPECT_TRUE(FileExists(form, path));
}

TEST_F(ResolverTest, AScanThatTouchesAsksEveryTime) {
  const std::string path = "C:\\ResolverTest\\touched.txt";
  form.safeguards.touches = true;
  const MemoryOfScan memory(form);
  EXPECT_FALSE(FileExists(form, path));
  makeFile(path);
  EXPECT_TRUE(FileExists(form, path));
}

TEST_F(ResolverTest, ARememberedPathIsRewrittenAsAtTheFirstTime) {
  form.safeguards.touches = false;
  const MemoryOfScan memory(form);
  for (int time = 0; time < 2; ++time) {
    std::string path = "C:\\Windows\\System32\\%None%\\X.dll";
    EXPECT_EQ(GetPath(form, path), ended("c:\\windows\\Sysnative\\%none%\\x.dll"));
    EXPECT_EQ(path, "c:\\windows\\Sysnative\\%none%\\x.dll");
  }
}

class FirewallPathTest : public ResolverTest {
 protected:
  std::string pathOf(std::string rule) {
    pth(form, rule);
    return form.FirewallPath;
  }
};

TEST_F(FirewallPathTest, TheProgramIsBetweenItsMarkerAndTheNextBar) {
  EXPECT_EQ(pathOf("v2.10|Action=Allow|App=C:\\Tools\\A.exe|Name=x|"), "c:\\tools\\a.exe");
}

TEST_F(FirewallPathTest, AProgramWithoutAFolderIsNoPath) {
  form.FirewallPath = "c:\\before";
  EXPECT_EQ(pathOf("v2.10|App=svchost.exe|"), "");
}

TEST_F(FirewallPathTest, WithoutTheMarkerThePathIsReadFromTheFifthPosition) {
  EXPECT_EQ(pathOf("abcdc:\\x|rest"), "c:\\x");
}

TEST_F(FirewallPathTest, WithoutABarAfterThePathOfTheRuleBeforeStays) {
  form.FirewallPath = "c:\\before";
  EXPECT_EQ(pathOf("v2|app=c:\\tools\\a.exe"), "c:\\before");
  EXPECT_EQ(pathOf(""), "c:\\before");
}

TEST_F(FirewallPathTest, TheRuleIsLeftInLowerCase) {
  std::string rule = "V2|App=C:\\A|";
  pth(form, rule);
  EXPECT_EQ(rule, "v2|app=c:\\a|");
}

TEST(IconKind, FollowsFromThePathKind) {
  EXPECT_EQ(getIco(0), 0);
  EXPECT_EQ(getIco(1), 2);
  EXPECT_EQ(getIco(2), 2);
  EXPECT_EQ(getIco(3), 3);
  EXPECT_EQ(getIco(4), 3);
  EXPECT_EQ(getIco(5), 0);
}

}  // namespace
}  // namespace zelvreg
