// Only the emulated computer counts its calls and can let them fail.
#include "exclusions/ExclusionFile.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "scan/Policies.h"
#include "shell/StartUp.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

using machine::ApiCall;

class ExclusionWritesTest : public fixture::MachineFixture {
 protected:
  ExclusionWritesTest() {
    file(path, before);
    start();
    form.programFolder = "C:\\Own";
    bindClicks(form);
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message);
      return Answer::Ok;
    };
  }

  void addHighlighted(int count) {
    for (int number = 0; number < count; ++number) {
      ScannerRun run;
      const std::string key = "Key " + std::to_string(number);
      addRow(form, run, {"location", "bad value", "2", "HKEY_USERS", key, "a"});
      form.View2.setSelected(form.View2.count(), true);
    }
  }

  const std::string path = "C:\\Own\\exregscan.txt";
  const std::string before = "HKEY_USERS\\Before\r\n";
  Form42 form;
  std::vector<UserMessage> messages;
};

TEST_F(ExclusionWritesTest, AllHighlightedRowsGoIntoTheFileInOneWrite) {
  addHighlighted(100);
  computer().faults().clear();
  form.chameleonButton9.click();
  EXPECT_EQ(computer().faults().calls(ApiCall::MoveFile), 1U);
  EXPECT_EQ(computer().faults().calls(ApiCall::WriteFile), 1U);
  EXPECT_EQ(readExclusions(form).value().size(), 101U);
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_TRUE(messages.empty());
}

TEST_F(ExclusionWritesTest, AFileThatCannotBeWrittenLosesNothingAndIsTold) {
  for (const ApiCall call : {ApiCall::CreateFile, ApiCall::WriteFile, ApiCall::MoveFile}) {
    form.View2.clear();
    messages.clear();
    addHighlighted(3);
    // The first file that is opened is the old one, to be read.
    computer().faults().failFrom(call, call == ApiCall::CreateFile ? 2 : 1, ERROR_ACCESS_DENIED);
    form.chameleonButton9.click();
    computer().faults().clear();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(
        messages[0].text,
        "Nothing was excluded: the file C:\\Own\\exregscan.txt could not be written. See that "
        "the program's folder can be written.");
    EXPECT_EQ(content(path), before);
    ASSERT_EQ(form.View2.count(), 3U);
    for (std::size_t row = 1; row <= 3; ++row) {
      EXPECT_TRUE(form.View2.isSelected(row));
    }
  }
}

TEST_F(ExclusionWritesTest, WithAllSafeguardsLiftedTheRowsGoWithoutAWord) {
  form.safeguards = asDescribed();
  addHighlighted(3);
  computer().faults().failFrom(ApiCall::MoveFile, 1, ERROR_ACCESS_DENIED);
  form.chameleonButton9.click();
  computer().faults().clear();
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(form.View2.count(), 0U);
  EXPECT_EQ(content(path), before);
}

TEST_F(ExclusionWritesTest, AFileThatCannotBeReadIsNotTakenForNone) {
  computer().faults().failFrom(ApiCall::CreateFile, 1, ERROR_ACCESS_DENIED);
  EXPECT_FALSE(readExclusions(form));
  loadExclusions(form);
  EXPECT_TRUE(form.areExclusionsUnread);
  computer().faults().clear();
  loadExclusions(form);
  EXPECT_FALSE(form.areExclusionsUnread);
  EXPECT_EQ(form.View4.count(), 1U);
}

TEST_F(ExclusionWritesTest, APolicyThatCannotBeReadIsNotTakenForNone) {
  computer().faults().failFrom(ApiCall::RegOpenKey, 1, ERROR_NOT_ENOUGH_MEMORY);
  loadExclusions(form);
  EXPECT_TRUE(form.areExclusionsUnread);
  EXPECT_EQ(unreadExclusions(form), "HKLM\\Software\\Policies\\zelvane\\zelvreg\\Exclusions");
  computer().faults().clear();
  loadExclusions(form);
  EXPECT_FALSE(form.areExclusionsUnread);
  EXPECT_EQ(unreadExclusions(form), path);
}

}  // namespace
}  // namespace zelvreg
