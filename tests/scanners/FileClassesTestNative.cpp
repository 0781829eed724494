// Only the emulated computer can be a 32-bit one, and refuses keys by their access lists.
#include "scanners/FileClassesFixture.h"

namespace zelvreg::fileClasses {
namespace {

constexpr const char* readOnlyList = "D:(A;CI;KR;;;WD)";

class FileClasses32Test : public FileClassesFixture {
 protected:
  FileClasses32Test() : FileClassesFixture(32) {}
};

TEST_F(FileClasses32Test, AProgramOfTheSystemFolderIsNeverReported) {
  setCommand(className + "1" + openKey, "C:\\Windows\\System32\\gone.exe");
  setCommand(className + "2" + openKey, "C:\\Windows\\gone.exe");
  Command12(form);
  EXPECT_EQ(findings(),
            (std::vector<Texts>{programFinding(className + "2", "C:\\Windows\\gone.exe")}));
}

class FileClassesAccessTest : public FileClassesFixture {};

TEST_F(FileClassesAccessTest, ACommandThatCannotBeOpenedForWritingIsTakenForMissing) {
  setCommand(className + "1" + openKey, gone);
  setAccessOfKey(classesRoot + className + "1" + openKey, readOnlyList);
  setCommand(className + "2" + openKey, gone);
  setAccessOfKey(classesRoot + className + "2" + openKey, readOnlyList);
  setCommand(className + "2" + editKey, gone);
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{programFinding(className + "2", gone, editKey)}));
}

TEST_F(FileClassesAccessTest, AnExtensionThatCannotBeOpenedForWritingIsTakenForMissing) {
  makeKey(classesRoot + className);
  setAccessOfKey(classesRoot + className, readOnlyList);
  setExtension("a/1", className);
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{mediaFinding("a/1", className)}));
}

}  // namespace
}  // namespace zelvreg::fileClasses
