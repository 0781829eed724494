#include "search/DeadPath.h"

#include "form/Form42.h"
#include "search/SearchFixture.h"

namespace zelvreg::searching {
namespace {

struct Line {
  const char* commandLine;
  const char* program;
};

class ProgramOf : public ::testing::TestWithParam<Line> {};

TEST_P(ProgramOf, EndsWhereTheProgramsNameDoes) {
  EXPECT_EQ(programOf(GetParam().commandLine), GetParam().program);
}

// In lower case and without quotation marks, as they come to the cut.
INSTANTIATE_TEST_SUITE_P(
    RealLines, ProgramOf,
    ::testing::Values(
        // A folder as an argument, with a doubled backslash on the way.
        Line{"c:\\program files\\common files\\mcafee\\systemcore\\\\dainstall.exe -is c:\\program "
             "files\\common files\\mcafee\\systemcore\\",
             "c:\\program files\\common files\\mcafee\\systemcore\\\\dainstall.exe"},
        // Folders with dots and blanks, and a second file after a semicolon.
        Line{"c:\\windows\\microsoft.net\\framework\\v3.0\\windows communication "
             "foundation\\servicemodelevents.dll;c:\\windows\\system32\\icardres.dll",
             "c:\\windows\\microsoft.net\\framework\\v3.0\\windows communication "
             "foundation\\servicemodelevents.dll"},
        Line{"c:\\windows\\microsoft.net\\framework\\v4.0.30319\\servicemodelevents.dll;"
             "icardres.dll.mui",
             "c:\\windows\\microsoft.net\\framework\\v4.0.30319\\servicemodelevents.dll"},
        // Dots in the arguments, some with blanks after them.
        Line{"c:\\windows\\system32\\mrt.exe /ehb /servicefailure camp=4.12.17007.18022;engine="
             "1.1.14700.5;avsig=1.265.91.0 /startservice /defender",
             "c:\\windows\\system32\\mrt.exe"},
        Line{"c:\\progra~1\\micros~2\\office14\\winword.exe ^.docx",
             "c:\\progra~1\\micros~2\\office14\\winword.exe"},
        Line{"c:\\program files\\windows nt\\accessories\\imagevue\\wangimg.exe /pt %1 %2 %3 %4",
             "c:\\program files\\windows nt\\accessories\\imagevue\\wangimg.exe"},
        Line{"c:\\windows\\system32\\msiexec.exe /i %1", "c:\\windows\\system32\\msiexec.exe"},
        // Texts that are no command lines stay whole.
        Line{"c:\\program files\\plus!\\microsoft internet;",
             "c:\\program files\\plus!\\microsoft internet;"},
        Line{"c:\\users\\informant\\appdata\\local\\temp",
             "c:\\users\\informant\\appdata\\local\\temp"}));

INSTANTIATE_TEST_SUITE_P(
    Cuts, ProgramOf,
    ::testing::Values(Line{"c:\\a.exe", "c:\\a.exe"}, Line{"c:\\a.exe/s", "c:\\a.exe"},
                      // An extension that goes on is another one, and may be a folder's.
                      Line{"c:\\a.exes\\b.exe /s", "c:\\a.exes\\b.exe"},
                      Line{"c:\\a.exe.bak", "c:\\a.exe.bak"},
                      Line{"c:\\a.com\\b.exe /s", "c:\\a.com\\b.exe"},
                      // Without a program the extension at the last dot ends it.
                      Line{"c:\\docs\\a b.txt -x", "c:\\docs\\a b.txt"},
                      Line{"c:\\docs\\a.txt b.txt", "c:\\docs\\a.txt b.txt"},
                      Line{"c:\\docs\\a.txt", "c:\\docs\\a.txt"},
                      Line{"c:\\docs\\report 2.0 final", "c:\\docs\\report 2.0 final"},
                      Line{"c:\\docs\\dr. watson", "c:\\docs\\dr. watson"},
                      Line{"c:\\my.docs\\a b", "c:\\my.docs\\a b"},
                      Line{"c:\\no dot at all", "c:\\no dot at all"}, Line{"", ""}));

TEST(DeadPath, ATestablePathHasADriveLetterAndNoMarkOfAMenuNearItsEnd) {
  EXPECT_TRUE(isTestablePath("c:\\a"));
  EXPECT_FALSE(isTestablePath("\\\\c:\\a"));
  EXPECT_FALSE(isTestablePath("c"));
  EXPECT_FALSE(isTestablePath(""));
  EXPECT_TRUE(isTestablePath("c:\\a^bcde"));
  EXPECT_TRUE(isTestablePath("c:\\a^bcd" + std::string("e")));
  EXPECT_FALSE(isTestablePath("c:\\a^bcd"));
  EXPECT_FALSE(isTestablePath("c:\\a^bc"));
  EXPECT_FALSE(isTestablePath("c:\\a^b"));
  EXPECT_TRUE(isTestablePath("c:\\a^"));
  // Too short for a mark farther from the end.
  EXPECT_TRUE(isTestablePath("c:"));
  EXPECT_FALSE(isTestablePath("^:"));
}

TEST(DeadPath, PointersAreSkipped) {
  EXPECT_FALSE(isTestablePath("c:\\a.cur"));
  EXPECT_FALSE(isTestablePath("c:\\a.ani"));
  EXPECT_TRUE(isTestablePath("c:\\a.cua"));
}

TEST(DeadPath, RemovableRemoteAndOpticalDrivesComeAndGo) {
  std::vector<unsigned> kinds;
  for (unsigned kind = 0; kind <= 6; ++kind) {
    if (comesAndGoes(kind)) {
      kinds.push_back(kind);
    }
  }
  EXPECT_EQ(kinds, (std::vector<unsigned>{2, 4, 5}));
}

TEST(DeadPath, ATextIsTakenFromItsFirstPairOfMarksUpToItsComma) {
  EXPECT_EQ(betweenFirstQuotes("\"a\" \"b\""), "a");
  EXPECT_EQ(betweenFirstQuotes("\"a"), "a");
  EXPECT_EQ(betweenFirstQuotes("a \"b\""), "a \"b\"");
  EXPECT_EQ(withoutQuotesAndIndex("\"a,1\" b"), "a");
  EXPECT_EQ(withoutQuotesAndIndex("a,\"b\""), "a");
  EXPECT_EQ(withoutQuotesAndIndex("a \"b\""), "a b");
}

class DeadPathOnDisk : public SearchFixture {
 protected:
  // What a search finds of one text: the path, or nothing.
  std::string pathFoundIn(const std::string& text) {
    setText(userKey, "Text", text);
    const Texts all = locations();
    return all.empty() ? "" : all.front();
  }
};

TEST_F(DeadPathOnDisk, AFileOrFolderThatIsThereIsNotFound) {
  makeFolder("C:\\SearchTest\\Folder");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\There.exe"), "");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Folder"), "");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\There.exe /run"), "");
  EXPECT_EQ(pathFoundIn("\"C:\\SearchTest\\There.exe\" C:\\SearchTest\\Gone.exe"), "");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\There.exe,-1"), "");
}

