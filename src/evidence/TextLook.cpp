#include "evidence/TextLook.h"

#include <algorithm>

#include "evidence/CommandText.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

constexpr int deepestLauncher = 4;

TextIs kindOf(Reading reading) {
  return reading == Reading::Start || reading == Reading::Command ? TextIs::Command : TextIs::Path;
}

}  // namespace

Evidence withReason(Reason reason) { return {.confidence = {}, .reasons = {reason}, .tested = {}}; }

bool isFound(const Evidence& evidence) {
  return std::ranges::any_of(evidence.reasons, [](Reason reason) {
    return reason >= Reason::Found && reason <= Reason::FoundWithOwnerVariables;
  });
}

std::string TextLook::expanded(std::string_view text, const TextOwner& owner) {
  return variables.expand(text, owner.user, owner.view).text;
}

const Evidence& TextLook::at(const std::string& text, const TextOwner& owner, Reading reading) {
  std::string key = utf8(owner.user);
  key += static_cast<char>('0' + static_cast<int>(reading));
  key += owner.view == ProgramView::Bits64 ? '6' : '3';
  key += owner.isEveryones ? 'e' : 'o';
  key += text;
  const HashedText asked(key);
  if (const Evidence* found = known.find(asked)) {
    return *found;
  }
  return known.add(asked, look(text, owner, reading, 0));
}

Evidence TextLook::atAny(const std::vector<std::string>& texts, const TextOwner& owner,
                         Reading reading) {
  Evidence first;
  for (const std::string& text : texts) {
    Evidence evidence = at(text, owner, reading);
    if (isFound(evidence)) {
      return evidence;
    }
    if (first.reasons.empty()) {
      first = std::move(evidence);
    } else {
      first.tested.add(evidence.tested);
    }
  }
  return first;
}

// With the variables of the owner and its view; if that finds nothing, with those of the other
// view.
Evidence TextLook::look(const std::string& text, const TextOwner& owner, Reading reading,
                        int depth) {
  const std::string_view whole = trim(untilNul(text));
  if (whole.empty()) {
    return withReason(Reason::NoText);
  }
  if (whole.size() > longestText && characterCount(whole) > longestText) {
    return withReason(Reason::TextTooLong);
  }
  // The system takes a tab for a blank.
  std::string plain(whole);
  std::ranges::replace(plain, '\t', ' ');
  const ExpandedText own = variables.expand(plain, owner.user, owner.view);
  const bool hasVariables = own.text != plain;
  PathTrial trial = tryText(own.text, owner, reading, depth);
  if (hasVariables && trial.found == Reason::Found) {
    trial.found = Reason::FoundWithOwnerVariables;
  }
  if (!trial.found && hasVariables) {
    const ProgramView other =
        owner.view == ProgramView::Bits64 ? ProgramView::Bits32 : ProgramView::Bits64;
    const std::string text2 = variables.expand(plain, owner.user, other).text;
    PathTrial second = text2 == own.text ? PathTrial() : tryText(text2, owner, reading, depth);
    if (second.found) {
      trial.find(Reason::FoundInOtherView);
      trial.tested.add(second.tested);
    }
  }
  Evidence evidence{.confidence = {},
                    .reasons = trial.found ? ReasonList{*trial.found} : trial.reasons,
                    .tested = std::move(trial.tested)};
  const bool isOthers = owner.isEveryones && own.hasUsersVariable;
  if (!trial.found && (!own.isComplete || isOthers)) {
    evidence.reasons.add(Reason::UnknownVariable);
  }
  return evidence;
}

PathTrial TextLook::tryText(const std::string& text, const TextOwner& owner, Reading reading,
                            int depth) {
  if (kindOf(reading) == TextIs::Command) {
    const CommandParts parts = commandParts(text);
    const auto target = launchTarget(parts.program, parts.arguments);
    if (target && paths.isOfSystem(parts.program)) {
      return tryTarget(*target, owner, depth + 1);
    }
  }
  PathTrial trial;
  const std::string_view whole = trim(text);
  const bool isQuoted = whole.starts_with('"');
  const std::vector<std::string> readings = fileReadings(text, kindOf(reading));
  for (const std::string& one : readings) {
    // Only what stands between quotes, or all of the text, may be a folder.
    const bool isWhole = one == whole || (isQuoted && whole.substr(1).starts_with(one));
    if (!isWhole && trial.isJudged && isDrivePath(one)) {
      tryPart(trial, one, owner, reading);
    } else {
      paths.tryReading(trial, one, owner, reading, isWhole ? Takes::FoldersToo : Takes::FilesOnly);
    }
    if (trial.found) {
      return trial;
    }
  }
  if (readings.size() == mostReadings) {
    trial.reasons.add(Reason::TextTooLong);
  }
  if (readings.empty()) {
    trial.reasons.add(Reason::NoText);
  }
  return trial;
}

// A further reading of a text that was judged already, which may be the start of many others.
void TextLook::tryPart(PathTrial& trial, const std::string& part, const TextOwner& owner,
                       Reading reading) {
  const bool isOf64 = owner.view == ProgramView::Bits64;
  std::string key{isOf64 ? '6' : '3', static_cast<char>('0' + static_cast<int>(reading))};
  key += part;
  const HashedText asked(key);
  if (deadParts.find(asked) != nullptr) {
    return;
  }
  PathTrial alone;
  alone.isJudged = true;
  paths.tryReading(alone, part, owner, reading, Takes::FilesOnly);
  if (alone.found) {
    trial.find(*alone.found);
    trial.tested.add(alone.tested);
  }
  for (const Reason reason : alone.reasons) {
    trial.reasons.add(reason);
  }
  if (!alone.found && alone.reasons.empty()) {
    deadParts.add(asked, {});
  }
}

// What a launcher opens. Whether the launcher itself is there does not count.
PathTrial TextLook::tryTarget(const LaunchTarget& target, const TextOwner& owner, int depth) {
  PathTrial trial;
  trial.tested = {target.text};
  const auto decide = [&](bool isKnown, Reason reason) {
    isKnown ? trial.find(reason) : trial.reasons.add(Reason::NotRegistered);
  };
  switch (target.kind) {
    case TargetIs::Product:
      decide(products.isProduct(target.text), Reason::InstallerOnDemand);
      return trial;
    case TargetIs::ServiceGroup:
      decide(InstalledProducts::isServiceGroup(target.text), Reason::FoundBehindLauncher);
      return trial;
    case TargetIs::Application:
      decide(InstalledProducts::isApplication(target.text), Reason::FoundBehindLauncher);
      return trial;
    case TargetIs::Unclear:
      trial.tested = {};
      trial.reasons.add(Reason::LauncherUnclear);
      return trial;
    default:
      break;
  }
  if (depth > deepestLauncher) {
    trial.reasons.add(Reason::LauncherUnclear);
    return trial;
  }
  const Reading reading = target.kind == TargetIs::Library ? Reading::Library : Reading::Start;
  Evidence evidence = look(target.text, owner, reading, depth);
  if (isFound(evidence)) {
    trial.find(Reason::FoundBehindLauncher);
  }
  trial.reasons = evidence.reasons;
  trial.tested = std::move(evidence.tested);
  return trial;
}

}  // namespace zelvreg
