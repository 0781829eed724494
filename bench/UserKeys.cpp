// What the shell keeps for the user, and what is installed.
#include <array>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string windows = "\\Microsoft\\Windows\\CurrentVersion";
const std::string explorer = userSoftware + windows + "\\Explorer";
const std::string compatibility =
    std::string(userSoftware) + "\\Microsoft\\Windows NT\\CurrentVersion\\AppCompatFlags";

void writeUninstallRecords(const Making& making, const std::string& software, View view,
                           std::size_t perMillion) {
  const std::string list = software + windows + "\\Uninstall";
  making.registry.container(list);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string program = making.files.any(FileKind::Program, view, making.random);
    making.registry.key(list + "\\" + making.guid(number, count));
    making.registry.text("DisplayName", "Product " + padded(number, 5));
    making.registry.text("DisplayVersion", "1." + std::to_string(making.random.below(100)));
    making.registry.text("Publisher", "Vendor");
    making.registry.text("InstallLocation", folderOf(program));
    making.registry.text("DisplayIcon", program + ",0");
    making.registry.text("UninstallString", "\"" + program + "\" /remove");
    making.registry.text("InstallDate", "20250615");
    making.registry.number("EstimatedSize",
                           static_cast<std::uint32_t>(making.random.below(90'000)));
    making.registry.number("NoModify", 1);
  }
}

void writeRunKey(const Making& making, const std::string& software, View view,
                 std::size_t perMillion) {
  making.registry.container(software + windows + "\\Run");
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    making.registry.text(
        "Program " + padded(number, 4),
        "\"" + making.files.any(FileKind::Program, view, making.random) + "\" /background");
  }
}

void writeFileExtensions(const Making& making) {
  making.registry.container(explorer + "\\FileExts");
  const std::size_t count = making.share(1500);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string path = explorer + "\\FileExts\\.x" + padded(number, 5);
    making.registry.key(path);
    making.registry.key(path + "\\OpenWithList");
    making.registry.text("a", "app" + padded(making.random.below(1000), 5) + ".exe");
    if (!making.random.oneIn(10)) {
      making.registry.key(path + "\\OpenWithProgids");
      making.registry.binary("File." + padded(number, 5), 0);
    }
  }
}

void writeRecentList(const Making& making, const std::string& path, std::size_t entries) {
  making.registry.container(path);
  for (std::size_t number = 0; number < entries; ++number) {
    making.registry.binary(std::to_string(number), making.random.bits());
  }
  making.registry.binary("MRUListEx", making.random.bits());
}

void writeRecentLists(const Making& making) {
  constexpr std::array flatLists{"StreamMRU",
                                 "TypedPaths",
                                 "WordWheelQuery",
                                 "RunMRU",
                                 "ComDlg32\\LastVisitedPidlMRULegacy",
                                 "ComDlg32\\LastVisitedPidlMRU"};
  constexpr std::array listsByExtension{"RecentDocs", "ComDlg32\\OpenSavePidlMRU"};
  for (const char* list : flatLists) {
    writeRecentList(making, explorer + "\\" + list, 20);
  }
  for (const char* list : listsByExtension) {
    writeRecentList(making, explorer + "\\" + list, 100);
    const std::size_t count = making.share(150);
    for (std::size_t number = 0; number < count; ++number) {
      writeRecentList(making, explorer + "\\" + list + "\\.x" + padded(number, 5), 10);
    }
  }
}

// Lists whose values are named by the paths of programs.
void writeProgramList(const Making& making, const std::string& path, std::size_t perMillion) {
  making.registry.container(path);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const View view = number % 2 == 0 ? View::Bits64 : View::Bits32;
    making.registry.text(making.files.distinct(FileKind::Program, view, number / 2, making.random),
                         "Program " + padded(number, 5));
  }
}

}  // namespace

void writeInstalledPrograms(const Making& making) {
  writeUninstallRecords(making, machineSoftware, View::Bits64, 700);
  writeUninstallRecords(making, machineSoftware32, View::Bits32, 500);
  writeUninstallRecords(making, userSoftware, View::Bits64, 60);
  writeRunKey(making, machineSoftware, View::Bits64, 40);
  writeRunKey(making, machineSoftware32, View::Bits32, 20);
  writeRunKey(making, userSoftware, View::Bits64, 30);
}

void writeUserKeys(const Making& making) {
  writeFileExtensions(making);
  writeRecentLists(making);
  writeProgramList(making, compatibility + "\\Compatibility Assistant\\Store", 500);
  writeProgramList(making, compatibility + "\\Layers", 200);
  writeProgramList(making,
                   std::string(userSoftware) +
                       "\\Classes\\Local Settings\\Software\\Microsoft\\"
                       "Windows\\Shell\\MuiCache",
                   1500);
}

}  // namespace zelvreg::bench
