// What the system itself keeps about the machine.
#include <array>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string windows = "\\Microsoft\\Windows\\CurrentVersion";
const std::string windowsNt = "\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* firewallRules =
    "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\"
    "FirewallPolicy\\FirewallRules";

void writeVersions(const Making& making) {
  making.registry.container(machineSoftware + windowsNt);
  making.registry.text("ProductName", "Windows 10 Pro");
  making.registry.text("SystemRoot", "C:\\Windows");
  making.registry.container(machineSoftware + windows);
  making.registry.text("SystemRoot", "C:\\Windows");
  making.registry.container(machineSoftware32 + windows);
  making.registry.text("SystemRoot", "C:\\Windows");
}

void writeFonts(const Making& making) {
  making.registry.container(machineSoftware + windowsNt + "\\Fonts");
  const std::size_t count = making.share(2000);
  for (std::size_t number = 0; number < count; ++number) {
    making.registry.text("Typeface " + padded(number, 5) + " (TrueType)",
                         fileNameOf(making.files.any(FileKind::Font, View::Bits64, making.random)));
  }
}

void writeSharedDlls(const Making& making, View view, std::size_t perMillion) {
  making.registry.container((view == View::Bits64 ? machineSoftware : machineSoftware32) + windows +
                            "\\SharedDLLs");
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    making.registry.number(making.files.distinct(FileKind::Library, view, number, making.random),
                           static_cast<std::uint32_t>(1 + making.random.below(5)));
  }
}

void writeApplicationPaths(const Making& making, View view, std::size_t perMillion) {
  const std::string list =
      (view == View::Bits64 ? machineSoftware : machineSoftware32) + windows + "\\App Paths";
  making.registry.container(list);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string path = making.files.any(FileKind::Program, view, making.random);
    making.registry.key(list + "\\program" + padded(number, 5) + ".exe");
    making.registry.text("", path);
    if (making.random.oneIn(2)) {
      making.registry.text("Path", folderOf(path));
    }
  }
}

void writeHelp(const Making& making, const std::string& key, std::size_t perMillion) {
  making.registry.container(machineSoftware + key);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string path =
        making.files.distinct(FileKind::Help, View::Bits64, number, making.random);
    making.registry.text(fileNameOf(path), folderOf(path));
  }
}

void writeSnapIns(const Making& making) {
  const std::string list = machineSoftware + std::string("\\Microsoft\\MMC\\SnapIns");
  making.registry.container(list);
  const std::size_t count = making.share(150);
  for (std::size_t number = 0; number < count; ++number) {
    making.registry.key(list + "\\FX:" + making.guid(number, count));
    making.registry.text("NameString", "Snap-in " + padded(number, 4));
    making.registry.text("HelpTopic",
                         making.files.any(FileKind::Help, View::Bits64, making.random));
  }
}

void writeFirewallRules(const Making& making) {
  constexpr std::array<const char*, 3> profiles{"Public", "Private", "Domain"};
  making.registry.container(firewallRules);
  const std::size_t count = making.share(1500);
  for (std::size_t number = 0; number < count; ++number) {
    const View view = making.random.oneIn(2) ? View::Bits64 : View::Bits32;
    making.registry.text(making.guid(number, count),
                         std::string("v2.30|Action=Allow|Active=TRUE|Dir=In|Protocol=6|Profile=") +
                             profiles[making.random.below(profiles.size())] +
                             "|App=" + making.files.any(FileKind::Program, view, making.random) +
                             "|Name=Program " + padded(number, 5) + "|");
  }
}

}  // namespace

void writeSystemKeys(const Making& making) {
  writeVersions(making);
  writeFonts(making);
  writeSharedDlls(making, View::Bits64, 2400);
  writeSharedDlls(making, View::Bits32, 1600);
  writeApplicationPaths(making, View::Bits64, 600);
  writeApplicationPaths(making, View::Bits32, 300);
  writeHelp(making, "\\Microsoft\\Windows\\Help", 60);
  writeHelp(making, "\\Microsoft\\Windows\\HTML Help", 250);
  writeSnapIns(making);
  writeFirewallRules(making);
}

std::string Making::guid(std::size_t number, std::size_t count) const {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::string_view form = "{00000000-0000-0000-0000-000000000000}";
  const std::uint64_t step = 0x100000000ULL / count;
  std::uint64_t bits = (number * step + random.below(step)) << 32 | (random.bits() & 0xFFFFFFFF);
  std::string text(form);
  int used = 0;
  for (char& digit : text) {
    if (digit != '0') {
      continue;
    }
    if (used++ == 16) {
      bits = random.bits();
    }
    digit = digits[bits >> 60];
    bits <<= 4;
  }
  return text;
}

}  // namespace zelvreg::bench
