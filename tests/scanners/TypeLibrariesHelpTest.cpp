// Help folders of type libraries.
#include "form/Form42.h"
#include "scanners/TypeLibrariesFixture.h"

namespace zelvreg::typeLibraries {
namespace {

class HelpFoldersTest : public TypeLibrariesFixture {
 protected:
  static std::string helpOf(const std::string& name, const std::string& version = "1.0") {
    return libraryKeys + name + "\\" + version + "\\HELPDIR";
  }

  static void help(const std::string& name, const std::string& place) {
    setText(helpOf(name), "", place);
  }

  static Texts finding(const std::string& name, const std::string& path,
                       const std::string& version = "1.0") {
    return {path, "Default", "71", "HKEY_CLASSES_ROOT", "TypeLib\\" + name + "\\" + version, "g"};
  }

  const std::string goneFolder = folder + "\\Gone";
  const std::string goneResolved = "c:\\typelibrariestest\\gone";
};

TEST_F(HelpFoldersTest, AHelpFolderThatIsGoneIsReported) {
  help(nameA, goneFolder);
  help(nameB, folder);
  cln71(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, goneResolved)}));
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(HelpFoldersTest, TheLastLibraryIsTheLastThatIsShown) {
  help(nameA, folder);
  cln71(form);
  EXPECT_EQ(form.Label3.caption.get().find("TypeLib\\\\"), std::string::npos);
  EXPECT_TRUE(form.Label3.caption.get().ends_with(form.List4.text(0)));
  EXPECT_NE(form.List4.text(0).find('.'), std::string::npos);
}

TEST_F(HelpFoldersTest, AFolderIsTakenWholeButForItsQuotes) {
  struct Case {
    std::string help;
    std::string reported;  // empty if it is not
  };
  makeFolder(folder + "\\" + userName());
  const std::vector<Case> cases{
      {"", ""},
      {"InstallDir", ""},
      {"INSTALLDIR", ""},
      {"\"installdir\"", ""},
      {"gone", ""},
      {"C:gone", ""},
      {"C:/TypeLibrariesTest/Gone", ""},
      {folder, ""},
      {folder + "\\", ""},
      {there, ""},
      {"\"" + folder + "\"", ""},
      {"\"" + folder + "\" and more", ""},
      {"\"" + folder, ""},
      {"\"gone\" C:\\gone", ""},
      {"C:\\Type\"Libraries\"Test", ""},
      {folder + "\\%USERNAME%", ""},
      {goneFolder + "\\", goneResolved + "\\"},
      {"\"" + goneFolder + "\" and more", goneResolved},
      {"C:\\TypeLibrariesTest\\\"Gone\"", goneResolved},
      {there + ",1", "c:\\typelibrariestest\\there.tlb,1"},
      {"\\gone", "\\gone"},
      {"C:\\Windows\\System32\\type libraries", "c:\\windows\\Sysnative\\type libraries"},
      {folder + "\\%NoSuchVariable%", "c:\\typelibrariestest\\%nosuchvariable%"},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.help);
    form.View2.clear();
    help(nameA, tested.help);
    cln71(form);
    std::vector<Texts> expected;
    if (!tested.reported.empty()) {
      expected.push_back(finding(nameA, tested.reported));
    }
    EXPECT_EQ(findings(), expected);
  }
}

TEST_F(HelpFoldersTest, OnlyTheFirstVersionOfALibraryIsLookedAt) {
  setText(helpOf(nameA, "1.0"), "", folder);
  setText(helpOf(nameA, "2.0"), "", goneFolder);
  makeKey(libraryKeys + nameB + "\\1.0\\0");
  setText(helpOf(nameB, "2.0"), "", goneFolder);
  cln71(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(HelpFoldersTest, AVersionIsTakenAsItIsNamed) {
  setText(helpOf(nameA, "a.f"), "", goneFolder);
  cln71(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, goneResolved, "a.f")}));
}

TEST_F(HelpFoldersTest, ALibraryWithoutVersionsDoesNotTakeThoseOfTheOneBefore) {
  setText(helpOf(nameA), "", folder);
  makeKey(libraryKeys + nameB);
  cln71(form);
  EXPECT_TRUE(findings().empty());
}

TEST_F(HelpFoldersTest, EveryHelpFoldersKeyIsOpenedToTheUserAndNoOther) {
  help(nameA, folder);
  setText(helpOf(nameB), "", "InstallDir");
  setText(helpOf(nameB, "2.0"), "", folder);
  cln71(form);
  EXPECT_TRUE(isOpenToUser(helpOf(nameA)));
  EXPECT_TRUE(isOpenToUser(helpOf(nameB)));
  EXPECT_FALSE(isOpenToUser(helpOf(nameB, "2.0")));
  EXPECT_FALSE(isOpenToUser(libraryKeys + nameA + "\\1.0"));
}

TEST_F(HelpFoldersTest, TheCellContinuesFromTheCountBeforeAndIsNeverSetToZero) {
  const Texts before = cells();
  help(nameA, folder);
  cln71(form);
  ASSERT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(cells(), before);
  help(nameA, goneFolder);
  help(nameB, goneFolder);
  form.categoryFound = 40;
  cln71(form);
  Texts expected = before;
  expected[6] = "42";
  EXPECT_EQ(cells(), expected);
  EXPECT_EQ(form.categoryFound, 42);
}

TEST_F(HelpFoldersTest, EachFindingIsCountedInTheTotalAndKeptAtOnce) {
  help(nameA, goneFolder);
  help(nameB, goneFolder);
  bool isKept = true;
  form.messages.serveHost = [&] {
    const std::string expected = form.View2.count() == 0 ? "(none)" : rowCount();
    isKept = isKept && storedText(countKey, "reg-count") == expected;
  };
  cln71(form);
  EXPECT_TRUE(isKept);
  EXPECT_EQ(form.totalFound, static_cast<std::int64_t>(form.View2.count()));
  EXPECT_EQ(form.totalFoundText, rowCount());
  EXPECT_EQ(storedText(countKey, "reg-count"), rowCount());
}

TEST_F(HelpFoldersTest, EveryLibraryIsNamedInTheStatusLineWithItsFirstVersion) {
  help(nameA, goneFolder);
  makeKey(libraryKeys + nameB);
  std::vector<std::pair<std::string, std::size_t>> shown;
  form.messages.serveHost = [&] { shown.emplace_back(form.Label3.caption, findings().size()); };
  cln71(form);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid ClassId Configuration");
  for (const std::string& library : {nameA + "\\1.0", nameB + "\\"}) {
    const std::string text = "HKEY_CLASSES_ROOT\\TypeLib\\" + library;
    EXPECT_EQ(std::ranges::count(shown, std::pair(text, std::size_t{1})), 1) << text;
  }
}

TEST_F(HelpFoldersTest, TheListEndsWithTheLibrariesAlone) {
  help(nameA, goneFolder);
  form.List1.add("left over");
  form.List4.add("left over");
  cln71(form);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), nameA), 1);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), "left over"), 0);
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List4), "left over"), 0);
}

TEST_F(HelpFoldersTest, AStopEndsTheWalk) {
  help(nameA, goneFolder);
  help(nameB, goneFolder);
  form.messages.serveHost = [&] {
    if (findings().size() == 1) {
      form.Text2.setText("2");
      form.cancelRequested = true;
    }
  };
  cln71(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, goneResolved)}));
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List1), nameB), 1);
  EXPECT_EQ(form.List4.count(), 1);
}

}  // namespace
}  // namespace zelvreg::typeLibraries
