#include "DiskMaker.h"

#include <iomanip>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "HiveMaker.h"
#include "MachineMaker.h"
#include "WorkFolder.h"
#include "machine/regfile/RegistryFile.h"
#include "machine/registry/Registry.h"
#include "unicode/Unicode.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;
using machine::Registry;
using machine::RegistryKey;

void setText(Registry& registry, RegistryKey& key, std::u16string_view name,
             const std::string& text) {
  const std::u16string data = utf16(text) + u'\0';
  registry.setValue(key, name, REG_SZ, std::as_bytes(std::span(data)));
}

void addInterfaces(Registry& registry, RegistryKey& above, std::size_t count) {
  for (std::size_t number = 0; number < count; ++number) {
    std::ostringstream guid;
    guid << std::hex << std::uppercase << std::setfill('0') << "{" << std::setw(8) << number
         << "-0000-4000-8000-" << std::setw(12) << number << "}";
    RegistryKey& key = registry.makeChild(above, utf16(guid.str()));
    setText(registry, key, u"", "IMadeInterface" + std::to_string(number));
    setText(registry, registry.makeChild(key, u"NumMethods"), u"", "7");
    for (const char16_t* name : {u"ProxyStubClsid", u"ProxyStubClsid32"}) {
      setText(registry, registry.makeChild(key, name), u"",
              "{00020424-0000-0000-C000-000000000046}");
    }
    RegistryKey& library = registry.makeChild(key, u"TypeLib");
    setText(registry, library, u"", guid.str());
    setText(registry, library, u"Version", "1.0");
  }
}

}  // namespace

fs::path makeDisk(const fs::path& folder, const DiskSize& size) {
  const WorkFolder work;
  const fs::path source = work.path() / "machine";
  makeMachine(source, {.keys = size.machineKeys, .seed = size.seed});
  constexpr int bits = 64;
  Registry registry(bits, "S-1-5-21-1-1-1-1001");
  static_cast<void>(machine::readRegistryFile(source / "registry.reg", registry));
  RegistryKey& software = *registry.find("HKEY_LOCAL_MACHINE\\SOFTWARE");
  addInterfaces(registry, *registry.find("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\Interface"),
                size.interfaces);
  const fs::path config = folder / "Windows" / "System32" / "config";
  fs::create_directories(config);
  makeHive(config / "SOFTWARE", registry, software);
  return config / "SOFTWARE";
}

}  // namespace zelvreg::bench
