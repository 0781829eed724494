// What the system itself keeps about the machine.
#include <array>

#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

const std::string windowsNt = "\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* firewallRules =
    "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\"
    "FirewallPolicy\\FirewallRules";

std::string_view softwareOf(View view) {
  return view == View::Bits64 ? machineSoftware : machineSoftware32;
}

void writeVersions(const Making& making) {
  making.registry.container(machineSoftware + windowsNt);
  making.registry.text("ProductName", "Windows 10 Pro");
  making.registry.text("SystemRoot", "C:\\Windows");
  for (const View view : {View::Bits64, View::Bits32}) {
    making.registry.container(std::string(softwareOf(view)) + windowsKey);
    making.registry.text("SystemRoot", "C:\\Windows");
  }
}

void writeFont(const Making& making, const std::string& list, const std::string& name,
               const Reference& font) {
  making.registry.reference(name, font.text);
  making.label("1", list, name, font);
}

void writeFonts(const Making& making) {
  const std::string list = machineSoftware + windowsNt + "\\Fonts";
  making.registry.container(list);
  const std::size_t count = making.share(2000);
  for (std::size_t number = 0; number < count; ++number) {
    Reference font = making.files.any(FileKind::Font, View::Bits64, making.random);
    font.text = fileNameOf(font.text);
    writeFont(making, list, "Typeface " + padded(number, 5) + " (TrueType)", font);
  }
  std::size_t number = 0;
  for (std::size_t pair = 0; pair < making.share(20); ++pair) {
    writeFont(making, list, "Whole path " + padded(number++, 4),
              {making.files.live(FileKind::Font, View::Bits64, making.random), Truth::Alive,
               "font-by-whole-path"});
    writeFont(making, list, "Whole path " + padded(number++, 4),
              {making.files.deadFile(FileKind::Font, View::Bits64, making.random), Truth::Dead,
               "font-by-whole-path"});
  }
  writeFont(making, list, "Without a file", {{}, Truth::Undecidable, "no-text"});
  const Place place{FileKind::Font, View::Bits64, Owner::Machine};
  for (const Reference& font : making.paths.take(place, making.casesOfPlace())) {
    writeFont(making, list, "Whole path " + padded(number++, 4), font);
  }
}

void writeSharedDlls(const Making& making, View view, std::size_t perMillion) {
  const std::string list = std::string(softwareOf(view)) + windowsKey + "\\SharedDLLs";
  making.registry.container(list);
  const auto writeOne = [&](const Reference& library) {
    making.registry.number(library.text, static_cast<std::uint32_t>(1 + making.random.below(5)));
    making.label("2", list, library.text, library);
  };
  // A scan has codes for the first rows of the longer list only.
  const Place place{FileKind::Library, view, Owner::Machine, Use::Name};
  std::vector<Reference> cases = making.paths.take(place, making.casesOfPlace());
  removeRepeated(cases);
  for (const Reference& library : cases) {
    writeOne(library);
  }
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    writeOne(making.files.distinct(FileKind::Library, view, number, making.random));
  }
}

void writeApplicationPath(const Making& making, const std::string& key, const Reference& program) {
  making.registry.key(key);
  making.registry.reference("", program.text);
  making.label("3", key, "", program);
}

void writeApplicationPaths(const Making& making, View view, std::size_t perMillion) {
  const std::string list = std::string(softwareOf(view)) + windowsKey + "\\App Paths";
  making.registry.container(list);
  const std::size_t count = making.share(perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    const Reference program = making.files.any(FileKind::Program, view, making.random);
    writeApplicationPath(making, list + "\\program" + padded(number, 5) + ".exe", program);
    if (making.random.oneIn(2)) {
      making.registry.text("Path", folderOf(program.text));
    }
  }
  std::size_t number = 0;
  const Place place{FileKind::Program, view, Owner::Machine};
  for (const Reference& program : making.paths.take(place, making.casesOfPlace())) {
    writeApplicationPath(making, list + "\\tool" + padded(number++, 5) + ".exe", program);
  }
  if (view == View::Bits64) {
    making.registry.key(list + "\\onapppaths.exe");
    making.registry.text("", "C:\\Program Files\\App Paths Tools\\onapppaths.exe");
  }
}

void writeRule(const Making& making, const std::string& name, const Reference& program) {
  constexpr std::array<const char*, 3> profiles{"Public", "Private", "Domain"};
  making.registry.text(name,
                       std::string("v2.30|Action=Allow|Active=TRUE|Dir=In|Protocol=6|Profile=") +
                           profiles[making.random.below(profiles.size())] + "|App=" + program.text +
                           "|Name=Program|");
  making.label("11", firewallRules, name, program);
}

void writeFirewallRules(const Making& making) {
  making.registry.container(firewallRules);
  const std::size_t count = making.share(1500);
  for (std::size_t number = 0; number < count; ++number) {
    const View view = making.random.oneIn(2) ? View::Bits64 : View::Bits32;
    writeRule(making, making.guid(number, count),
              making.files.any(FileKind::Program, view, making.random));
  }
  std::size_t number = 0;
  const Place place{FileKind::Program, View::Bits64, Owner::Machine};
  for (const Reference& program : making.paths.take(place, making.casesOfPlace())) {
    writeRule(making, "Rule " + padded(number++, 5), program);
  }
  // A scan judges a rule without a bar by the path of the rule before.
  writeRule(making, "Rule before", {"C:\\Nowhere\\gone.exe", Truth::Dead, deadFolderFamily});
  making.registry.text("Rule without a path", "v2.30");
  making.label("11", firewallRules, "Rule without a path",
               {{}, Truth::Undecidable, "rule-without-path"});
}

}  // namespace

void writeSystemKeys(const Making& making) {
  writeVersions(making);
  writeFonts(making);
  writeSharedDlls(making, View::Bits64, 1600);
  writeSharedDlls(making, View::Bits32, 2400);
  writeApplicationPaths(making, View::Bits64, 600);
  writeApplicationPaths(making, View::Bits32, 300);
  writeHelpKeys(making);
  writeFirewallRules(making);
}

}  // namespace zelvreg::bench