TEST_F(DeadPathOnDisk, OneThatIsGoneIsFoundInLowerCase) {
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone.exe"), gone);
  EXPECT_EQ(pathFoundIn("  C:\\SearchTest\\Gone.exe  "), gone);
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone.exe /run"), gone);
  EXPECT_EQ(pathFoundIn("\"C:\\SearchTest\\Gone.exe\" C:\\SearchTest\\there.exe"), gone);
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone.exe,-1"), gone);
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone"), "c:\\searchtest\\gone");
}

TEST_F(DeadPathOnDisk, VariablesAreExpanded) {
  EXPECT_EQ(pathFoundIn("%SystemDrive%\\SearchTest\\Gone.exe %1:\\"), gone);
}

TEST_F(DeadPathOnDisk, EachReasonToPassATextOverCounts) {
  for (const char* text :
       {"xC:\\SearchTest\\Gone.exe", "C:\\SearchTest\\Gone^Fil", "C:\\SearchTest\\Gone^Fi",
        "C:\\SearchTest\\Gone^F", "C:\\SearchTest\\Gone.cur", "C:\\SearchTest\\Gone.ani",
        "C:\\SearchTest\\{A}\\Gone.exe", "SearchTest\\Gone.exe", ""}) {
    EXPECT_EQ(pathFoundIn(text), "") << text;
  }
  for (const char* text : {"C:\\SearchTest\\Gone^File", "C:\\SearchTest\\Gone^",
                           "C:\\SearchTest\\Gone.cua", "C:\\SearchTest\\{A\\Gone"}) {
    EXPECT_NE(pathFoundIn(text), "") << text;
  }
}

TEST_F(DeadPathOnDisk, ATextWithoutADriveLetterIsNeverDead) {
  EXPECT_FALSE(isDeadPath(form, "SearchTest\\gone.exe"));
  EXPECT_TRUE(isDeadPath(form, gone));
}

// The true system folder has another name for this process, which the rule for it does not know.
TEST_F(DeadPathOnDisk, AFileOfTheSystemFolderCanBeGoneOn64BitWindows) {
  EXPECT_EQ(pathFoundIn("C:\\Windows\\System32\\SearchTestGone.exe"),
            "c:\\windows\\sysnative\\searchtestgone.exe");
}

TEST_F(DeadPathOnDisk, AMarkThatIsNotAskedForDecides) {
  form.cboFind.setText("\\");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone.exe"), gone);
  form.cboFind.setText("/");
  EXPECT_EQ(pathFoundIn("C:\\SearchTest\\Gone.exe"), "");
}

}  // namespace
}  // namespace zelvreg::searching
