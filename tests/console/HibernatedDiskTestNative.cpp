// Disks on which Windows may sleep, with every command; the Windows program takes no disk.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <functional>

#include "console/CommandRun.h"
#include "machine/OfflineDiskFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

// Puts something where Windows keeps its memory.
struct SleepState {
  const char* name;
  std::function<void(const std::filesystem::path& file)> make;
};

SleepState startingWith(const char* name, const std::string& start) {
  return {name, [start](const std::filesystem::path& file) {
            std::ofstream(file, std::ios::binary) << start;
          }};
}

SleepState linkTo(const char* name, const std::string& start) {
  return {name, [start](const std::filesystem::path& file) {
            const auto target = file.parent_path() / "elsewhere.sys";
            if (!start.empty()) {
              std::ofstream(target, std::ios::binary) << start;
            }
            std::filesystem::create_symlink(target, file);
          }};
}

const std::vector<SleepState>& asleep() {
  static const std::vector<SleepState> states{
      startingWith("HIBR", "HIBR"s + std::string(4096, '\0')),
      startingWith("hibr", "hibr"s + std::string(4096, '\0')),
      startingWith("its first bytes alone", "hibr"),
      linkTo("a link", "wake"),
      linkTo("a link to nothing", ""),
      {"a pipe",
       [](const std::filesystem::path& file) { EXPECT_EQ(mkfifo(file.c_str(), 0600), 0); }}};
  return states;
}

const std::vector<SleepState>& awake() {
  static const std::vector<SleepState> states{
      {"nothing", [](const std::filesystem::path&) {}},
      startingWith("wake", "wake"s + std::string(4096, '\0')),
      startingWith("RSTR", "RSTR"s + std::string(4096, '\0')),
      startingWith("zeros", std::string(4096, '\0')),
      startingWith("other bytes", "Hibr"s + std::string(4096, 'x')),
      startingWith("three bytes", "HIB"),
      startingWith("an empty file", ""),
      {"a folder",
       [](const std::filesystem::path& file) { std::filesystem::create_directory(file); }}};
  return states;
}

// What asks, refuses or writes nothing on this disk for a reason of its own must not come to that.
const std::vector<Words>& writing() {
  static const std::vector<Words> commands{
      {"fix", "--yes", "--only", "fonts"},
      {"fix", "--yes", "--only", "fonts", "--user", "all"},
      {"fix", "--dry-run", "--only", "fonts"},
      {"undo", "restore", "1"},
      {"undo", "restore", "1", "--journal"},
      {"undo", "restore-export", "EXPORT"},
      {"undo", "remove", "1"},
      {"undo", "on"},
      {"undo", "off"},
      {"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software\Other)"},
      {"exclude", "remove", "1"},
      {"languages", "use", "german"},
      {"w4"},
      {"w4-c4"},
      {"r"},
      {"r-c"}};
  return commands;
}

const std::vector<Words>& reading() {
  static const std::vector<Words> commands{{"scan", "--only", "fonts"},
                                           {"scan", "--only", "fonts", "--json"},
                                           {"scan", "--user", "all"},
                                           {"search", "Gone", "--values"},
                                           {"undo", "list"},
                                           {"exclude", "list"},
                                           {"languages"}};
  return commands;
}

class HibernatedDiskTest : public fixture::OfflineDiskTest {
 protected:
  void SetUp() override {
    constexpr const char* fonts = R"(Microsoft\Windows NT\CurrentVersion\Fonts)";
    disk.write("Windows/System32/kernel32.dll", "");
    hive(anna).text("Software", "x", "old");
    hive(software).text(fonts, "Gone", R"(C:\gone.ttf)");
    ASSERT_EQ(run({"undo", "on"}), nothingFound) << said;
    ASSERT_EQ(run({"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software\X)"}), nothingFound) << said;
    ASSERT_EQ(run({"fix", "--yes", "--all", "--only", "fonts"}), nothingFound) << said;
    bringBack();
  }

