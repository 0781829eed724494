// Files of type libraries.
#include "form/Form42.h"
#include "scanners/TypeLibrariesFixture.h"
#include "text/Wide.h"

namespace zelvreg::typeLibraries {
namespace {

class LibraryFilesTest : public TypeLibrariesFixture {
 protected:
  static void store(const std::string& name, const std::string& file,
                    const std::string& place = "1.0\\0") {
    setText(libraryKeys + name + "\\" + place + "\\win32", "", file);
  }

  static Texts finding(const std::string& name, const std::string& file,
                       const std::string& place = "1.0\\0") {
    const std::string key = "Typelib\\" + name + "\\" + place + "\\win32";
    return {key, file, "9", "HKEY_CLASSES_ROOT", key, "g"};
  }
};

TEST_F(LibraryFilesTest, AFileThatIsGoneIsReported) {
  store(nameA, gone);
  store(nameB, there);
  Command16(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, gone)}));
  EXPECT_EQ(form.View2.rowInView(), form.View2.count());
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(LibraryFilesTest, AFileIsLookedUpByItsWholeText) {
  struct Case {
    std::string file;
    bool isReported;
  };
  makeFile(folder + "\\" + userName() + ".tlb");
  const std::vector<Case> cases{
      {there, false},
      {"C:/TypeLibrariesTest/There.tlb", false},
      {"%SystemDrive%\\TypeLibrariesTest\\There.tlb", false},
      {folder + "\\%USERNAME%.tlb", false},
      {folder + "\\*.tlb", false},
      {"", true},
      {"gone.tlb", true},
      {folder, true},
      {there + "\\2", true},
      {there + ",1", true},
      {"\"" + there + "\"", true},
      {"%NoSuchVariable%\\Gone.tlb", true},
      {"C:\\Windows\\System32\\type libraries.tlb", true},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.file);
    form.View2.clear();
    store(nameA, tested.file);
    Command16(form);
    std::vector<Texts> expected;
    if (tested.isReported) {
      expected.push_back(finding(nameA, tested.file));
    }
    EXPECT_EQ(findings(), expected);
  }
}

TEST_F(LibraryFilesTest, TheFirstNumericVersionAndTheFirstLocaleBelowItAreLookedAt) {
  struct Case {
    std::vector<std::string> places;
    std::string looked;
  };
  const std::vector<Case> cases{
      {{"1.0\\0", "2.0\\0"}, "1.0\\0"},
      {{"1.a\\0", "2.0\\0"}, "2.0\\0"},
      {{"10.0\\0", "9.0\\0", "a.0\\0"}, "10.0\\0"},
      {{"2\\0", "x\\0"}, "2\\0"},
      {{"1.0\\409", "1.0\\7"}, "1.0\\409"},
      {{"1.0\\409", "1.0\\FLAGS"}, "1.0\\409"},
      {{"1.0\\FLAGS", "1.0\\HELPDIR"}, "1.0\\FLAGS"},
      // Without a version the versions are taken for the locales, and without those there is none.
      {{"c.0\\0", "d.0\\0"}, "\\c.0"},
  };
  for (const Case& tested : cases) {
    SCOPED_TRACE(tested.looked);
    removeKeys();
    form.View2.clear();
    for (const std::string& place : tested.places) {
      store(nameA, place == tested.looked ? gone : there, place);
    }
    Command16(form);
    const std::string file = tested.looked == "\\c.0" ? "" : gone;
    EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, file, tested.looked)}));
  }
}

TEST_F(LibraryFilesTest, ALibraryWithoutVersionsHasNoFileAndDoesNotTakeTheOneBefore) {
  store(nameA, there);
  makeKey(libraryKeys + nameB);
  Command16(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameB, "", "\\")}));
}

TEST_F(LibraryFilesTest, AVersionWithoutLocalesHasNoFile) {
  makeKey(libraryKeys + nameA + "\\1.0");
  Command16(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, "", "1.0\\")}));
}

TEST_F(LibraryFilesTest, OnlyThe32BitFileIsLookedAt) {
  store(nameA, there);
  setText(libraryKeys + nameA + "\\1.0\\0\\win64", "", gone);
  setText(libraryKeys + nameB + "\\1.0\\0\\win64", "", there);
  Command16(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameB, "")}));
}

TEST_F(LibraryFilesTest, AFileThatIsThereLosesAllAttributesButArchive) {
  SetFileAttributesW(Wide(there).get(),
                     FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  store(nameA, there);
  Command16(form);
  EXPECT_TRUE(findings().empty());
  EXPECT_EQ(GetFileAttributesW(Wide(there).get()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(LibraryFilesTest, TheAttributesAreSetByTheTextAsItIs) {
  SetFileAttributesW(Wide(there).get(), FILE_ATTRIBUTE_READONLY);
  const DWORD before = GetFileAttributesW(Wide(there).get());
  store(nameA, "%SystemDrive%\\TypeLibrariesTest\\There.tlb");
  Command16(form);
  EXPECT_TRUE(findings().empty());
  EXPECT_EQ(GetFileAttributesW(Wide(there).get()), before);
}

TEST_F(LibraryFilesTest, TheCountContinuesAndNoCellShowsIt) {
  store(nameA, gone);
  store(nameB, gone);
  form.categoryFound = 40;
  const Texts before = cells();
  Command16(form);
  EXPECT_EQ(form.categoryFound, 40 + static_cast<std::int64_t>(form.View2.count()));
  EXPECT_EQ(findings().size(), 2U);
  EXPECT_EQ(cells(), before);
}

TEST_F(LibraryFilesTest, TheWorkListsStartEmptyAndTheLibrariesEndInTheThird) {
  for (ListBox* list : {&form.List1, &form.List2, &form.List3}) {
    list->add("left over");
  }
  form.View2.add("before");
  form.Text1.setText("1");
  store(nameA, gone);
  store(nameB, there);
  Command16(form);
  const Texts libraries = fixture::entriesOf(form.List3);
  EXPECT_EQ(std::ranges::count(libraries, nameA), 1);
  EXPECT_EQ(std::ranges::count(libraries, nameB), 1);
  EXPECT_EQ(std::ranges::count(libraries, "left over"), 0);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_EQ(static_cast<std::size_t>(form.List2.count()) + 1, form.View2.count());
  EXPECT_EQ(std::ranges::count(fixture::entriesOf(form.List2), gone), 1);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"before", "", "", "", "", ""}));
  EXPECT_EQ(form.Text1.text(), rowCount());
}

TEST_F(LibraryFilesTest, AnEmptyListHasOneLibraryWithoutANameWhoseFileIsGone) {
  store(nameA, there);
  form.Text2.setText("2");
  Command16(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(fixture::findingOf(form, 1), (Texts{"Typelib\\\\\\\\win32", "", "9",
                                                "HKEY_CLASSES_ROOT", "Typelib\\\\\\\\win32", "g"}));
  EXPECT_EQ(fixture::entriesOf(form.List3), (Texts{""}));
  EXPECT_EQ(form.Text1.text(), "1");
}

}  // namespace
}  // namespace zelvreg::typeLibraries
