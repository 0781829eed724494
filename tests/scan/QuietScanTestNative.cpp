// Only the emulated computer tells which calls were made, and can have a drive that is remote.
#include <gtest/gtest.h>

#include <algorithm>

#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "keys/RootHandles.h"
#include "machine/computer/Environment.h"
#include "machine/files/Drives.h"
#include "repair/EveryKindMachine.h"
#include "scan/Findings.h"
#include "scan/SafeguardSources.h"
#include "shell/CommandModes.h"
#include "shell/StartUp.h"
#include "support/RegistryContent.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using machine::ApiCall;
using Rows = std::vector<std::vector<std::string>>;

// What a scan would follow to another computer, Z: being a drive of one.
constexpr const char* shares[] = {
    "\\\\server\\share\\a.exe",
    "//server/share/b.exe",
    "\\/server/share\\c.exe",
    "\\\\?\\UNC\\server\\share\\d.exe",
    "\\\\.\\pipe\\e.exe",
    "Z:\\f.exe",
    "z:/g.exe",
    "%REMOTE%\\h.exe",
    "%AFAR%\\i.exe",
    "\"\\\\server\\share\\j.exe\" /x",
    "\\\\.\\C:\\..\\UNC\\s\\k.exe",
    "\\??\\UNC\\s\\share\\l.exe",
};

// A value in each place that a scanner reads files from, for one text.
void setInAllPlaces(const std::string& text, const std::string& name) {
  struct Place {
    const char* key;
    bool isKeyOfItsOwn;
    bool namesText;
    const char* data;
  };
  constexpr Place places[] = {
      {"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\SharedDLLs", false, true, ""},
      {"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", false, false, nullptr},
      {"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\%.exe", true, false, nullptr},
      {"SOFTWARE\\Microsoft\\Windows\\help", false, false, nullptr},
      {"SOFTWARE\\Microsoft\\Windows\\HTML Help", false, false, nullptr},
      {"SOFTWARE\\Microsoft\\MMC\\SnapIns\\%", false, false, nullptr},
      {"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", false, false, nullptr},
      {"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\%", false, false, nullptr},
      {"SOFTWARE\\Classes\\%\\DefaultIcon", true, false, nullptr},
      {"SOFTWARE\\Classes\\%\\shell\\open\\command", true, false, nullptr},
      {"SOFTWARE\\Classes\\CLSID\\%\\InprocServer32", true, false, nullptr},
      {"SOFTWARE\\Classes\\Wow6432Node\\CLSID\\%\\InprocServer32", true, false, nullptr},
      {"SOFTWARE\\Classes\\CLSID\\%\\LocalServer32", true, false, nullptr},
      {"SOFTWARE\\Classes\\CLSID\\%\\ToolboxBitmap32", true, false, nullptr},
      {"SOFTWARE\\Classes\\TypeLib\\%\\1.0\\0\\win32", true, false, nullptr},
      {"SOFTWARE\\Classes\\TypeLib\\%\\1.0\\HELPDIR", true, false, nullptr},
  };
  for (const Place& place : places) {
    std::string key = place.key;
    if (const auto mark = key.find('%'); mark != std::string::npos) {
      key.replace(mark, 1, name);
    }
    HKEY open = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, Wide(key).get(), 0, nullptr, 0,
                              KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &open, nullptr),
              ERROR_SUCCESS);
    const std::string value = place.isKeyOfItsOwn ? "" : place.namesText ? text : name;
    const std::u16string data = utf16(place.namesText ? place.data : text);
    RegSetValueExW(open, Wide(value).get(), 0, REG_SZ, reinterpret_cast<const BYTE*>(data.c_str()),
                   static_cast<DWORD>((data.size() + 1) * sizeof(char16_t)));
    RegCloseKey(open);
  }
}

bool isShare(std::string path) {
  path.erase(0, path.find_first_not_of(' '));
  const auto isSeparator = [&](std::size_t at) {
    return path.size() > at && (path[at] == '\\' || path[at] == '/');
  };
  const bool isDrive = path.size() > 1 && path[1] == ':';
  return (isSeparator(0) && isSeparator(1)) || path.starts_with("\\??\\") ||
         (isDrive && (path[0] == 'Z' || path[0] == 'z'));
}

