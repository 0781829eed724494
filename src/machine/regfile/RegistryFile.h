// registry.reg, the registry in the registry editor's own export format, read and written. REGEDIT4
// holds its text in code page 1252.
#ifndef ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_H
#define ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_H

#include <filesystem>
#include <ostream>

#include "machine/registry/Registry.h"
#include "regfile/Form.h"

namespace zelvreg::machine {

// How a file was written, so that it can be written so again.
struct RegistryFileForm {
  regfile::Form text;
  bool spellsCurrentUser = true;  // HKEY_CURRENT_USER, else HKEY_USERS\<sid>

  bool operator==(const RegistryFileForm&) const = default;
};

// Adds the file's keys and values to a registry and calls its finishLoading(). Throws MachineError
// ("registry.reg:LINE: what is wrong; what is expected"); the registry must be thrown away then.
RegistryFileForm readRegistryFile(const std::filesystem::path& file, Registry& registry);

// Writes all keys and values, links left out. Reading the result gives the same registry: a form
// that cannot hold all of it (REGEDIT4 with a character that code page 1252 does not have, text
// with half a surrogate pair in UTF-8) gives way to UTF-16. Throws MachineError for a key whose
// name holds a line break, which no form can hold.
void writeRegistryFile(std::ostream& output, Registry& registry, RegistryFileForm form);

}  // namespace zelvreg::machine

#endif
