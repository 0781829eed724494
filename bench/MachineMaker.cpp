#include "MachineMaker.h"

#include <fstream>
#include <stdexcept>

#include "MachineKeys.h"
#include "ToolFiles.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view settings =
    "[machine]\nbits=64\ncodepage=1252\nuser=Ann\nnow=2026-01-31T13:45:06\n";

void prepareFolder(const fs::path& folder) {
  if (fs::exists(folder) && !(fs::is_directory(folder) && fs::is_empty(folder))) {
    throw std::runtime_error(folder.string() + " is there already; name a new or empty folder");
  }
  fs::create_directories(folder / "C");
}

void writeSettings(const fs::path& file) {
  std::ofstream output(file, std::ios::binary);
  if (!output.write(settings.data(), settings.size()).flush()) {
    throw std::runtime_error(file.string() + " cannot be written; check the room left");
  }
}

}  // namespace

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

void Making::label(std::string_view kind, const std::string& path, std::string_view value,
                   const Reference& reference) const {
  if (!labels) {
    return;
  }
  const std::string_view key(path);
  const std::size_t root = key.find('\\');
  labels(
      {kind, key.substr(0, root), key.substr(root + 1), value, reference.family, reference.truth});
}

void makeMachine(const fs::path& folder, const MachineSize& size, const LabelSink& labels) {
  try {
    prepareFolder(folder);
    writeSettings(folder / "machine.ini");
    const FilePool files(size.keys);
    files.write(folder / "C");
    RegistryText registry(folder / "registry.reg");
    writeToolFiles(folder / "C");
    Random random(size.seed);
    Cases paths(pathCases(), files, random);
    Cases texts(textCases(), files, random);
    Cases commands(commandCases(), files, random);
    const Making making{registry, files, random, size.keys, paths, texts, commands, labels};
    writeSystemKeys(making);
    writeEnvironment(making);
    writeUninstallRecords(making);
    writeStartupPrograms(making);
    writeFileClasses(making);
    writeComponents(making);
    writeUserKeys(making);
    writeVendorKeys(making);
    registry.finish();
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(error.path1().string() + " cannot be made: " + error.code().message());
  }
}

}  // namespace zelvreg::bench
