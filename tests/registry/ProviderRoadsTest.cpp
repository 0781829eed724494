// Both roads to the 64-bit view, also where a provider stops answering.
#include <algorithm>
#include <array>
#include <functional>
#include <limits>

#include "keys/StdRegProv.h"
#include "registry/View64.h"
#include "scan/Findings.h"
#include "scan/SafeguardSources.h"
#include "scanners/FileExtensions.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using Rows = std::vector<std::vector<std::string>>;

const std::string extensions =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts";
const std::string place = "SOFTWARE\\ProviderRoadsTest";
const std::string key = "HKEY_LOCAL_MACHINE\\" + place;

struct Calls {
  int made = 0;
  int connections = 0;
  int lastSound = std::numeric_limits<int>::max();  // after it no call gets through
};

// Hands calls on until it fails for good.
class FailingProvider : public StdRegProv {
 public:
  FailingProvider(std::unique_ptr<StdRegProv> sound, Calls& counted)
      : provider(std::move(sound)), calls(counted) {}

  LONG enumKey(HiveHandle hive, const std::string& path,
               std::optional<std::vector<std::string>>& names) override {
    return getsThrough() ? provider->enumKey(hive, path, names) : providerFailed;
  }
  LONG enumValues(HiveHandle hive, const std::string& path,
                  std::optional<std::vector<std::string>>& names, std::vector<DWORD>& types,
                  const std::function<void()>& serve) override {
    return getsThrough() ? provider->enumValues(hive, path, names, types, serve) : providerFailed;
  }
  LONG getStringValue(HiveHandle hive, const std::string& path, const std::string& valueName,
                      std::string& value) override {
    return getsThrough() ? provider->getStringValue(hive, path, valueName, value) : providerFailed;
  }
  LONG getExpandedStringValue(HiveHandle hive, const std::string& path,
                              const std::string& valueName, std::string& value) override {
    return getsThrough() ? provider->getExpandedStringValue(hive, path, valueName, value)
                         : providerFailed;
  }
  LONG deleteKey(HiveHandle hive, const std::string& path) override {
    return getsThrough() ? provider->deleteKey(hive, path) : providerFailed;
  }

 private:
  bool getsThrough() { return ++calls.made <= calls.lastSound; }

  std::unique_ptr<StdRegProv> provider;
  Calls& calls;
};

std::shared_ptr<StdRegProvPool> failingPool(Calls& calls) {
  return std::make_shared<StdRegProvPool>(
      [&calls](ProviderRoad road, ProviderArchitecture architecture) {
        ++calls.connections;
        return std::make_unique<FailingProvider>(connectStdRegProv(road, architecture), calls);
      });
}

Rows rowsOf(const Form42& form) {
  Rows rows;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    rows.push_back(fixture::findingOf(form, row));
  }
  std::ranges::sort(rows);
  return rows;
}

class ProviderRoadsTest : public fixture::ComputerFixture,
                          public ::testing::WithParamInterface<ProviderRoad> {
 protected:
  ProviderRoadsTest() {
    emptyKey(key);
    emptyKey(extensions);
    use(form);
    form.providers = failingPool(calls);
  }
  ~ProviderRoadsTest() override {
    removeKey(key);
    emptyKey(extensions);
  }

  void use(Form42& used) {
    used.safeguards = {};
    used.safeguards.asksService = GetParam() == ProviderRoad::Service;
    used.safeguardChoices = {{&Safeguards::asksService, used.safeguards.asksService, "road"}};
  }

  Calls calls;
};

TEST_P(ProviderRoadsTest, ACallThatFailsDropsTheConnectionAndTheNextOneMakesANewOne) {
  setText(key, "a", "text");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "a"), "text");
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "none"), "");
  EXPECT_EQ(calls.connections, 1);
  EXPECT_FALSE(form.isProviderSilent);
  calls.lastSound = 2;
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "a"), "");
  EXPECT_TRUE(form.isProviderSilent);
  EXPECT_EQ(calls.connections, 1);
  calls.lastSound = std::numeric_limits<int>::max();
  EXPECT_EQ(GetKeyValue64(form, HiveHandle::LocalMachine, place, "a"), "text");
  EXPECT_EQ(calls.connections, 2);
}

TEST_P(ProviderRoadsTest, NamesOfSubkeysThatCouldNotBeReadAreNone) {
  const std::string users = "Software\\ProviderRoadsTest";
  makeKey("HKEY_CURRENT_USER\\" + users + "\\below");
  EXPECT_EQ(subkeyNames(form, HiveHandle::CurrentUser, users), std::vector<std::string>{"below"});
  EXPECT_FALSE(form.isProviderSilent);
  calls.lastSound = 1;
  EXPECT_EQ(subkeyNames(form, HiveHandle::CurrentUser, users), std::vector<std::string>());
  EXPECT_TRUE(form.isProviderSilent);
  removeKey("HKEY_CURRENT_USER\\" + users);
}

