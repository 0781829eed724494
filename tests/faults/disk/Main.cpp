// Makes a small disk of a Windows computer with dead references, part of them only in the log of a
// hive, and shows what a hive holds. Two hives of equal content differ in their times.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "LogMaker.h"
#include "machine/HiveBuilder.h"
#include "machine/LibraryContent.h"

namespace {

namespace fs = std::filesystem;
using namespace zelvreg;
using fixture::HiveBuilder;

constexpr const char* usage = R"(fault-disk make DIR
    Makes the disk in the new folder DIR.
fault-disk show HIVE
    Prints the keys and values of a hive as libhivex reads them.
)";

std::string bytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void writeBytes(const fs::path& file, const std::string& bytes) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << bytes;
}

void makeSoftware(const fs::path& file) {
  HiveBuilder hive(file);
  const std::string windows = R"(Microsoft\Windows\CurrentVersion)";
  hive.text(R"(Microsoft\Windows NT\CurrentVersion)", "ProductName", "Windows 10 Pro");
  hive.text(R"(Microsoft\Windows NT\CurrentVersion)", "SystemRoot", R"(C:\Windows)");
  hive.text(windows, "ProgramFilesDir", R"(C:\Program Files)");
  hive.number(windows + R"(\SharedDLLs)", R"(C:\Windows\gone.dll)", 1);
  hive.number(windows + R"(\SharedDLLs)", R"(C:\Windows\System32\here.dll)", 1);
  hive.text(windows + R"(\App Paths\gone.exe)", "", R"(C:\Windows\gone.exe)");
  hive.text(windows + R"(\App Paths\here.exe)", "", R"(C:\Windows\here.exe)");
  hive.text(windows + R"(\Run)", "Gone", R"(C:\Program Files\Gone\gone.exe)");
}

// What was stopped is in the hive with its log; the log brings a dead reference.
void makeUser(const fs::path& file) {
  constexpr std::uint32_t stoppedAt = 10;
  const std::string run = R"(Software\Microsoft\Windows\CurrentVersion\Run)";
  { HiveBuilder(file).text(run, "Here", R"(C:\Windows\here.exe)"); }
  std::string inFile = bytesOf(file);
  { HiveBuilder::onto(file).text(run, "Late", R"(C:\Windows\late.exe)"); }
  const std::string inLog = bytesOf(file);
  const std::string head = bench::newLogHead(inLog, stoppedAt);
  writeBytes(file.string() + ".LOG1",
             head + bench::entryBytes({.sequence = stoppedAt,
                                       .flags = bench::wordAt(inLog, 144) & 1U,
                                       .binsSize = bench::wordAt(inLog, 40),
                                       .pages = bench::changedPages(inFile, inLog, 4096)}));
  writeBytes(file.string() + ".LOG2", "");
  bench::setSequences(inFile, stoppedAt + 1, stoppedAt);
  writeBytes(file, inFile);
}

void makeDisk(const fs::path& root) {
  const fs::path config = root / "Windows/System32/config";
  fs::create_directories(config);
  for (const char* file :
       {"Windows/System32/here.dll", "Windows/SysWOW64/here.dll", "Windows/here.exe",
        "Program Files/Here/here.exe", "Program Files (x86)/Here/here.exe"}) {
    writeBytes(root / file, "here");
  }
  fs::create_directories(root / "Users/Ann");
  makeSoftware(config / "SOFTWARE");
  { HiveBuilder(config / "SYSTEM").number("Select", "Current", 1); }
  makeUser(root / "Users/Ann/NTUSER.DAT");
}

bool showHive(const char* file) {
  const auto content = fixture::libraryContent(file);
  if (!content) {
    return false;
  }
  for (const auto& [name, value] : *content) {
    std::cout << name << (value.empty() ? "" : "=") << value << "\n";
  }
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string task = count == 3 ? arguments[1] : "";
  if (task == "make") {
    makeDisk(arguments[2]);
    return 0;
  }
  if (task == "show") {
    return showHive(arguments[2]) ? 0 : 1;
  }
  std::cerr << usage;
  return 2;
}
