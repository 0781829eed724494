// How sure it is that what a finding names is gone, and why.
#ifndef ZELVREG_FORM_EVIDENCE_H
#define ZELVREG_FORM_EVIDENCE_H

#include <cstdint>
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

struct Evidence {
  Confidence confidence = Confidence::Unsure;
  std::vector<Reason> reasons;      // at least one
  std::vector<std::string> tested;  // the paths and keys that were looked for, at most a few
};

}  // namespace zelvreg

#endif
