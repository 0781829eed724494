// What one user has says nothing of another, and what is restored goes to nobody else. The Windows
// program takes no disk.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "console/SeveralUsers.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class UsersApartTest : public SeveralUsersTest {
 protected:
  static constexpr const char* shellFolders =
      R"(Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)";

  // How sure the startup program of this name is, by user; those that are not listed are not there.
  std::map<std::string, std::string> confidences(const std::string& name,
                                                 std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {"scan", "--user", "all", "--only", "startup", "--json"});
    const auto object = result(arguments);
    std::map<std::string, std::string> all;
    for (const auto& finding : object["findings"]) {
      if (finding["badValue"] == name) {
        all[finding["user"]] = finding["confidence"];
      }
    }
    return all;
  }

  // The safety export of Bert's repair.
  fs::path bertsExport() {
    EXPECT_EQ(onDisk({"fix", "--yes", "--user", "Bert", "--only", "startup"}), nothingFound)
        << error.str();
    return fs::directory_iterator(exportFolder())->path();
  }
  [[nodiscard]] fs::path exportFolder() const {
    return disk.path() / "Program Files/zelvreg/backup/registry";
  }
  // An export with one text put in the place of another.
  static void edit(const fs::path& file, const std::string& from, const std::string& to) {
    std::u16string text = unitsIn(file);
    const std::u16string wanted = utf16(from);
    const std::size_t found = text.find(wanted);
    ASSERT_NE(found, std::u16string::npos) << file;
    write(file, text.replace(found, wanted.size(), utf16(to)));
  }
  static std::u16string unitsIn(const fs::path& file) {
    std::u16string units(fs::file_size(file) / 2, u'\0');
    std::ifstream(file, std::ios::binary)
        .read(reinterpret_cast<char*>(units.data()),
              static_cast<std::streamsize>(units.size() * 2));
    return units;
  }
  static void write(const fs::path& file, const std::u16string& units) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(units.data()),
               static_cast<std::streamsize>(units.size() * 2));
  }
  // Whether restoring it is refused and changes no hive.
  bool isRefused(const fs::path& file) {
    const auto before = contents();
    const int status = onDisk({"undo", "restore-export", file.string()});
    return status == failed && contents() == before;
  }
};

using Confidences = std::map<std::string, std::string>;

TEST_F(UsersApartTest, FoldersThatOneUserHasMovedAreMovedForNobodyElse) {
  disk.write("Moved/own.exe", "");
  for (const char* file : {anna, bert}) {
    fixture::HiveBuilder user = more(file);
    user.text(run, "Roaming", R"(%APPDATA%\own.exe)", 2);
    user.text(run, "Local", R"(%LOCALAPPDATA%\own.exe)", 2);
  }
  more(bert).text(shellFolders, "AppData", R"(C:\Moved)", 2);
  more(bert).text(shellFolders, "Local AppData", R"(%SystemDrive%\Moved)", 2);
  for (const char* name : {"Roaming", "Local"}) {
    const Confidences found = confidences(name);
    EXPECT_EQ(found.at("Anna"), "sure");
    EXPECT_TRUE(!found.contains("Bert") || found.at("Bert") == "unsure") << name;
  }
}

TEST_F(UsersApartTest, VariablesThatOneUserHasAreNobodyElses) {
  disk.write("Tools/own.exe", "");
  for (const char* file : {anna, bert}) {
    more(file).text(run, "Tool", R"(%TOOLS%\own.exe)", 2);
  }
  more(anna).text("Environment", "TOOLS", R"(C:\Nowhere)");
  more(bert).text("Environment", "TOOLS", R"(C:\Tools)");
  const Confidences found = confidences("Tool");
  EXPECT_EQ(found.at("Anna"), "sure");
  EXPECT_TRUE(!found.contains("Bert") || found.at("Bert") == "unsure");
}

// The letter may be a disk of the computer for everybody else.
TEST_F(UsersApartTest, ALetterThatOneUserHasGivenToAShareIsTheUsersAlone) {
  const fixture::TemporaryFolder drive;
  for (const char* file : {anna, bert}) {
    more(file).text(run, "Lettered", R"(N:\gone.exe)");
  }
  more(bert).text(R"(Network\n)", "RemotePath", R"(\\server\share)");
  const Confidences expected{{"Anna", "sure"}, {"Bert", "unsure"}};
  EXPECT_EQ(confidences("Lettered", {"--drive", "N=" + drive.path().string()}), expected);
}

TEST_F(UsersApartTest, AnExportWhoseUserWasEditedIsRefused) {
  const fs::path file = bertsExport();
  for (const char* to : {"S-1-5-21-7-7-7-1002\\Software", "S-1-5-21-7-7-7-1001_Classes", ".DEFAULT",
                         "..", "", "Anna"}) {
    const fs::path edited = exportFolder() / "edited.reg";
    fs::copy_file(file, edited, fs::copy_options::overwrite_existing);
    edit(edited, bertSid, to);
    EXPECT_TRUE(isRefused(edited)) << to << error.str();
    EXPECT_NE(error.str().find("security identifier"), std::string::npos) << error.str();
  }
}

