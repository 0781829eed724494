// An offline scan beside other programs that read a whole hive.
#ifndef ZELVREG_BENCH_PEER_BENCH_H
#define ZELVREG_BENCH_PEER_BENCH_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"

namespace zelvreg::bench {

// A program that reads all of a hive and writes it out as text.
struct Peer {
  const char* name;
  const char* package;              // of Debian
  std::vector<std::string> before;  // its words before and after the hive file
  std::vector<std::string> after;
};
std::span<const Peer> peers();

struct PeerFigures {
  const Peer* peer = nullptr;
  Comparison times;  // first the peer, then the scan
};

// Compares with each peer that is found in the folders (as in PATH), each time in a new process. A
// scan gives its seconds. What a peer writes is thrown away.
std::vector<PeerFigures> measurePeers(const std::filesystem::path& hive, std::string_view folders,
                                      std::size_t pairs, const std::function<double()>& scan);

// The one that takes least time; null if there is none.
const PeerFigures* fastestOf(std::span<const PeerFigures> figures);

}  // namespace zelvreg::bench

#endif
