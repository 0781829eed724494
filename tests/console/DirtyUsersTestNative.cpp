// All users of a disk of whom some were not shut down cleanly; the Windows program takes no disk.
#include <gtest/gtest.h>

#include <map>

#include "console/SeveralUsers.h"
#include "machine/DirtyDisk.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

// Anna's logs are damaged, Bert's are whole and hold "Later", those of the others are not needed.
class DirtyUsersTest : public SeveralUsersTest {
 protected:
  void SetUp() override {
    SeveralUsersTest::SetUp();
    for (const char* file : {anna, bert}) {
      const std::string before = disk.read(file);
      {
        fixture::HiveBuilder later = hive(file);
        later.text(run, "Gone", R"(C:\gone.exe)");
        later.text(run, "Later", R"(C:\later.exe)");
      }
      fixture::makeDirty(disk, file, before, disk.read(file));
    }
    const std::string log = anna + std::string(".LOG1");
    disk.write(log, disk.read(log).substr(0, 1000));
    disk.write(service + std::string(".LOG1"), "anything");
  }

  static std::vector<std::string> withAll(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--user", "all", "--only", "startup"});
    return arguments;
  }

  // The states of the hives by their files on the disk; each is told once.
  [[nodiscard]] std::map<std::string, std::string> states(const nlohmann::json& object) const {
    std::map<std::string, std::string> all;
    for (const auto& hive : object["hives"]) {
      const std::string file = hive["file"];
      EXPECT_TRUE(all.emplace(fs::relative(file, disk.path()).string(), hive["state"]).second)
          << file;
      const std::string why = hive["why"];
      EXPECT_EQ(why.empty(), hive["state"] != "unreplayable") << hive;
      EXPECT_EQ(hive["pages"] > 0, hive["state"] == "replayed") << hive;
    }
    return all;
  }
  [[nodiscard]] static std::map<std::string, std::string> expectedStates() {
    return {{software, "clean"},   {anna, "unreplayable"}, {annasClasses, "clean"},
            {bert, "replayed"},    {newUsers, "clean"},    {service, "clean"},
            {defaultHive, "clean"}};
  }

  [[nodiscard]] fixture::HiveContent bertsWithLogs() const {
    return fixture::contentOf(machine::HiveFile(disk.path() / bert).source());
  }
};

TEST_F(DirtyUsersTest, AreScannedAndEachHiveIsTold) {
  const auto files = allFiles();
  EXPECT_EQ(onDisk(withAll({"scan", "--json"})), problemsFound) << error.str();
  const auto object = fixture::parsedJson(out.str());
  EXPECT_EQ(states(object), expectedStates());
  const auto found = foundIn(object);
  EXPECT_EQ(found.count({"Bert", bertSid, "144", "Later"}), 1U) << object;
  EXPECT_EQ(found.count({"Anna", annaSid, "144", "Later"}), 0U) << object;
  EXPECT_EQ(found.count({"Anna", annaSid, "144", "Gone"}), 1U) << object;
  EXPECT_NE(error.str().find(std::string(bert) + ": was not shut down cleanly; 1 entry"),
            std::string::npos)
      << error.str();
  EXPECT_NE(error.str().find(std::string(anna) + ": was not shut down cleanly; its logs cannot"),
            std::string::npos)
      << error.str();
  EXPECT_TRUE(allFiles() == files);
}

TEST_F(DirtyUsersTest, AreRepairedButForTheOneWhoseLogsCannotBeTakenOver) {
  const auto files = allFiles();
  const auto berts = bertsWithLogs();
  const auto services = content(service);
  EXPECT_EQ(onDisk(withAll({"fix", "--yes", "--all", "--json"})), failed);
  EXPECT_NE(error.str().find("nothing of Anna is repaired"), std::string::npos) << error.str();
  EXPECT_EQ(states(fixture::parsedJson(out.str())), expectedStates());
  for (const auto& [name, bytes] : files) {
    const bool isAnnas = name.starts_with(anna);
    const bool isLog = name.find(".LOG") != std::string::npos;
    EXPECT_TRUE(!(isAnnas || isLog) || disk.read(name) == bytes) << name;
  }
  const std::string gone = std::string("-\\") + run + "|Gone";
  EXPECT_EQ(fixture::differences(berts, content(bert)),
            (Lines{gone, std::string("-\\") + run + "|Later"}));
  EXPECT_EQ(fixture::differences(services, content(service)), Lines{gone});

  // Afterwards Bert's hive is a clean one, and the repair can be undone.
  auto later = expectedStates();
  later[bert] = "clean";
  EXPECT_EQ(states(result(withAll({"scan", "--json"}))), later);
  for (const auto& entry :
       fs::directory_iterator(disk.path() / "Program Files/zelvreg/backup/registry")) {
    EXPECT_EQ(onDisk({"undo", "restore-export", entry.path().string()}), nothingFound)
        << error.str();
  }
  EXPECT_EQ(fixture::differences(berts, content(bert)), Lines{});
  EXPECT_EQ(fixture::differences(services, content(service)), Lines{});
}

}  // namespace
}  // namespace zelvreg::console