TEST_F(UsersApartTest, TwoExportsInOneFileAreRefused) {
  const fs::path file = bertsExport();
  EXPECT_EQ(onDisk({"fix", "--yes", "--user", "Anna", "--only", "startup"}), nothingFound);
  const auto isBerts = [&](const fs::path& other) { return fs::equivalent(other, file); };
  for (const auto& entry : fs::directory_iterator(exportFolder())) {
    if (!isBerts(entry.path())) {
      const std::u16string annas = unitsIn(entry.path());
      // Without the first line, which a file has once.
      write(file, unitsIn(file) + annas.substr(annas.find(u'\n') + 1));
    }
  }
  EXPECT_TRUE(isRefused(file)) << error.str();
  EXPECT_NE(error.str().find("second user"), std::string::npos) << error.str();
}

TEST_F(UsersApartTest, AUserOfTheSameNameIsSomebodyElse) {
  const fs::path file = bertsExport();
  // Bert's account was deleted; another Bert has come.
  more(software).text(std::string(R"(Microsoft\Windows NT\CurrentVersion\ProfileList\)") + bertSid,
                      "ProfileImagePath", R"(C:\Users\Nobody)", 2);
  more(software).text(R"(Microsoft\Windows NT\CurrentVersion\ProfileList\S-1-5-21-7-7-7-1099)",
                      "ProfileImagePath", R"(C:\Users\Bert)", 2);
  EXPECT_TRUE(isRefused(file)) << error.str();
  EXPECT_NE(error.str().find(bertSid), std::string::npos) << error.str();
}

TEST_F(UsersApartTest, TheUndoOfOneUserLeavesTheOthersRepaired) {
  EXPECT_EQ(onDisk({"undo", "on"}), nothingFound);
  const auto before = contents();
  EXPECT_EQ(onDisk({"fix", "--yes", "--user", "all", "--only", "startup"}), nothingFound);
  EXPECT_EQ(onDisk({"undo", "list"}), nothingFound);
  std::string line;
  int entry = 0;
  for (std::istringstream lines(out.str()); std::getline(lines, line);) {
    if (line.find("Bert") != std::string::npos) {
      entry = std::stoi(line);
    }
  }
  ASSERT_GT(entry, 0) << out.str();
  const auto repaired = contents();
  EXPECT_EQ(onDisk({"undo", "restore", std::to_string(entry)}), nothingFound) << error.str();
  const auto now = contents();
  constexpr std::size_t berts = 3;
  for (std::size_t index = 1; index < now.size(); ++index) {
    EXPECT_EQ(now[index], (index == berts ? before : repaired)[index]) << index;
  }
}

TEST_F(UsersApartTest, ANameInTheListCanNeitherBreakALineNorBeAFormula) {
  // As an NTFS driver shows them; a name of a folder has no control characters on Windows.
  const std::string rightToLeft = "\xE2\x80\xAEtxt.exe";
  for (const std::string& name : {std::string("=cmd()"), std::string("@a,b"), rightToLeft}) {
    hive("Users/" + name + "/NTUSER.DAT").text(run, "Gone", R"(C:\gone.exe)");
  }
  EXPECT_EQ(onDisk({"scan", "--user", "all", "--only", "startup", "--csv"}), problemsFound);
  EXPECT_EQ(out.str().find(",=cmd"), std::string::npos) << out.str();
  EXPECT_EQ(out.str().find("\"@a,b\""), std::string::npos) << out.str();
  EXPECT_EQ(onDisk({"scan", "--user", "all", "--only", "startup"}), problemsFound);
  EXPECT_EQ(out.str().find("\xE2\x80\xAE"), std::string::npos) << out.str();
  const auto object = result({"scan", "--user", "all", "--only", "startup", "--json"});
  std::set<std::string> users;
  for (const auto& finding : object["findings"]) {
    users.insert(finding["user"]);
  }
  EXPECT_TRUE(users.contains("=cmd()") && users.contains("@a,b") && users.contains(rightToLeft));
}

// A list of profiles may hold any text.
TEST_F(UsersApartTest, ANameWithQuotesLinesAndHalfCharactersStaysOneCell) {
  const fixture::TemporaryFolder folder;
  const std::string dead = std::string("\\") + run + "]\n\"Gone\"=\"C:\\\\gone.exe\"\n";
  // C:\+"a, a line feed, b and half a character.
  folder.write("registry.reg",
               std::string("Windows Registry Editor Version 5.00\n\n[HKEY_USERS\\") + bertSid +
                   dead +
                   "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\"
                   "ProfileList\\" +
                   bertSid +
                   "]\n\"ProfileImagePath\"=hex(1):43,00,3a,00,5c,00,2b,00,22,00,61,00,0a,00,62,00,"
                   "00,d8,00,00\n");
  folder.write("C/Windows/System32/kernel32.dll", "");
  const auto scan = [&](const std::string& form) {
    onMachine(folder.path().string(), {"scan", "--user", "all", "--only", "startup", form});
    return out.str();
  };
  EXPECT_NE(scan("--json").find("\"user\": \"+\\\"a\\nb\\ud800\""), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("\"total\": 1"), std::string::npos) << out.str();
  const std::string csv = scan("--csv");
  EXPECT_NE(csv.find(",\"'+\"\"a\nb"), std::string::npos) << csv;
  onMachine(folder.path().string(), {"scan", "--user", "all", "--only", "startup"});
  EXPECT_EQ(out.str().find("a\nb"), std::string::npos) << out.str();
  EXPECT_EQ(error.str().find("a\nb"), std::string::npos) << error.str();
}

}  // namespace
}  // namespace zelvreg::console
