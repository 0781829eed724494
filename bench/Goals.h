// How fast zelvreg is to be, as a table, and whether it is.
#ifndef ZELVREG_BENCH_GOALS_H
#define ZELVREG_BENCH_GOALS_H

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <span>
#include <string>

namespace zelvreg::bench {

enum class Measure : std::uint8_t {
  Scan,
  OfflineToWalk,
  OfflineToReader,
  OfflineMemory,
  Replay,
  Search,
  Opening,
  OpeningMemory,
  SecondLook,
  Version,
  Demo,
  Image,
  PageMedian,
  PageLongest,
  Question,
  Excluding,
};

enum class Unit : std::uint8_t { Ratio, Seconds, Milliseconds, BytesPerKey };

struct Goal {
  Measure measure;
  const char* work;
  double most;
  Unit unit;
  const char* how = nullptr;  // the command that measures it, if that is not this program
};
std::span<const Goal> goals();

// In the units of the goals.
using Figures = std::map<Measure, double>;

// None where there is no figure.
std::optional<bool> isMet(const Goal& goal, const Figures& figures);

// A number in this unit as the table shows it: "1.10", "0.40 s".
std::string inUnit(double number, Unit unit);

// A table in Markdown: what is done, the goal, the figure, and whether it is reached.
void printGoals(std::ostream& output, const Figures& figures);

}  // namespace zelvreg::bench

#endif
