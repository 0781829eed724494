// What the tests of registry files have in common.
#ifndef ZELVREG_TESTS_MACHINE_REGFILE_LOADED_REGISTRY_H
#define ZELVREG_TESTS_MACHINE_REGFILE_LOADED_REGISTRY_H

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>

#include "machine/TemporaryFolder.h"
#include "machine/regfile/RegistryFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {

using machine::Registry;
using machine::RegistryFileForm;
using machine::RegistryKey;
using machine::RegistryValue;
using Encoding = regfile::Form::Encoding;

inline constexpr const char* sid = "S-1-5-21-1-1-1-1001";
inline constexpr const char* version5 = "Windows Registry Editor Version 5.00\n\n";

// A registry read from the bytes of a file.
struct Loaded {
  explicit Loaded(std::string_view bytes, int bits = 64) : registry(bits, sid) {
    const TemporaryFolder folder;
    folder.write("registry.reg", bytes);
    form = readRegistryFile(folder.path() / "registry.reg", registry);
  }

  // Type and bytes of a value, as "type:xx xx"; empty if it is not there.
  std::string value(std::string_view path, std::string_view name) {
    RegistryKey* key = registry.find(path);
    const RegistryValue* found = key == nullptr ? nullptr : registry.values(*key).find(utf16(name));
    if (found == nullptr) {
      return {};
    }
    std::ostringstream text;
    text << std::hex << found->type << ":";
    for (const std::byte byte : found->bytes()) {
      text << " " << std::to_integer<int>(byte);
    }
    return text.str();
  }

  std::string written() { return written(form); }
  std::string written(const RegistryFileForm& used) {
    std::ostringstream output;
    writeRegistryFile(output, registry, used);
    return output.str();
  }

  Registry registry;
  RegistryFileForm form;
};

inline std::string utf16File(std::string_view text) {
  const std::u16string wide = utf16(text);
  return "\xFF\xFE" + std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
}

inline constexpr const char* keyPath = R"(HKEY_LOCAL_MACHINE\K)";

}  // namespace zelvreg::fixture

#endif
