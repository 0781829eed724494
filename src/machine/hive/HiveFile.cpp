#include "machine/hive/HiveFile.h"

#include <limits>
#include <span>
#include <system_error>
#include <utility>

#include "machine/base/MachineError.h"

namespace zelvreg::machine {

// The stamp is taken before the file is read, so that another file in its place is never taken for
// this one.
HiveFile::HiveFile(std::filesystem::path hiveFile)
    : file(std::move(hiveFile)), readStamp(stampOf(file)) {
  const auto fail = [this](const std::string& reason) {
    throw MachineError(file.string() + ": cannot be read as a registry hive: " + reason);
  };
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) {
    fail("it is not a file");
  }
  mapped.emplace(file);
  if (mapped->bytes().size() > std::numeric_limits<std::uint32_t>::max()) {
    fail("it is larger than a hive can be");
  }
  try {
    reader.emplace(std::as_bytes(std::span(mapped->bytes())));
  } catch (const MachineError& error) {
    fail(error.what());
  }
}

void HiveFile::noteDamage(std::string line) {
  constexpr std::size_t mostLines = 10;
  if (damageLines.size() < mostLines) {
    damageLines.push_back(file.string() + ": " + line.append("; it is damaged there"));
  }
}

}  // namespace zelvreg::machine