TEST_P(ProviderRoadsTest, NoExtensionIsReportedWhoseNamesCouldNotBeRead) {
  constexpr int count = 6;
  for (int number = 0; number < count; ++number) {
    const std::string extension =
        extensions + "\\.pr" + std::to_string(number) + "\\OpenWithProgids";
    makeKey(extension);
    if (number % 2 == 0) {
      setText(extension, "program", "");
    }
  }
  fileext(form);
  const Rows sound = rowsOf(form);
  EXPECT_EQ(sound.size(), 3U);
  const int callsOfAll = calls.made;
  EXPECT_EQ(callsOfAll, count);
  for (int first = 1; first <= callsOfAll; ++first) {
    Form42 failing;
    use(failing);
    failing.Is64BitOS = form.Is64BitOS;
    calls = {.made = 0, .connections = 0, .lastSound = first - 1};
    failing.providers = failingPool(calls);
    fileext(failing);
    const Rows rows = rowsOf(failing);
    EXPECT_TRUE(std::ranges::includes(sound, rows)) << first;
    EXPECT_EQ(rows.size(), static_cast<std::size_t>((first - 1) / 2)) << first;
  }
}

TEST_P(ProviderRoadsTest, AServiceThatCannotBeReachedReportsNothing) {
  makeKey(extensions + "\\.pr\\OpenWithProgids");
  form.providers = std::make_shared<StdRegProvPool>(
      [](ProviderRoad, ProviderArchitecture) { return std::unique_ptr<StdRegProv>(); });
  fileext(form);
  EXPECT_EQ(form.View2.count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Roads, ProviderRoadsTest,
                         ::testing::Values(ProviderRoad::Direct, ProviderRoad::Service),
                         [](const auto& road) {
                           return road.param == ProviderRoad::Direct ? "Direct" : "Service";
                         });

class WholeScanRoadsTest : public fixture::ComputerFixture {
 protected:
  ~WholeScanRoadsTest() override {
    removeKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Gone");
  }

  // By a pool of its own, if one is given.
  static Rows scanBy(bool asksService, std::shared_ptr<StdRegProvPool> pool = nullptr) {
    Form42 scanned;
    scanned.providers = std::move(pool);
    scanned.programFolder = "C:\\WholeScanRoadsTest";
    scanned.dialogs.show = [](const UserMessage&) { return Answer::No; };
    scanned.safeguardChoices = {{&Safeguards::asksService, asksService, "road"}};
    Form_Load(scanned);
    for (std::size_t row = 1; row <= scanned.View1.count(); ++row) {
      scanned.View1.setChecked(row, true);
    }
    scanned.cmd_start.click();
    EXPECT_EQ(scanned.safeguards.asksService, asksService);
    return rowsOf(scanned);
  }

  // Rows whose fields go to a row by its number change with what was found before them.
  static Rows withoutNumberedRows(Rows rows) {
    std::erase_if(rows, [](const std::vector<std::string>& row) {
      constexpr std::array<std::string_view, 5> kinds{"2", "4", "5", "55", "56"};
      return std::ranges::find(kinds, row[2]) != kinds.end() || row[2].empty();
    });
    return rows;
  }

  static void makeFindings() {
    setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Fonts", "Gone",
            "gone.ttf");
    setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Gone",
            "%ProgramFiles%\\gone.exe", REG_EXPAND_SZ);
    setText("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Gone",
            "UninstallString", "C:\\Gone\\grün.exe");
  }
};

TEST_F(WholeScanRoadsTest, AWholeScanFindsTheSameByBothRoads) {
  makeFindings();
  const Rows direct = scanBy(false);
  EXPECT_GE(direct.size(), 3U);
  EXPECT_EQ(scanBy(true), direct);
}

TEST_F(WholeScanRoadsTest, AProviderThatStopsAnsweringAddsNoRow) {
  makeFindings();
  for (const bool asksService : {false, true}) {
    Calls calls;
    const Rows sound = withoutNumberedRows(scanBy(asksService, failingPool(calls)));
    const int callsOfAll = calls.made;
    for (const int lastSound : {0, callsOfAll / 2}) {
      calls = {.made = 0, .connections = 0, .lastSound = lastSound};
      const Rows rows = withoutNumberedRows(scanBy(asksService, failingPool(calls)));
      EXPECT_TRUE(std::ranges::includes(sound, rows)) << lastSound;
      EXPECT_LT(rows.size(), sound.size()) << lastSound;
    }
  }
}

}  // namespace
}  // namespace zelvreg
