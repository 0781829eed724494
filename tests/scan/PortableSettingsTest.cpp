#include "keys/RegistryImport.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "scan/Settings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"
#include "undo/UndoPage.h"
#include "undo/UndoStores.h"
// This one stands on windows.h.
#include <sddl.h>

namespace zelvreg {
namespace {

const std::string stored =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe";

class PortableSettingsTest : public fixture::ComputerFixture {
 protected:
  PortableSettingsTest() {
    removeKey(stored);
    makeFile(settingsFile(), "");
    form.dialogs.show = [this](const UserMessage& message) {
      messages.push_back(message.text);
      return Answer::Ok;
    };
  }
  ~PortableSettingsTest() override {
    DeleteFileW(Wide(settingsFile()).get());
    removeKey(stored);
  }

  static void setAccess(const char* sddl) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
                  Wide(sddl).get(), SDDL_REVISION_1, &descriptor, nullptr),
              FALSE);
    EXPECT_NE(SetFileSecurityW(Wide(settingsFile()).get(), DACL_SECURITY_INFORMATION, descriptor),
              FALSE);
    LocalFree(descriptor);
  }

  std::vector<std::string> messages;
};

TEST_F(PortableSettingsTest, TheFileMakesItPortable) {
  EXPECT_TRUE(isPortable());
  DeleteFileW(Wide(settingsFile()).get());
  EXPECT_FALSE(isPortable());
}

TEST_F(PortableSettingsTest, ANameThatIsTooLongForASettingIsListedAsOneWithoutAName) {
  DeleteFileW(Wide(settingsFile()).get());
  setText(stored + "\\regscan\\dates", std::string(40, 'n'), "x");
  bool isWhole = false;
  EXPECT_EQ(settingNames(settings::dates, isWhole), std::vector<std::string>{""});
  EXPECT_TRUE(isWhole);
}

TEST_F(PortableSettingsTest, SettingsAreInTheFileAndNotInTheRegistry) {
  EXPECT_TRUE(keepSetting(settings::regscan, "theme", "dark"));
  EXPECT_TRUE(keepSetting(settings::selection, "font", "0"));
  EXPECT_TRUE(keepSetting(settings::language, "lang", "german"));
  EXPECT_EQ(readSetting(settings::regscan, "theme"), "dark");
  EXPECT_EQ(readSetting(settings::language, "lang"), "german");
  EXPECT_EQ(
      readFileText(settingsFile()),
      std::string(utf8Mark) +
          "[settings]\r\ntheme=dark\r\n[categories]\r\nfont=0\r\n[language]\r\nlang=german\r\n");
  EXPECT_FALSE(hasKey(stored));
}

TEST_F(PortableSettingsTest, NothingOfTheRegistryIsRead) {
  setText(stored + "\\regscan", "theme", "light");
  EXPECT_EQ(readSetting(settings::regscan, "theme"), "");
}

TEST_F(PortableSettingsTest, WhatIsForASuiteIsKeptNowhere) {
  EXPECT_TRUE(keepSetting(settings::runningTotal, "reg-count", "7"));
  EXPECT_EQ(readSetting(settings::runningTotal, "reg-count"), "");
  EXPECT_EQ(readFileText(settingsFile()), "");
  EXPECT_FALSE(hasKey(stored));
}

TEST_F(PortableSettingsTest, UndoEntriesAreInTheFile) {
  EXPECT_TRUE(registerUndoEntry("one", "stem 1", "export 1"));
  EXPECT_TRUE(registerUndoEntry("two", "stem 2", ""));
  EXPECT_EQ(undoNumbers(), (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(undoLabel(1), "one");
  EXPECT_EQ(undoExportStem("one"), "export 1");
  removeUndoEntry(1);
  EXPECT_EQ(undoNumbers(), std::vector<std::int64_t>{2});
  EXPECT_FALSE(hasKey(stored));
}

TEST_F(PortableSettingsTest, AListThatOthersCouldHaveWrittenIsNotRestored) {
  const std::string target = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\PortableSettingsTest";
  removeKey(target);
  bindClicks(form);
  registerUndoEntry("one", "stem 1", "");
  setAccess("D:(A;;FA;;;BA)(A;;FA;;;SY)(A;;FA;;;WD)");
  form.chameleonButton1.click();
  form.Text3.setText("1");
  for (const bool undoesByExport : {false, true}) {
    form.safeguards.undoesByExport = undoesByExport;
    form.chameleonButton2.click();
  }
  undoLastRepair(form);
  ASSERT_EQ(messages.size(), 3U);
  for (const std::string& message : messages) {
    EXPECT_NE(message.find("users who are no administrators can write to the folder"),
              std::string::npos)
        << message;
  }
  EXPECT_TRUE(form.isUndoRefused);
  EXPECT_FALSE(hasKey(target));
}

}  // namespace
}  // namespace zelvreg
