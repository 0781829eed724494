// Only the emulated computer can let a call fail and be a 32-bit one.
#include "form/Form42.h"
#include "machine/Machine.h"
#include "scanners/TypeLibrariesFixture.h"

namespace zelvreg::typeLibraries {
namespace {

class TypeLibrariesNativeTest : public TypeLibrariesFixture {
 protected:
  static void denyChangesOfPermissions() {
    machine::Machine::current()->faults().fail(machine::ApiCall::RegSetKeySecurity, 1,
                                               ERROR_ACCESS_DENIED);
  }
};

TEST_F(TypeLibrariesNativeTest, AHelpFolderWhosePermissionsCannotBeChangedIsSkipped) {
  for (const std::string& name : {nameA, nameB}) {
    setText(libraryKeys + name + "\\1.0\\HELPDIR", "", folder + "\\Gone");
  }
  denyChangesOfPermissions();
  cln71(form);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0][4], "TypeLib\\" + nameB + "\\1.0");
}

TEST_F(TypeLibrariesNativeTest, SoIsAReference) {
  for (const std::string& name : {nameA, nameB}) {
    setText(classKeys + name + "\\TypeLib", "", "{None}");
    form.List1.add(name);
  }
  denyChangesOfPermissions();
  cln72(form);
  ASSERT_EQ(findings().size(), 1U);
  EXPECT_EQ(findings()[0][4], "CLSID\\" + nameB + "\\TypeLib");
}

TEST_F(TypeLibrariesNativeTest, WithoutLibrariesOnlyTheOneWithoutANameIsFound) {
  removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\TypeLib");
  form.List1.add("left over");
  cln71(form);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(form.List1.count(), 0);
  EXPECT_EQ(form.Label4.caption.get(), "Invalid ClassId Configuration");
  Command16(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, locationColumn), "Typelib\\\\\\\\win32");
}

class TypeLibraries32Test : public fixture::Computer32Fixture {};

TEST_F(TypeLibraries32Test, AHelpFolderOfTheSystemFolderIsNeverGoneAndTheCaseIsKept) {
  setText(libraryKeys + "{A}\\1.0\\HELPDIR", "", "C:\\Windows\\System32\\Gone");
  setText(libraryKeys + "{B}\\1.0\\HELPDIR", "", "%SystemRoot%\\Gone");
  cln71(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, locationColumn), "C:\\Windows\\Gone");
}

TEST_F(TypeLibraries32Test, AFileOfTheSystemFolderMayBe) {
  setText(libraryKeys + "{A}\\1.0\\0\\win32", "", "C:\\Windows\\System32\\Gone.tlb");
  Command16(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, badValueColumn), "C:\\Windows\\System32\\Gone.tlb");
}

}  // namespace
}  // namespace zelvreg::typeLibraries
