// What a repair has done that the list does not show.
#ifndef ZELVREG_FORM_REPAIR_OUTCOME_H
#define ZELVREG_FORM_REPAIR_OUTCOME_H

#include <cstddef>
#include <set>
#include <string>
#include <tuple>

namespace zelvreg {

// Something that a step of a repair would have deleted, by its whole path, and why it did not.
struct LeftAlone {
  std::string place;
  std::string reason;

  bool operator==(const LeftAlone&) const = default;
  bool operator<(const LeftAlone& other) const {
    return std::tie(place, reason) < std::tie(other.place, other.reason);
  }
};

// The rows that were to be repaired, by what was found when they were checked again.
struct RepairOutcome {
  std::size_t gone = 0;
  std::size_t leftAlone = 0;  // still there, and a step was refused
  std::size_t noEffect = 0;   // still there, though nothing was refused
  // Whether anything was called that changes the registry.
  bool hasBegun = false;
  // Of those still there, how many should have gone.
  std::size_t failed = 0;
  // Each thing that was refused.
  std::set<LeftAlone> refused;
};

}  // namespace zelvreg

#endif
