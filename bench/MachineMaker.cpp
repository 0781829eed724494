#include "MachineMaker.h"

#include <fstream>
#include <stdexcept>

#include "MachineKeys.h"

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

void makeMachine(const fs::path& folder, const MachineSize& size) {
  try {
    prepareFolder(folder);
    writeSettings(folder / "machine.ini");
    const FilePool files(size.keys);
    files.write(folder / "C");
    RegistryText registry(folder / "registry.reg");
    Random random(size.seed);
    const Making making{registry, files, random, size.keys};
    writeSystemKeys(making);
    writeInstalledPrograms(making);
    writeClasses(making);
    writeUserKeys(making);
    writeVendorKeys(making);
    registry.finish();
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(error.path1().string() + " cannot be made: " + error.code().message());
  }
}

}  // namespace zelvreg::bench
