#include "console/ResultFacts.h"

#include <windows.h>

#include <variant>

#include "registry/RegistryValues.h"
#include "runtime/Sha256.h"
#include "scan/Resolver.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

constexpr const char* windowsKey = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::string text(const char* key, const char* name) {
  const ReadResult read = GetRegistryValue(HiveHandle::LocalMachine, key, name);
  const auto* found = std::get_if<std::string>(&read.value);
  return found == nullptr ? std::string() : *found;
}

std::string number(const char* name) {
  const ReadResult read = GetRegistryValue(HiveHandle::LocalMachine, windowsKey, name);
  const auto* found = std::get_if<std::int32_t>(&read.value);
  return found == nullptr ? std::string() : std::to_string(*found);
}

// Windows 10 and later have numbers; CurrentVersion stays "6.3" there, whatever they are.
std::string versionOfWindows() {
  const std::string major = number("CurrentMajorVersionNumber");
  const std::string release = major.empty() ? text(windowsKey, "CurrentVersion")
                                            : major + "." + number("CurrentMinorVersionNumber");
  const std::string build = text(windowsKey, "CurrentBuild");
  return release.empty() || build.empty() ? release : release + "." + build;
}

// The number is the same however it is written.
std::string identityOfMachine() {
  const std::string made = text("SOFTWARE\\Microsoft\\Cryptography", "MachineGuid");
  return made.empty() ? made : hexadecimal(sha256("zelvreg " + lowerCase(made)));
}

}  // namespace

ComputerFacts factsOfComputer() {
  return {.name = text("SYSTEM\\CurrentControlSet\\Control\\ComputerName\\ComputerName",
                       "ComputerName"),
          .identity = identityOfMachine(),
          .product = text(windowsKey, "ProductName"),
          .version = versionOfWindows(),
          .bits = runsOn64BitWindows() ? 64 : 32,
          .codePage = GetACP()};
}

}  // namespace zelvreg::console
