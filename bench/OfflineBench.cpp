#include "OfflineBench.h"

#include <hivex.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "console/Computer.h"
#include "form/Form42.h"
#include "machine/offline/OfflineFiles.h"
#include "shell/StartUp.h"

namespace zelvreg::bench {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename Content>
using Owned = std::unique_ptr<Content, Free>;

struct HiveCounts {
  std::size_t keys = 0;
  std::size_t values = 0;
};

constexpr int deepest = 512;

// Every name and every value is asked for once and dropped.
void walkNode(hive_h* hive, hive_node_h node, int depth, HiveCounts& counts) {
  ++counts.keys;
  const Owned<char> name(hivex_node_name(hive, node));
  const Owned<hive_value_h> values(hivex_node_values(hive, node));
  for (const hive_value_h* value = values.get(); value != nullptr && *value != 0; ++value) {
    hive_type type = hive_t_none;
    std::size_t size = 0;
    const Owned<char> valueName(hivex_value_key(hive, *value));
    const Owned<char> data(hivex_value_value(hive, *value, &type, &size));
    ++counts.values;
  }
  const Owned<hive_node_h> children(hivex_node_children(hive, node));
  for (const hive_node_h* child = children.get();
       child != nullptr && *child != 0 && depth < deepest; ++child) {
    walkNode(hive, *child, depth + 1, counts);
  }
}

std::vector<double> walkHive(const std::filesystem::path& file) {
  HiveCounts counts;
  const double seconds = secondsOf([&] {
    hive_h* hive = hivex_open(file.c_str(), 0);
    if (hive == nullptr) {
      throw std::runtime_error(file.string() + " cannot be opened as a hive");
    }
    walkNode(hive, hivex_root(hive), 0, counts);
    hivex_close(hive);
  });
  return {seconds, memoryPeak(), static_cast<double>(counts.keys),
          static_cast<double>(counts.values)};
}

enum class SecondLook : std::uint8_t { Taken, LeftOut };

std::vector<double> scanDisk(const std::filesystem::path& root, SecondLook secondLook) {
  double findings = 0;
  const double seconds = secondsOf([&] {
    const auto computer = console::Computer::open({.machineFolder = {},
                                                   .offlineRoot = root.string(),
                                                   .drives = {},
                                                   .user = {},
                                                   .missingDrivesAreDead = false});
    Form42 form;
    Form_Load(form);
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      form.View1.setChecked(row, true);
    }
    if (secondLook == SecondLook::LeftOut) {
      form.lookAgain.bind({});
    }
    form.cmd_start.click();
    findings = static_cast<double>(form.View2.count());
  });
  return {seconds, memoryPeak(), findings};
}

}  // namespace

OfflineFigures measureOffline(const std::filesystem::path& root, std::size_t pairs) {
  const machine::OfflineFiles files = machine::findOfflineFiles(root);
  if (!files.software) {
    throw std::runtime_error(root.string() + " has no SOFTWARE hive; name the folder of a disk");
  }
  OfflineFigures figures;
  figures.hive = *files.software;
  for (const std::filesystem::path& hive : files.hives()) {
    figures.hiveBytes += static_cast<double>(std::filesystem::file_size(hive));
  }
  figures.times = compare(
      pairs,
      [&] {
        const auto numbers = runInChild([&] { return walkHive(figures.hive); });
        figures.walkPeak = std::max(figures.walkPeak, numbers.at(1));
        figures.keys = numbers.at(2);
        figures.values = numbers.at(3);
        return numbers.at(0);
      },
      [&] {
        const auto numbers = runInChild([&] { return scanDisk(root, SecondLook::LeftOut); });
        figures.findings = numbers.at(2);
        return numbers.at(0);
      });
  figures.secondLook = compare(
      pairs, [&] { return offlineScanSeconds(root); },
      [&] {
        const auto numbers = runInChild([&] { return scanDisk(root, SecondLook::Taken); });
        figures.scanPeak = std::max(figures.scanPeak, numbers.at(1));
        return numbers.at(0);
      });
  return figures;
}

double offlineScanSeconds(const std::filesystem::path& root) {
  return runInChild([&root] { return scanDisk(root, SecondLook::LeftOut); }).front();
}

}  // namespace zelvreg::bench
