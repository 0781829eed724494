// What comes from other computers: results to merge, and disks in files.
#include <algorithm>
#include <array>
#include <cstring>
#include <sstream>

#include "fleet/MadeResult.h"
#include "fleet/MergedText.h"
#include "fleet/Merging.h"
#include "fleet/Page.h"
#include "fleet/ResultReader.h"
#include "fuzz/FuzzTarget.h"
#include "images/PartitionTable.h"
#include "machine/base/MachineError.h"

namespace zelvreg::fuzz {
namespace {

void requireShort(const std::string& text) {
  require(text.size() <= fleet::longestText + 3, "texts are cut");
}

void mergeResult(std::string_view input) {
  std::istringstream stream{std::string(input)};
  JsonSource source(stream);
  std::size_t findings = 0;
  const fleet::ResultListener listener{.onFinding = [&](const fleet::SeenFinding& finding) {
    ++findings;
    requireShort(finding.badValue);
    requireShort(finding.subKey);
  }};
  try {
    if (source.findNext()) {
      const fleet::ComputerSummary summary = readResult(source, listener);
      require(summary.findings == findings, "each finding is told");
      requireShort(summary.name);
    }
  } catch (const fleet::BadResult& why) {
    require(why.what() != std::string(), "a refusal says why");
  }
  // The same as two files of one name, and what is made of them.
  std::size_t bad = 0;
  const fleet::MergeListener told{.onBadSource = [&bad](const std::string& line) {
    ++bad;
    require(line.find('\n') == std::string::npos, "what is told is one line");
  }};
  const fleet::Merged merged = mergeResults({fleet::madeSource("a", std::string(input)),
                                             fleet::madeSource("a.error", std::string(input))},
                                            told);
  const std::string page = pageText(merged);
  require(page.find("</html>") == page.rfind("</html>"), "texts are no markup");
  jsonText(merged);
  csvText(merged);
}

// The input is what the disk begins with, and how large the disk is said to be is its last bytes.
void readDisk(std::string_view input) {
  constexpr std::size_t sizeBytes = 8;
  std::uint64_t diskSize = input.size();
  if (input.size() > sizeBytes) {
    std::memcpy(&diskSize, input.data() + input.size() - sizeBytes, sizeBytes);
  }
  std::size_t reads = 0;
  const auto read = [&](std::uint64_t offset, std::span<std::byte> bytes) {
    ++reads;
    if (offset > input.size() || bytes.size() > input.size() - offset) {
      return false;
    }
    std::memcpy(bytes.data(), input.data() + offset, bytes.size());
    return true;
  };
  try {
    const auto partitions = images::readPartitions(read, diskSize);
    require(partitions.size() <= 128, "no more partitions than a table can have");
    for (const images::Partition& partition : partitions) {
      require(partition.number > 0, "partitions are counted from 1");
      require(partition.size == 0 ||
                  (partition.offset <= diskSize && partition.size <= diskSize - partition.offset),
              "what is there of a partition lies on the disk");
    }
  } catch (const machine::MachineError& error) {
    require(error.what() != std::string(), "a refusal says why");
  }
  require(reads < 1000, "a table is read once");
}

constexpr std::array<FuzzTarget, 2> targets{{
    {.name = "result", .run = mergeResult},
    {.name = "disk", .run = readDisk, .isBinary = true},
}};

}  // namespace

std::span<const FuzzTarget> foreignTargets() { return targets; }

}  // namespace zelvreg::fuzz
