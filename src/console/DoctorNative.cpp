#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "console/Doctor.h"
#include "console/Installation.h"
#include "images/ImagePrograms.h"
#include "images/OwnMounts.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

Fact askForOwnMounts() {
  // Throws where they cannot be had. They are this process's alone, which ends with the command.
  const fs::path folder = images::ownMountFolder();
  return {.isThere = !folder.empty(), .text = "images are mounted for this program alone"};
}

Fact askForWine() {
  const char* path = std::getenv("PATH");
  const std::string folders = path == nullptr ? "" : path;
  for (const std::string_view folder : split(folders, ":")) {
    const fs::path program = fs::path(folder) / "wine";
    if (access(program.c_str(), X_OK) == 0) {
      return {.isThere = true, .text = program.string() + "; it shows the window, zelvreg.exe"};
    }
  }
  return {.isThere = false,
          .text = "only the window program needs it (Debian: apt-get install wine)"};
}

// Where a package puts it: beside the folder of the program.
Fact askForManual() {
  const fs::path pages = fs::path(programFile()).parent_path().parent_path() / "share/man/man1";
  for (const fs::path& folder : std::array{pages, fs::path("/usr/share/man/man1")}) {
    for (const char* name : {"zelvreg.1", "zelvreg.1.gz"}) {
      if (fs::exists(folder / name)) {
        return {.isThere = true, .text = "man zelvreg"};
      }
    }
  }
  return {.isThere = false, .text = "the package of zelvreg has it; here read zelvreg --help"};
}

Fact askForMemory() {
  std::ifstream lines("/proc/meminfo");
  std::string name;
  unsigned long long kilobytes = 0;
  std::string unit;
  unsigned long long whole = 0;
  while (lines >> name >> kilobytes >> unit) {
    if (name == "MemTotal:") {
      whole = kilobytes * 1024;
    } else if (name == "MemAvailable:") {
      return memoryFact(whole, kilobytes * 1024);
    }
  }
  return {.isThere = false, .text = "the system does not say how much there is"};
}

}  // namespace

std::vector<DoctorProbe> doctorProbes(const Streams& streams) {
  return {
      versionProbe(),
      languagesProbe(),
      {.name = "images",
       .isNeeded = false,
       .ask =
           [] { return factOf(images::missingPrograms(), "--image has the programs it needs"); }},
      {.name = "FUSE",
       .isNeeded = false,
       .ask = [] { return factOf(images::missingKernelSupport(), "/dev/fuse can be opened"); }},
      {.name = "mounts", .isNeeded = false, .ask = askForOwnMounts},
      {.name = "Wine", .isNeeded = false, .ask = askForWine},
      {.name = "manual", .isNeeded = false, .ask = askForManual},
      terminalProbe(streams),
      {.name = "memory", .isNeeded = false, .ask = askForMemory},
  };
}

}  // namespace zelvreg::console
