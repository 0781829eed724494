// How sure it is that what a finding names is gone, and why.
#ifndef ZELVREG_FORM_EVIDENCE_H
#define ZELVREG_FORM_EVIDENCE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace zelvreg {

enum class Confidence : std::uint8_t {
  Unsure,  // it was found, access was denied, or it cannot be decided
  Likely,  // gone by every way that was tried, but for a weak doubt
  Sure,    // a full path on a local fixed drive that is there, and gone in both views
};

// The closed set of reasons. evidence/Reasons.h has the code and the effect of each, and
// docs/evidence.md explains them.
enum class Reason : std::uint8_t {
  // Gone.
  Absent,
  ParentAbsent,
  EmptyRecord,
  // Weak doubts.
  BareName,
  SharedCount,
  SystemOwned,
  PathTooLong,
  AbsentOnShare,
  NotRegistered,
  // There after all.
  Found,
  FoundInsideText,
  FoundInOtherView,
  FoundOnPath,
  FoundWithExtension,
  FoundBehindLauncher,
  FoundWithOwnerVariables,
  // Not to be decided from here.
  UnknownVariable,
  PlaceUnknown,
  Share,
  DriveAbsent,
  DriveRemovable,
  AccessDenied,
  ReparseBroken,
  ShortName,
  PackagedApp,
  InstallerOnDemand,
  OtherHandler,
  LauncherUnclear,
  TextTooLong,
  NoText,
  NotAPath,
  // The entry itself is in doubt.
  EntryGone,
  UserChoice,
  HoldsRecords,
  History,
  RuleWithoutPath,
  RecordWithoutName,
  ListWithoutRecord,
  OwnShadowRow,
  LogsNotReplayed,
  Implausible,
  NotExamined,
};

inline constexpr std::size_t reasonCount = static_cast<std::size_t>(Reason::NotExamined) + 1;

// Reasons in the order in which they were given, each once. Every finding has such a list, and the
// search for its target makes several, so they need no memory from the heap.
class ReasonList {
 public:
  ReasonList() = default;
  ReasonList(std::initializer_list<Reason> given) {
    for (const Reason reason : given) {
      add(reason);
    }
  }

  // Without effect for a reason that is among them.
  void add(Reason reason) {
    if (!contains(reason)) {
      reasons[count++] = reason;
    }
  }

  [[nodiscard]] bool contains(Reason reason) const {
    return std::ranges::find(*this, reason) != end();
  }

  [[nodiscard]] const Reason* data() const { return reasons.data(); }
  [[nodiscard]] std::size_t size() const { return count; }
  [[nodiscard]] bool empty() const { return count == 0; }
  [[nodiscard]] const Reason* begin() const { return data(); }
  [[nodiscard]] const Reason* end() const { return data() + count; }
  // Not for an empty list.
  [[nodiscard]] Reason front() const { return reasons.front(); }

  bool operator==(const ReasonList& other) const { return std::ranges::equal(*this, other); }

 private:
  std::array<Reason, reasonCount> reasons;  // not filled beforehand
  std::uint8_t count = 0;
};

// The paths and keys that were looked for, each once and at most a few. What is said of one text is
// said of many findings, so copies share them.
class TestedPlaces {
 public:
  TestedPlaces() = default;
  TestedPlaces(std::initializer_list<std::string> given) {
    for (const std::string& place : given) {
      add(place);
    }
  }

  // Without effect for a place that is among them, and where there is no more room.
  void add(const std::string& place) {
    constexpr std::size_t most = 6;
    if (size() == most || std::ranges::find(*this, place) != end()) {
      return;
    }
    if (places == nullptr || places.use_count() > 1) {
      places = std::make_shared<std::vector<std::string>>(begin(), end());
    }
    places->push_back(place);
  }
  void add(const TestedPlaces& others) {
    for (const std::string& place : others) {
      add(place);
    }
  }

  [[nodiscard]] std::size_t size() const { return places == nullptr ? 0 : places->size(); }
  [[nodiscard]] const std::string* begin() const {
    return places == nullptr ? nullptr : places->data();
  }
  [[nodiscard]] const std::string* end() const { return begin() + size(); }
  bool operator==(const TestedPlaces& other) const { return std::ranges::equal(*this, other); }

 private:
  std::shared_ptr<std::vector<std::string>> places;  // none for an empty list
};

struct Evidence {
  Confidence confidence = Confidence::Unsure;
  ReasonList reasons;  // at least one
  TestedPlaces tested;
  bool isUsers = false;  // it is the current user's, not the computer's; told only in a UserScope
};

}  // namespace zelvreg

#endif
