#include "runtime/ShortNames.h"

#include <sys/xattr.h>

#include <array>

#include "machine/Machine.h"
#include "machine/base/CaseFold.h"
#include "machine/files/Drives.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// As the driver of NTFS tells it; empty if the file has none.
std::string shortNameOf(const std::string& file) {
  std::array<char, 64> name{};
  const ssize_t size = getxattr(file.c_str(), "system.ntfs_dos_name", name.data(), name.size());
  return {name.data(), size < 0 ? 0 : static_cast<std::size_t>(size)};
}

// The name in a folder that this short name stands for; the name itself if there is none.
std::string longName(machine::Drives& drives, const std::string& folder, std::string_view name) {
  const machine::Place place = drives.findTrue(utf16(folder));
  if (!place.exists() || !place.isFolder) {
    return std::string(name);
  }
  const auto names = drives.namesIn(place);
  for (const machine::ListedName& listed : *names) {
    if (machine::isSameName(utf16(shortNameOf(place.file + "/" + listed.name)), utf16(name))) {
      return listed.name;
    }
  }
  return std::string(name);
}

}  // namespace

std::string withLongNames(const std::string& path) {
  auto* machine = machine::Machine::current();
  if (machine == nullptr || !machine->isOfflineDisk()) {
    return path;
  }
  std::string result;
  for (const std::string_view name : split(path, "\\")) {
    const bool isDrive = result.empty();
    const std::string folder = isDrive ? std::string() : result + "\\";
    result = isDrive               ? std::string(name)
             : contains(name, "~") ? folder + longName(machine->drives(), folder, name)
                                   : folder + std::string(name);
  }
  return result;
}

}  // namespace zelvreg
