#include "Goals.h"

#include <array>
#include <iomanip>
#include <sstream>

namespace zelvreg::bench {
namespace {

constexpr const char* ofTheWindow = "`bench/window/measure --rows 100000 BUILD`";

constexpr std::array table{
    Goal{Measure::Scan, "a whole scan without the second look / plain loops, 1,000,000 keys", 1.10,
         Unit::Ratio},
    Goal{Measure::OfflineToWalk, "an offline scan / a bare libhivex walk of the same hive", 0.50,
         Unit::Ratio},
    Goal{Measure::OfflineToReader, "an offline scan / the fastest other full reader", 0.05,
         Unit::Ratio},
    Goal{Measure::OfflineMemory, "peak memory of an offline scan / size of its hives", 1.20,
         Unit::Ratio},
    Goal{Measure::Replay, "taking over the logs of a hive of 12 MB", 20, Unit::Milliseconds},
    Goal{Measure::Search, "a search / enumeration, 1,000,000 keys", 1.30, Unit::Ratio},
    Goal{Measure::Opening, "opening a folder of 1,000,000 keys", 0.4, Unit::Seconds},
    Goal{Measure::OpeningMemory, "memory of that folder", 180, Unit::BytesPerKey},
    Goal{Measure::SecondLook, "the second look / the scan it follows, 100,000 keys", 0.20,
         Unit::Ratio},
    Goal{Measure::Version, "`zelvreg --version`, by the clock", 5, Unit::Milliseconds},
    Goal{Measure::Demo, "a scan of the demo machine, by the clock", 15, Unit::Milliseconds},
    Goal{Measure::Image, "what an image adds to the scan of its mounted disk, by the clock", 150,
         Unit::Milliseconds},
    Goal{Measure::PageMedian, "a page of a list of 100,000 findings, median", 16,
         Unit::Milliseconds, ofTheWindow},
    Goal{Measure::PageLongest, "a page of a list of 100,000 findings, longest", 25,
         Unit::Milliseconds, ofTheWindow},
    Goal{Measure::Question, "a question to the window during a scan, longest", 8,
         Unit::Milliseconds, ofTheWindow},
    Goal{Measure::Excluding, "excluding 5,000 highlighted findings", 0.5, Unit::Seconds,
         ofTheWindow},
};

}  // namespace

std::span<const Goal> goals() { return table; }

std::optional<bool> isMet(const Goal& goal, const Figures& figures) {
  const auto figure = figures.find(goal.measure);
  return figure == figures.end() ? std::nullopt : std::optional(figure->second <= goal.most);
}

std::string inUnit(double number, Unit unit) {
  std::ostringstream text;
  const auto write = [&](int digits, const char* name) {
    text << std::fixed << std::setprecision(digits) << number << name;
  };
  switch (unit) {
    case Unit::Ratio:
      write(number < 0.1 ? 3 : 2, "");
      break;
    case Unit::Seconds:
      write(2, " s");
      break;
    case Unit::Milliseconds:
      write(1, " ms");
      break;
    case Unit::BytesPerKey:
      write(0, " bytes a key");
      break;
  }
  return text.str();
}

void printGoals(std::ostream& output, const Figures& figures) {
  output << "| work | goal: at most | figure | reached |\n|---|---|---|---|\n";
  for (const Goal& goal : goals()) {
    const std::optional<bool> met = isMet(goal, figures);
    output << "| " << goal.work << " | " << inUnit(goal.most, goal.unit) << " | ";
    if (met) {
      output << inUnit(figures.at(goal.measure), goal.unit) << " | " << (*met ? "yes" : "no")
             << " |\n";
    } else {
      output << (goal.how != nullptr ? goal.how : "not measured") << " | |\n";
    }
  }
}

}  // namespace zelvreg::bench
