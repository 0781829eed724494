// A disk with several users, each with dead references of the same names.
#ifndef ZELVREG_TESTS_CONSOLE_SEVERAL_USERS_H
#define ZELVREG_TESTS_CONSOLE_SEVERAL_USERS_H

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "console/CommandRun.h"
#include "machine/OfflineDiskFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {

// The name and the SID of a finding's user, its kind, and what is dead.
using Found = std::tuple<std::string, std::string, std::string, std::string>;

class SeveralUsersTest : public fixture::OfflineDiskTest, protected CommandRun {
 protected:
  static constexpr const char* annaSid = "S-1-5-21-7-7-7-1001";
  static constexpr const char* bertSid = "S-1-5-21-7-7-7-1002";
  static constexpr const char* serviceSid = "S-1-5-19";
  static constexpr const char* systemSid = "S-1-5-18";
  static constexpr const char* bert = "Users/Bert/NTUSER.DAT";
  static constexpr const char* carl = "Users/Carl/NTUSER.DAT";
  static constexpr const char* newUsers = "Users/Default/NTUSER.DAT";
  static constexpr const char* service = "Windows/ServiceProfiles/LocalService/NTUSER.DAT";
  static constexpr const char* defaultHive = "Windows/System32/config/DEFAULT";
  static constexpr const char* run = R"(Software\Microsoft\Windows\CurrentVersion\Run)";
  static constexpr const char* server = R"({6B29FC40-CA47-1067-B31D-00DD010662DA})";

  void SetUp() override {
    constexpr const char* list = R"(Microsoft\Windows NT\CurrentVersion\ProfileList\)";
    fixture::HiveBuilder computers = hive(software);
    computers.text(R"(Microsoft\Windows NT\CurrentVersion\Fonts)", "Gone", "C:\\gone.ttf");
    computers.text(list + std::string(annaSid), "ProfileImagePath", R"(C:\Users\Anna)");
    computers.text(list + std::string(bertSid), "ProfileImagePath", R"(%SystemDrive%\Users\Bert)",
                   2);
    computers.text(list + std::string(serviceSid), "ProfileImagePath",
                   R"(%systemroot%\ServiceProfiles\LocalService)", 2);
    for (const char* file : {anna, bert, newUsers, service, defaultHive}) {
      fixture::HiveBuilder user = hive(file);
      user.text(run, "Gone", R"(C:\gone.exe)");
      user.text(run, "Own", R"(%USERPROFILE%\own.exe)", 2);
      user.number(R"(Software\Kept)", "n", 7);
    }
    hive(annasClasses)
        .text(std::string(R"(CLSID\)") + server + R"(\InprocServer32)", "", R"(C:\gone.dll)");
    disk.write("Windows/System32/kernel32.dll", "");
    disk.write("Program Files/there", "");
    for (const char* owner : {"Users/Bert", "Users/Default", "Windows/ServiceProfiles/LocalService",
                              "Windows/System32/config/systemprofile"}) {
      std::filesystem::create_directories(disk.path() / owner);
      disk.write(std::string(owner) + "/own.exe", "");
    }
    // So that Anna is the current user.
    std::filesystem::last_write_time(disk.path() / anna,
                                     std::filesystem::file_time_type::clock::now());
  }

  int onDisk(std::vector<std::string> arguments) {
    return ended("--offline", disk.path().string(), std::move(arguments));
  }

  nlohmann::json result(const std::vector<std::string>& arguments) {
    onDisk(arguments);
    return fixture::parsedJson(out.str());
  }

  static std::multiset<Found> foundIn(const nlohmann::json& object) {
    std::multiset<Found> all;
    for (const auto& finding : object["findings"]) {
      all.emplace(finding["user"], finding["sid"], finding["kindCode"],
                  finding["kindCode"] == "144" ? finding["badValue"] : finding["location"]);
    }
    return all;
  }

  // All hives of the disk.
  [[nodiscard]] std::vector<fixture::HiveContent> contents() const {
    std::vector<fixture::HiveContent> all;
    for (const char* file : {software, anna, annasClasses, bert, newUsers, service, defaultHive}) {
      all.push_back(content(file));
    }
    return all;
  }
};

}  // namespace zelvreg::console

#endif
