// Hives and their logs, as they lie on a disk that somebody else has written.
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "LogMaker.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/LogFile.h"
#include "machine/Machine.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "machine/hive/HiveBytes.h"
#include "machine/hive/HiveReader.h"
#include "machine/registry/Registry.h"
#include "machine/replay/BinWalk.h"
#include "machine/replay/Replay.h"
#include "support/RegistryContent.h"

namespace zelvreg::fuzz {
namespace {

namespace fs = std::filesystem;
using fixture::RegistryContent;
using machine::MachineError;

// What a hive gives to who reads it to the end.
struct GivenKeys {
  std::size_t keys = 0;
  std::size_t valueBytes = 0;
  std::map<std::uint32_t, std::size_t> timesGiven;
};

void readBelow(machine::HiveReader& reader, std::uint32_t node, GivenKeys& given) {
  std::vector<std::uint32_t> nodes{node};
  while (!nodes.empty()) {
    const std::uint32_t next = nodes.back();
    nodes.pop_back();
    reader.values(next, [&given](const machine::HiveValue& value) {
      given.valueBytes += value.bytes.size();
    });
    reader.subkeys(next, {}, [&](const machine::HiveSubkey& subkey) {
      ++given.keys;
      ++given.timesGiven[subkey.node];
      nodes.push_back(subkey.node);
    });
  }
}

void readHive(std::string_view input) {
  const auto bytes = std::as_bytes(std::span(input));
  try {
    machine::HiveReader reader(bytes);
    GivenKeys given;
    readBelow(reader, reader.root(), given);
    require(given.keys <= input.size() / 8, "no more keys than the hive has room for");
    require(given.valueBytes <= input.size() + 0x10000, "no more data than the hive holds");
    for (const auto& [node, times] : given.timesGiven) {
      require(times == 1, "each key is given once");
    }
    // A search finds nothing that reading everything does not give.
    machine::HiveReader searched(bytes);
    for (const std::u16string_view name : {u"one", u"two", u"Software", u""}) {
      const auto found = searched.findSubkey(searched.root(), name);
      require(found.answer != machine::FoundSubkey::Answer::Found ||
                  given.timesGiven.contains(found.subkey.node),
              "a key that is found is one of all");
    }
  } catch (const MachineError& error) {
    require(error.what() != std::string(), "a refusal says why");
  }
}

void signHive(std::string& input) {
  if (input.size() >= machine::hiveFormat::binsOffset) {
    bench::signBaseBlock(input);
  }
}

void replay(std::string_view input) {
  const HiveWithLogs files = hiveWithLogs(input);
  const auto hive = std::as_bytes(std::span(files.hive));
  machine::needsLogs(hive);
  std::vector<std::span<const std::byte>> logs;
  for (const std::string& log : files.logs) {
    logs.push_back(std::as_bytes(std::span(log)));
  }
  const machine::Replay done = machine::replayLogs(hive, logs);
  if (done.outcome.state == machine::HiveState::Unreplayable) {
    require(!done.outcome.why.empty(), "a refusal says why");
    require(!done.image, "what was refused has no content");
    return;
  }
  require(done.image.has_value(), "what was taken over has content");
  require(!machine::needsLogs(done.image->bytes()), "what was taken over needs no logs");
  require(!machine::firstBadBin(done.image->bytes()), "its bins follow each other");
  require(done.outcome.entries <= input.size() / 8, "no more entries than the logs have room for");
}

// A disk with one hive.
class Disk {
 public:
  explicit Disk(std::string_view hive) {
    folder.write(place, hive);
    folder.makeFolder("Windows/System32");
  }

  [[nodiscard]] std::unique_ptr<machine::Machine> open() const {
    return machine::Machine::openOffline({.root = folder.path(), .drives = {}, .user = {}});
  }
  [[nodiscard]] std::string hive() const { return folder.read(place); }
  [[nodiscard]] std::string backup() const { return folder.read(place + ".bak"); }
  [[nodiscard]] std::size_t files() const {
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
      count += entry.is_regular_file() ? 1U : 0U;
    }
    return count;
  }

 private:
  const std::string place = "Windows/System32/config/SOFTWARE";
  fixture::TemporaryFolder folder;
};

const std::string softwareKey = R"(HKEY_LOCAL_MACHINE\SOFTWARE)";

// What is repaired: a key goes, with all below it, and its parent gets a value.
struct Change {
  std::string key;
  std::string parent;
};

// One of the keys, as the input decides.
std::optional<Change> chooseChange(const RegistryContent& content, std::string_view input) {
  std::vector<std::string> keys;
  for (const auto& [name, data] : content) {
    if (data.empty() && name.starts_with(softwareKey + "\\") &&
        name.find('|') == std::string::npos) {
      keys.push_back(name);
    }
  }
  if (keys.empty()) {
    return std::nullopt;
  }
  const std::string key = keys[std::hash<std::string_view>()(input) % keys.size()];
  return Change{key, key.substr(0, key.rfind('\\'))};
}

void apply(const Change& change, machine::Registry& registry) {
  machine::RegistryKey* parent = registry.find(change.parent);
  machine::RegistryKey* key = registry.find(change.key);
  if (parent != nullptr && key != nullptr) {
    registry.erase(*key);
    constexpr std::array<std::byte, 2> bytes{};
    registry.setValue(*parent, u"added", REG_BINARY, bytes);
  }
}

RegistryContent changed(const RegistryContent& before, const Change& change) {
  RegistryContent after;
  for (const auto& [name, data] : before) {
    const bool isGone = name == change.key || name.starts_with(change.key + "\\") ||
                        name.starts_with(change.key + "|");
    if (!isGone) {
      after[name] = data;
    }
  }
  after[change.parent + "|added"] = std::to_string(REG_BINARY) + ":" + std::string(2, '\0');
  return after;
}

// Nothing that could be read may be lost with what goes, whatever else is damaged.
void repairHive(std::string_view input) {
  const Disk disk(input);
  try {
    const auto before = disk.open();
    const RegistryContent content = fixture::registryContent(*before);
    const auto change = chooseChange(content, input);
    if (!change) {
      return;
    }
    // As a repair does it: it has not read all of the hive.
    const auto computer = disk.open();
    apply(*change, computer->registry());
    computer->save();
    if (disk.hive() == input) {
      return;
    }
    require(disk.backup() == input, "the old hive is kept");
    const auto after = disk.open();
    const RegistryContent written = fixture::registryContent(*after);
    require(after->damagedHives().empty(), "what was written is whole");
    require(written == changed(content, *change), "nothing else is gone, changed or new");
  } catch (const MachineError&) {
    require(disk.hive() == input, "a hive that is refused stays as it is");
    require(disk.files() == 1, "nothing is left over");
  }
}

constexpr std::array<FuzzTarget, 3> targets{{
    {.name = "hive", .run = readHive, .mend = signHive, .isBinary = true},
    {.name = "hive-logs", .run = replay, .mend = signHiveAndLogs, .isBinary = true},
    {.name = "hive-repair", .run = repairHive, .mend = signHive, .isBinary = true},
}};

}  // namespace

std::span<const FuzzTarget> hiveTargets() { return targets; }

}  // namespace zelvreg::fuzz
