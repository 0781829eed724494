#include "machine/computer/RecordFiles.h"

#include <charconv>
#include <functional>
#include <optional>

#include "machine/base/HostName.h"
#include "machine/base/MachineError.h"
#include "machine/computer/MachineSettings.h"
#include "machine/files/Drives.h"
#include "machine/registry/Registry.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

using Reader = std::function<void(std::string_view path, std::string_view what)>;

// Gives each record to `read`; what is wrong with one is told with the file's name and the line's
// number in front.
void readRecords(std::string_view content, const std::string& fileName, const Reader& read) {
  int number = 0;
  for (const std::string_view line : linesOf(content)) {
    ++number;
    if (line.empty()) continue;
    const std::size_t tab = line.find('\t');
    try {
      if (!isUtf8(line)) throw MachineError("the line is not UTF-8; save the file as UTF-8");
      if (tab == std::string_view::npos) {
        throw MachineError("there is no tab; write the path, a tab and what it has");
      }
      read(line.substr(0, tab), line.substr(tab + 1));
    } catch (const MachineError& error) {
      throw MachineError(fileName + ":" + std::to_string(number) + ": " + error.what());
    }
  }
}

struct NamedFile {
  std::string path;  // the true one
  bool isFolder = false;
};

// What a record is about; it need not be there.
NamedFile namedFile(Drives& drives, std::string_view path) {
  const std::u16string text = utf16(path);
  const Place place = drives.findTrue(text);
  NamedFile named{place.exists() ? place.path() : drives.truePath(text), place.isFolder};
  if (named.path.empty()) {
    throw MachineError("\"" + std::string(path) +
                       "\" is neither a key nor a file; begin it with HKEY_… or with a drive");
  }
  return named;
}

std::optional<DWORD> numberOf(std::string_view text) {
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  if (hex) text.remove_prefix(2);
  DWORD number = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), number, hex ? 16 : 10);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

void readSecurities(std::string_view content, Registry& registry, Drives& drives) {
  readRecords(content, "security.txt", [&](std::string_view path, std::string_view sddl) {
    SecurityDescriptor descriptor = parseSddl(sddl);
    if (path.starts_with("HKEY_")) {
      registry.setSecurity(path, std::move(descriptor));
    } else {
      drives.records().setSecurity(namedFile(drives, path).path, std::move(descriptor));
    }
  });
}

std::string writeSecurities(const Registry& registry, Drives& drives) {
  std::string content;
  const auto write = [&content](const auto& records) {
    for (const auto& [path, descriptor] : records) {
      content += path + "\t" + formatSddl(descriptor) + "\n";
    }
  };
  write(registry.securities());
  write(drives.records().allSecurities());
  return content;
}

void readAttributes(std::string_view content, Drives& drives) {
  readRecords(content, "attributes.txt", [&](std::string_view path, std::string_view text) {
    const auto number = numberOf(text);
    if (!number) {
      throw MachineError("\"" + std::string(text) + "\" is no number; write the attributes' sum");
    }
    const NamedFile file = namedFile(drives, path);
    drives.records().setAttributes(file.path, file.isFolder, *number);
  });
}

std::string writeAttributes(Drives& drives) {
  std::string content;
  for (const auto& [path, attributes] : drives.records().allAttributes()) {
    content += path + "\t" + std::to_string(attributes) + "\n";
  }
  return content;
}

}  // namespace zelvreg::machine
