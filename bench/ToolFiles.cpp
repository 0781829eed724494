#include "ToolFiles.h"

#include <array>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

// Each has a "tool" of every kind.
constexpr std::array toolFolders{
    "Company Tools",
    "Company Tools/100% ready",
    "Company Tools/Smith, Jones",
    "Company Tools/setup.exe files/v1.2.dll",
    "Program Files (x86)/Common Files/Vendor Shared",
    "Program Files/Common Files/Vendor Common",
    "Program Files/Фирма Ελλάς 東京 é 😀",
    "Tools of Ann",
    "ProgramData/Tools",
    "Users/Ann/AppData/Local/Tools",
    "Users/Public/Tools",
    "Windows/SysWOW64/only32",
    "Windows/System32/only64",
    "Windows/Tools",
};
constexpr std::array toolExtensions{".exe", ".dll", ".ico", ".tlb", ".ttf", ".chm", ".vbs", ".ps1"};

constexpr std::array systemFolders{"Windows/System32/", "Windows/SysWOW64/"};
constexpr std::array systemFiles{
    "WindowsPowerShell/v1.0/powershell.exe",
    "cmd.exe",
    "conhost.exe",
    "cscript.exe",
    "dllhost.exe",
    "mscoree.dll",
    "msiexec.exe",
    "reg.exe",
    "regsvr32.exe",
    "rundll32.exe",
    "schtasks.exe",
    "shell32.dll",
    "svchost.exe",
    "wscript.exe",
};
constexpr std::array singleFiles{
    "Program Files/App Paths Tools/onapppaths.exe",
    "Company Tools/onlybatch.bat",
    "Program Files/Path Tools/onpath.exe",
    "Tools of Ann/bin/onuserpath.exe",
    "Tools of Ann/onuserapppaths.exe",
    "Users/Ann/AppData/Local/Vendor/Update.exe",
    "Users/Ann/AppData/Local/Vendor/app-1.0/App.exe",
    "Windows/SysWOW64/only32.exe",
    "Windows/explorer.exe",
    "Windows/notepad.exe",
};

void writeEmpty(const fs::path& file) {
  fs::create_directories(file.parent_path());
  if (!std::ofstream(file, std::ios::binary)) {
    throw std::runtime_error(file.string() + " cannot be made; check the room left");
  }
}

void writeTools(const fs::path& folder) {
  for (const char* extension : toolExtensions) {
    writeEmpty(folder / (std::string("tool") + extension));
  }
}

}  // namespace

std::string deepFolders() {
  constexpr std::size_t longName = 100;
  return std::string(longName, 'a') + "\\" + std::string(longName, 'b') + "\\" +
         std::string(longName, 'c');
}

void writeToolFiles(const fs::path& drive) {
  for (const char* folder : toolFolders) {
    writeTools(drive / folder);
  }
  std::string deep = deepFolders();
  std::replace(deep.begin(), deep.end(), '\\', '/');
  writeTools(drive / "Long" / deep);
  for (const std::string folder : systemFolders) {
    for (const char* file : systemFiles) {
      writeEmpty(drive / (folder + file));
    }
  }
  for (const char* file : singleFiles) {
    writeEmpty(drive / file);
  }
  fs::create_directories(drive / "Links");
  fs::create_directory_symlink("../Company Tools", drive / "Links/Present");
  fs::create_directory_symlink("../Taken Away", drive / "Links/Broken");
}

}  // namespace zelvreg::bench
