// The demo machine is a folder that stands for a computer, which the Windows program does not take.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "console/Commands.h"
#include "machine/TemporaryFolder.h"
#include "support/SourceFolder.h"

namespace zelvreg::console {
namespace {

constexpr const char* fontsReported = "Software\\Microsoft\\windows\\currentversion\\fonts";
constexpr const char* dllsReported =
    "Software\\Wow6432Node\\Microsoft\\windows\\currentversion\\SharedDlls";
constexpr const char* spell = "C:\\Program Files\\Common Files\\Northwind\\nwspell.dll";
constexpr const char* systemDll = "C:\\Windows\\System32\\nwgone.dll";
constexpr const char* bold = "C:\\Program Files (x86)\\Common Files\\Harbour\\hbold.dll";

nlohmann::json finding(const char* location, const char* badValue, const char* kind,
                       const char* key, const char* icon) {
  return {{"location", location}, {"badValue", badValue},
          {"kindCode", kind},     {"rootName", *kind == '\0' ? "" : "HKEY_LOCAL_MACHINE"},
          {"subKey", key},        {"iconKey", icon},
          {"checked", true}};
}

// Scans a copy of the demo machine from the command line on.
nlohmann::json scanDemo(const std::string& only, int& status) {
  const fixture::TemporaryFolder copy;
  std::filesystem::copy(
      sourceFolder() + "/demo/machine", copy.path(),
      std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
  const std::string folder = copy.path().string();
  const std::vector<const char*> arguments{"zelvreg", "--machine", folder.c_str(), "scan",
                                           "--json",  "--only",    only.c_str()};
  const auto parsed = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
  const auto computer = Computer::open(parsed.options.target);
  std::ostringstream out;
  std::ostringstream error;
  status = runCommand(parsed.options, *computer, {.out = out, .error = error});
  EXPECT_EQ(error.str(), "");
  return nlohmann::json::parse(out.str());
}

TEST(DemoMachine, TheScanOfFontsAndSharedDllsIsAsItsPageTells) {
  int status = 0;
  const auto object = scanDemo("font,dll", status);
  const nlohmann::json expected = {
      finding("Quill Script (TrueType)", "quill.ttf", "1", fontsReported, "a"),
      finding("Northwind Display (TrueType)",
              "C:\\Program Files\\Northwind Atelier\\Fonts\\nwdisplay.ttf", "1", fontsReported,
              "a"),
      finding("Unnamed Face (TrueType)", "", "1", fontsReported, "a"),
      finding(spell, spell, "2", dllsReported, "b"),
      finding(systemDll, systemDll, "2", dllsReported, "b"),
      finding(spell, bold, "2", dllsReported, "b"),
      finding(systemDll, "", "", "", ""),
      finding(bold, "", "", "", ""),
  };
  EXPECT_EQ(object["findings"], expected) << object["findings"].dump(2);
  EXPECT_EQ(object["total"], 8);
  EXPECT_EQ(object["categories"][0]["problems"], "3");
  EXPECT_EQ(object["categories"][1]["problems"], "5");
  EXPECT_EQ(status, problemsFound);
}

TEST(DemoMachine, RowsThatWereNotAskedForStayUnticked) {
  int status = 0;
  const auto object = scanDemo("fonts", status);
  EXPECT_EQ(object["total"], 3);
  EXPECT_EQ(object["categories"][1]["checked"], false);
  EXPECT_EQ(object["categories"][1]["problems"], "");
}

}  // namespace
}  // namespace zelvreg::console
