#include <windows.h>
// shlobj needs windows.h before it.
#include <shlobj.h>

#include <string>

#include "console/Doctor.h"
#include "keys/StdRegProv.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "runtime/PrivateFiles.h"
#include "scan/Settings.h"

namespace zelvreg::console {
namespace {

Fact askForRights() {
  return IsUserAnAdmin() != FALSE
             ? Fact{.isThere = true, .text = "this is an administrator"}
             : Fact{.isThere = false, .text = "a repair needs a prompt that runs as administrator"};
}

// A file beside the program.
Fact askForFile(const char* name, const char* whatIsThere, const char* whatIsMissing) {
  const bool isThere = fileSystemObject::fileExists(programFolder() + "\\" + name);
  return {.isThere = isThere, .text = isThere ? whatIsThere : whatIsMissing};
}

Fact askForWindow() {
  return askForFile("zelvreg.exe", "zelvreg.exe is beside this program",
                    "zelvreg.exe is not beside this program; install zelvreg again");
}

Fact askForBook() {
  return askForFile("zelvhelp.chm", "zelvhelp.chm is beside this program",
                    "zelvhelp.chm is not beside this program; install zelvreg again");
}

Fact askForKind() {
  return {.isThere = true,
          .text = isPortable() ? "portable: its settings are in zelvreg.ini beside it"
                               : "its settings are in the registry"};
}

Fact askForService() {
  return connectService(ProviderArchitecture::Default) != nullptr
             ? Fact{.isThere = true, .text = "--provider service can be used"}
             : Fact{.isThere = false,
                    .text = "the management service does not answer; the program does not need it"};
}

Fact askForFolder() {
  return couldOthersWrite(programFolder() + "\\zelvreg-console.exe")
             ? Fact{.isThere = false,
                    .text = "others can write to " + programFolder() +
                            "; install zelvreg below Program Files"}
             : Fact{.isThere = true, .text = "only administrators can write to " + programFolder()};
}

Fact askForMemory() {
  MEMORYSTATUSEX now{};
  now.dwLength = sizeof(now);
  if (GlobalMemoryStatusEx(&now) == FALSE) {
    return {.isThere = false, .text = "the system does not say how much there is"};
  }
  return memoryFact(now.ullTotalPhys, now.ullAvailPhys);
}

}  // namespace

std::vector<DoctorProbe> doctorProbes(const Streams& streams) {
  return {
      versionProbe(),
      languagesProbe(),
      {.name = "rights", .isNeeded = false, .ask = askForRights},
      {.name = "window", .isNeeded = false, .ask = askForWindow},
      {.name = "help", .isNeeded = false, .ask = askForBook},
      {.name = "kind", .isNeeded = false, .ask = askForKind},
      {.name = "service", .isNeeded = false, .ask = askForService},
      {.name = "folder", .isNeeded = false, .ask = askForFolder},
      terminalProbe(streams),
      {.name = "memory", .isNeeded = false, .ask = askForMemory},
  };
}

}  // namespace zelvreg::console
