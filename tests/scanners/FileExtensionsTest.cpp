#include "scanners/FileExtensions.h"

#include <functional>

#include "form/Form42.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scanners/ScannerFixture.h"

namespace zelvreg {
namespace {

using fixture::Texts;

const std::string extensionsKey =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";
const std::string extensionsNtKey =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Explorer\\FileExts";
using fixture::countKey;

class FileExtensionsTest : public fixture::ScannerFixture {
 protected:
  FileExtensionsTest() {
    emptyKey(extensionsKey);
    removeKey(extensionsNtKey);
    emptyKey(countKey);
    for (const char* category : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}) {
      form.View1.add(category);
    }
  }
  ~FileExtensionsTest() override { removeKey(extensionsNtKey); }

  static void makeExtension(const std::string& name) { makeKey(extensionsKey + "\\" + name); }
  static void offerProgram(const std::string& name, const std::string& program) {
    setText(extensionsKey + "\\" + name + "\\OpenWithProgids", program, "");
  }

  static Texts finding(const std::string& name) {
    return {"Bad File Reference",
            name,
            "122",
            "HKEY_CURRENT_USER",
            "Software\\Microsoft\\windows\\currentversion\\Explorer\\FileExts\\" + name +
                "\\OpenWithProgids",
            "m"};
  }

  Texts noteWhileScanning(const std::function<std::string()>& note) {
    return noteDuring(fileext, note);
  }

  std::string cell() const { return form.View1.text(12, problemsColumn); }
};

TEST_F(FileExtensionsTest, AnExtensionForWhichNoProgramIsOfferedIsReported) {
  makeKey(extensionsKey + "\\.Gone\\UserChoice");
  setText(extensionsKey + "\\.Gone\\OpenWithList", "a", "program.exe");
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".Gone")}));
  EXPECT_FALSE(form.View2.isChecked(1));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_EQ(cell(), "1");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "1");
}

TEST_F(FileExtensionsTest, AnEmptyListOfProgramsIsAsGoodAsNone) {
  makeKey(extensionsKey + "\\.a\\OpenWithProgids");
  setText(extensionsKey + "\\.b\\OpenWithProgids", "", "program");
  makeKey(extensionsKey + "\\.c\\OpenWithProgids\\program");
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".a"), finding(".b"), finding(".c")}));
}

TEST_F(FileExtensionsTest, AnyProgramWillDo) {
  offerProgram(".a", "no such program");
  setBytes(extensionsKey + "\\.b\\OpenWithProgids", " ", REG_NONE, "");
  form.List7.add("stale");
  fileext(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(fixture::entriesOf(form.List7), (Texts{" "}));
}

TEST_F(FileExtensionsTest, TheProgramsOfTheExtensionBeforeDoNotCount) {
  offerProgram(".a", "program");
  makeExtension(".b");
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".b")}));
}

TEST_F(FileExtensionsTest, OnlyNamesThatBeginWithADotAreExtensions) {
  for (const char* name : {".", "x", "x.y", "..", ". y", ".z"}) {
    makeExtension(name);
  }
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(". y"), finding(".."), finding(".z")}));
}

TEST_F(FileExtensionsTest, ANameIsReadAndReportedWithoutTheBlanksAroundIt) {
  makeExtension(" .a ");
  offerProgram(".a", "program");
  makeExtension(" .b ");
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".b")}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{".b"}));
}

TEST_F(FileExtensionsTest, WithoutTheListTheOtherSpellingIsWalkedAndReadAsIfItWereTheFirst) {
  removeKey(extensionsKey);
  setText(extensionsNtKey + "\\.a\\OpenWithProgids", "program", "");
  makeKey(extensionsNtKey + "\\.b");
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".a"), finding(".b")}));
}

TEST_F(FileExtensionsTest, AnEmptyListIsNotReplacedByTheOtherSpelling) {
  makeKey(extensionsNtKey + "\\.a");
  fileext(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileExtensionsTest, WithNeitherListOneTurnIsTakenAndTheCellShowsZero) {
  removeKey(extensionsKey);
  form.View2.add("rule");
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{""}));
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(storedText(countKey, "reg-count"), "(none)");
}

TEST_F(FileExtensionsTest, EachFindingGetsItsOwnRowAndIsListed) {
  form.View2.add("rule");
  form.List1.add(".stale");
  form.List2.add(".stale");
  makeExtension(".a");
  makeExtension(".b");
  fileext(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{{"rule", "", "", "", "", ""}, finding(".a"), finding(".b")}));
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{".a", ".b"}));
  EXPECT_EQ(fixture::entriesOf(form.List2), (Texts{".a", ".b"}));
  EXPECT_EQ(form.View2.rowInView(), 3U);
  EXPECT_EQ(cell(), "2");
  EXPECT_EQ(form.Text1.text(), "3");
}

TEST_F(FileExtensionsTest, TheCellStaysEmptyUntilSomethingIsFound) {
  offerProgram(".a", "program");
  makeExtension(".b");
  offerProgram(".c", "program");
  // Four times for the enumeration, then before each turn.
  EXPECT_EQ(noteWhileScanning([this] { return cell(); }), (Texts{"", "", "", "", "", "", "1"}));
}

TEST_F(FileExtensionsTest, EachFindingIsKeptInTheRunningTotal) {
  form.totalFound = 40;
  makeExtension(".a");
  makeExtension(".b");
  EXPECT_EQ(noteWhileScanning([] { return storedText(countKey, "reg-count"); }),
            (Texts{"(none)", "(none)", "(none)", "(none)", "41"}));
  EXPECT_EQ(storedText(countKey, "reg-count"), "42");
  EXPECT_EQ(form.totalFound, 42);
}

TEST_F(FileExtensionsTest, ACancelOfTheListEndsItThereAndTheWalkAfterItsFirstEntry) {
  makeExtension(".a");
  makeExtension(".b");
  makeExtension(".c");
  form.messages.serveHost = [this] {
    if (form.List1.count() == 2) {
      form.Text2.setText("2");
      form.cancelRequested = true;
    }
  };
  fileext(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(".a")}));
}

TEST_F(FileExtensionsTest, TheStatusLineNamesTheCategory) {
  fileext(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid File Extensions");
}

}  // namespace
}  // namespace zelvreg