class QuietScanTest : public ::testing::Test {
 protected:
  // A new computer, with texts that lead to shares, and a file that hides from look-ups.
  void startAnew() {
    machine::Machine& computer = everyKind.restart();
    computer.drives().setType(u'z', DRIVE_REMOTE);
    computer.environment().set(u"REMOTE", u"\\\\server\\share");
    computer.environment().set(u"AFAR", u"Z:");
    int number = 0;
    for (const char* share : shares) {
      setInAllPlaces(share, "QuietScan" + std::to_string(++number));
    }
    setInAllPlaces("C:\\Windows\\Help\\hidden.exe", "QuietScanHidden");
    setInAllPlaces("C:\\$Recycle.Bin\\there.exe", "QuietScanThrownAway");
    CreateDirectoryW(Wide("C:\\$Recycle.Bin").get(), nullptr);
    hide("C:\\$Recycle.Bin\\there.exe");
    hide("C:\\Windows\\Help\\hidden.exe");
    asked.clear();
    computer.drives().onFind = [this](std::u16string_view path) { asked.push_back(utf8(path)); };
    computer.faults().clear();
  }

  static void hide(const char* path) {
    HANDLE file = CreateFileW(Wide(path).get(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
  }

  [[nodiscard]] bool isShareAsked() const { return std::ranges::any_of(asked, isShare); }
  [[nodiscard]] std::uint64_t touches() const {
    std::uint64_t count = 0;
    for (const ApiCall call :
         {ApiCall::RegSetKeySecurity, ApiCall::SetFileSecurity, ApiCall::SetFileAttributes,
          ApiCall::RegDeleteKey, ApiCall::RegDeleteValue}) {
      count += everyKind.computer().faults().calls(call);
    }
    return count;
  }

  static Rows rowsOf(const Form42& form) {
    Rows rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      auto& cells = rows.emplace_back();
      for (std::size_t column = 0; column <= subKeyColumn; ++column) {
        cells.push_back(form.View2.text(row, column));
      }
    }
    return rows;
  }

  // The rows of everything that scans.
  Rows scanWith(const std::vector<SafeguardChoice>& choices) {
    startAnew();
    const auto before = fixture::registryContent(everyKind.computer());
    Form42 form;
    form.safeguardChoices = choices;
    fixture::scanAllRows(form);
    fixture::scanWhatNoRowScans(form);
    const auto changed =
        fixture::changedEntries(before, fixture::registryContent(everyKind.computer()));
    EXPECT_TRUE(changed.empty()) << *changed.begin();
    return rowsOf(form);
  }

  fixture::EveryKindMachine everyKind;
  std::vector<std::string> asked;
};

TEST_F(QuietScanTest, AScanAsksNoShareTouchesNothingAndFindsWhatItWouldFindOtherwise) {
  const Rows quiet = scanWith({});
  EXPECT_FALSE(asked.empty());
  EXPECT_FALSE(isShareAsked()) << *std::ranges::find_if(asked, isShare);
  EXPECT_EQ(touches(), 0U);
  const Rows described = scanWith(choicesAsDescribed());
  EXPECT_TRUE(isShareAsked());
  EXPECT_GT(touches(), 0U);
  EXPECT_GT(quiet.size(), 100U);
  EXPECT_EQ(quiet, described);
}

TEST_F(QuietScanTest, EachCanBeLiftedAlone) {
  scanWith({{&Safeguards::touches, true, "--touch"}});
  EXPECT_GT(touches(), 0U);
  EXPECT_FALSE(isShareAsked());
  scanWith({{&Safeguards::asksShares, true, "--ask-shares"}});
  EXPECT_EQ(touches(), 0U);
  EXPECT_TRUE(isShareAsked());
}

TEST_F(QuietScanTest, ASearchAsksNoShareAndTouchesNothing) {
  const auto search = [this](const std::vector<SafeguardChoice>& choices) {
    startAnew();
    Form42 form;
    form.safeguardChoices = choices;
    Form_Load(form);
    form.cboFind.setText(".exe");
    form.cboRoot.setListIndex(0);
    form.cmdFind.click();
    return rowsOf(form);
  };
  const Rows quiet = search({});
  EXPECT_FALSE(isShareAsked());
  EXPECT_EQ(touches(), 0U);
  EXPECT_EQ(search(choicesAsDescribed()), quiet);
  EXPECT_TRUE(isShareAsked());
  EXPECT_GT(touches(), 0U);
}

TEST_F(QuietScanTest, TheSuitesModesAreAsQuiet) {
  for (const char* mode : {"w4", "r"}) {
    startAnew();
    Form42 form;
    readCommandLine(form, mode);
    EXPECT_THROW(Form_Load(form), ProcessEnd);
    EXPECT_FALSE(isShareAsked()) << mode;
    EXPECT_EQ(touches(), 0U) << mode;
  }
}

TEST_F(QuietScanTest, AnInitialisationFileOnAShareIsNotRead) {
  startAnew();
  for (const char* share : shares) {
    EXPECT_EQ(HiveFromShortName(share), HiveHandle::Unknown);
  }
  EXPECT_FALSE(isShareAsked());
  HiveFromShortName(shares[0], Shares::Asked);
  EXPECT_TRUE(isShareAsked());
}

}  // namespace
}  // namespace zelvreg
