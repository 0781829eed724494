// The libraries that classes name.
#include "form/Form42.h"
#include "scanners/TypeLibrariesFixture.h"

namespace zelvreg::typeLibraries {
namespace {

const std::string library = "{TypeLibrariesTest-B}";

class LibraryReferencesTest : public TypeLibrariesFixture {
 protected:
  static std::string referenceOf(const std::string& name) { return classKeys + name + "\\TypeLib"; }

  void refer(const std::string& name, const std::string& to) {
    setText(referenceOf(name), "", to);
    form.List1.add(name);
  }

  static Texts finding(const std::string& name, const std::string& to) {
    return {to, "Default", "72", "HKEY_CLASSES_ROOT", "CLSID\\" + name + "\\TypeLib", "g"};
  }
};

TEST_F(LibraryReferencesTest, ALibraryThatIsNotRegisteredIsReported) {
  refer(nameA, library);
  cln72(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{finding(nameA, library)}));
  EXPECT_EQ(form.View2.rowInView(), 1U);
  EXPECT_FALSE(form.View2.isChecked(1));
}

TEST_F(LibraryReferencesTest, ARegisteredLibraryIsSound) {
  refer(nameA, library);
  makeKey(libraryKeys + library);
  cln72(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(LibraryReferencesTest, SoIsOneThatIsAClass) {
  refer(nameA, library);
  makeKey(classKeys + library);
  cln72(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(LibraryReferencesTest, AClassOfTheOtherViewDoesNotRescueIt) {
  refer(nameA, library);
  makeKey(classKeys32 + library);
  cln72(form);
  EXPECT_EQ(findings().size(), 1U);
}

TEST_F(LibraryReferencesTest, OnlyWhatBeginsWithABraceIsJudged) {
  for (const char* value : {"", "TypeLibrariesTest", " {TypeLibrariesTest-B}", "\"{X}\""}) {
    SCOPED_TRACE(value);
    form.List1.clear();
    refer(nameA, value);
    cln72(form);
    EXPECT_EQ(form.View2.count(), 0U);
  }
}

TEST_F(LibraryReferencesTest, TheReferenceIsReadInThe64BitView) {
  form.List1.add(nameA);
  setText(classKeys32 + nameA + "\\TypeLib", "", library);
  cln72(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_F(LibraryReferencesTest, WithAnEmptyListNothingIsDone) {
  setText(referenceOf(nameA), "", library);
  const auto before = accessOfKey(referenceOf(nameA));
  bool hasYielded = false;
  form.messages.serveHost = [&] { hasYielded = true; };
  form.Label3.caption = "before";
  cln72(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.Label3.caption.get(), "before");
  EXPECT_EQ(form.Label4.caption.get(), "Invalid ClassId Configuration");
  EXPECT_EQ(accessOfKey(referenceOf(nameA)), before);
  EXPECT_FALSE(hasYielded);
}

TEST_F(LibraryReferencesTest, OnlyListedClassesAreLookedAtAndTheListStays) {
  setText(referenceOf(nameA), "", library);
  form.List1.add("{TypeLibrariesTest-None}");
  cln72(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(fixture::entriesOf(form.List1), (Texts{"{TypeLibrariesTest-None}"}));
}

TEST_F(LibraryReferencesTest, EveryReferencesKeyIsOpenedToTheUserAndNoOther) {
  refer(nameA, "not judged");
  cln72(form);
  EXPECT_TRUE(isOpenToUser(referenceOf(nameA)));
  EXPECT_FALSE(isOpenToUser(classKeys + nameA));
}

TEST_F(LibraryReferencesTest, TheCellContinuesFromTheCountBeforeAndIsNeverSetToZero) {
  const Texts before = cells();
  cln72(form);
  EXPECT_EQ(cells(), before);
  refer(nameA, library + "-1");
  refer(nameB, library + "-2");
  form.categoryFound = 40;
  cln72(form);
  Texts expected = before;
  expected[6] = "42";
  EXPECT_EQ(cells(), expected);
  EXPECT_EQ(form.categoryFound, 42);
}

TEST_F(LibraryReferencesTest, EachFindingIsNamedCountedAndKeptAtOnce) {
  refer(nameA, library + "-1");
  refer(nameB, library + "-2");
  Texts shown;
  Texts kept;
  Texts count;
  form.messages.serveHost = [&] {
    shown.push_back(form.Label3.caption);
    kept.push_back(storedText(countKey, "reg-count"));
    count.push_back(form.View1.text(7, problemsColumn));
  };
  cln72(form);
  EXPECT_EQ(shown, (Texts{"HKEY_CLASSES_ROOT\\CLSID\\" + nameA + "\\TypeLib",
                          "HKEY_CLASSES_ROOT\\CLSID\\" + nameB + "\\TypeLib"}));
  EXPECT_EQ(kept, (Texts{"1", "2"}));
  EXPECT_EQ(count, (Texts{"1", "2"}));
  EXPECT_EQ(form.totalFound, 2);
  EXPECT_EQ(form.totalFoundText, "2");
}

TEST_F(LibraryReferencesTest, AStopEndsTheWalkAfterItsFirstEntry) {
  refer(nameA, library + "-1");
  refer(nameB, library + "-2");
  form.Text2.setText("2");
  form.cancelRequested = true;
  cln72(form);
  EXPECT_EQ(form.View2.count(), 1U);
}

}  // namespace
}  // namespace zelvreg::typeLibraries