  // Undoes the only repair that was made, so that what it took is dead again.
  void bringBack() {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(disk.path())) {
      exported = entry.path().extension() == ".reg" ? entry.path().string() : exported;
    }
    ASSERT_EQ(run({"undo", "restore-export", exported}), nothingFound) << said;
  }

  int run(Words arguments) {
    std::ranges::replace(arguments, "EXPORT"s, exported);
    arguments.insert(arguments.end(), options.begin(), options.end());
    CommandRun command;
    const int status = command.ended("--offline", disk.path().string(), std::move(arguments));
    said = command.error.str();
    printed = command.out.str();
    return status;
  }

  [[nodiscard]] auto lines() const { return std::ranges::count(said, '\n'); }

  // Everything that writes says once why it does not; everything that reads says so and goes on.
  void isOnlyRead() {
    const auto files = allFiles();
    for (const Words& command : writing()) {
      SCOPED_TRACE(command.front() + " " + (command.size() > 1 ? command[1] : ""));
      EXPECT_EQ(run(command), failed);
      EXPECT_EQ(lines(), 1) << said;
      EXPECT_NE(said.find("hibernated"), std::string::npos) << said;
      EXPECT_NE(said.find("; nothing was "), std::string::npos) << said;
    }
    for (const Words& command : reading()) {
      SCOPED_TRACE(command.front());
      EXPECT_NE(run(command), failed);
      EXPECT_EQ(lines(), 1) << said;
      EXPECT_NE(said.find("; what is read here may be old\n"), std::string::npos) << said;
    }
    EXPECT_TRUE(allFiles() == files);
  }

  std::string exported;
  Words options;
  std::string said;
  std::string printed;
};

TEST_F(HibernatedDiskTest, IsReadByEveryCommandAndWrittenByNone) {
  for (const SleepState& state : asleep()) {
    SCOPED_TRACE(state.name);
    state.make(disk.path() / "hiberfil.sys");
    isOnlyRead();
    std::filesystem::remove(disk.path() / "hiberfil.sys");
    std::filesystem::remove(disk.path() / "elsewhere.sys");
  }
}

TEST_F(HibernatedDiskTest, IsAsleepWhereAnotherDriveOfItIs) {
  const fixture::TemporaryFolder other;
  options = Words{"--drive", "D=" + other.path().string()};
  EXPECT_EQ(run({"fix", "--dry-run", "--only", "fonts"}), problemsFound) << said;
  other.write("HiberFil.Sys", "hibr");
  isOnlyRead();
}

TEST_F(HibernatedDiskTest, WasWokenUpWhereTheFileSaysAnythingElse) {
  for (const SleepState& state : awake()) {
    SCOPED_TRACE(state.name);
    state.make(disk.path() / "hiberfil.sys");
    for (const Words& command : reading()) {
      EXPECT_NE(run(command), failed) << command.front();
      EXPECT_EQ(said, "") << command.front();
    }
    EXPECT_EQ(run({"fix", "--yes", "--all", "--only", "fonts"}), nothingFound) << said;
    EXPECT_EQ(run({"scan", "--only", "fonts"}), nothingFound) << said;
    bringBack();
    EXPECT_EQ(run({"scan", "--only", "fonts"}), problemsFound) << said;
    std::filesystem::remove(disk.path() / "hiberfil.sys");
  }
}

TEST_F(HibernatedDiskTest, SaysOfEachHiveThatItIs) {
  disk.write("hiberfil.sys", "HIBR");
  EXPECT_EQ(run({"scan", "--only", "fonts", "--json"}), problemsFound);
  const auto hives = fixture::parsedJson(printed)["hives"];
  EXPECT_EQ(hives.size(), 2U);
  for (const auto& hive : hives) {
    EXPECT_EQ(hive["state"], "hibernated");
    EXPECT_NE(hive["why"].get<std::string>().find("powercfg /h off"), std::string::npos) << hive;
  }
}

}  // namespace
}  // namespace zelvreg::console
