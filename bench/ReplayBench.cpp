#include "ReplayBench.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "DiskMaker.h"
#include "LogMaker.h"
#include "Measure.h"
#include "machine/base/PlainFile.h"
#include "machine/hive/HiveFile.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t page = 4096;
constexpr std::size_t entries = 24;
constexpr std::size_t oneIn = 5;
constexpr std::uint32_t stoppedAt = 1000;

void write(const fs::path& file, const std::string& bytes) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
    throw std::runtime_error(file.string() + " cannot be written");
  }
}

}  // namespace

void makeDirtyDisk(const fs::path& folder) {
  const fs::path hive = makeDisk(folder, {.machineKeys = 10'000, .interfaces = 10'000});
  std::string bytes = machine::readWholeFile(hive);
  std::string log = newLogHead(bytes, stoppedAt);
  const std::size_t pages = bytes.size() / page - 1;
  for (std::uint32_t number = 0; number < entries; ++number) {
    LoggedEntry entry{
        .sequence = stoppedAt + number, .flags = 0, .binsSize = wordAt(bytes, 40), .pages = {}};
    // The pages of an entry lie all over the hive.
    for (std::size_t at = number * oneIn; at < pages; at += entries * oneIn) {
      entry.pages.push_back(
          {static_cast<std::uint32_t>(at * page), bytes.substr((at + 1) * page, page)});
    }
    log += entryBytes(entry);
  }
  write(hive.string() + ".LOG1", log);
  setSequences(bytes, stoppedAt + 1, stoppedAt);
  write(hive, bytes);
}

double measureReplay(const fs::path& disk, std::size_t runs) {
  const fs::path hive = disk / "Windows" / "System32" / "config" / "SOFTWARE";
  std::vector<double> seconds;
  for (std::size_t run = 0; run < runs; ++run) {
    seconds.push_back(runInChild([&] {
                        bool isReplayed = false;
                        const double taken = secondsOf([&] {
                          const machine::HiveFile file(hive);
                          isReplayed = file.replay().state == machine::HiveState::Replayed;
                        });
                        if (!isReplayed) {
                          throw std::runtime_error(hive.string() + " has not taken over its logs");
                        }
                        return std::vector<double>{taken};
                      }).front());
  }
  return median(seconds);
}

}  // namespace zelvreg::bench
