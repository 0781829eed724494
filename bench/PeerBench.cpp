#include "PeerBench.h"

#include <algorithm>

#include "Programs.h"

namespace zelvreg::bench {

std::span<const Peer> peers() {
  static const std::vector<Peer> list{
      {"hivexml", "libhivex-bin", {}, {}},
      {"reglookup", "reglookup", {}, {}},
      {"regfexport", "libregf-utils", {}, {}},
      {"hivexregedit", "libwin-hivex-perl", {"--export"}, {"\\"}},
  };
  return list;
}

std::vector<PeerFigures> measurePeers(const std::filesystem::path& hive, std::string_view folders,
                                      std::size_t pairs, const std::function<double()>& scan) {
  std::vector<PeerFigures> figures;
  for (const Peer& peer : peers()) {
    const auto program = findProgram(peer.name, folders);
    if (!program) {
      continue;
    }
    std::vector<std::string> words{program->string()};
    words.insert(words.end(), peer.before.begin(), peer.before.end());
    words.push_back(hive.string());
    words.insert(words.end(), peer.after.begin(), peer.after.end());
    figures.push_back({&peer, compare(
                                  pairs, [&words] { return runProgram(words).processor; }, scan)});
  }
  return figures;
}

const PeerFigures* fastestOf(std::span<const PeerFigures> figures) {
  const auto fastest = std::ranges::min_element(
      figures, {}, [](const PeerFigures& peer) { return peer.times.first; });
  return fastest == figures.end() ? nullptr : &*fastest;
}

}  // namespace zelvreg::bench
