#include "evidence/Reasons.h"

#include <algorithm>
#include <array>

#include "languages/readlangfile.h"

namespace zelvreg {
namespace {

constexpr std::array<ReasonRule, reasonCount> rules{{
    {Reason::Absent, "absent", Effect::Gone, "What it names does not exist."},
    {Reason::ParentAbsent, "parent-absent", Effect::Gone,
     "The whole folder that it names does not exist."},
    {Reason::EmptyRecord, "empty-record", Effect::Gone, "The entry is empty and names nothing."},
    {Reason::BareName, "bare-name", Effect::Doubt,
     "It names a file without its folder, and the file is in none of the usual folders."},
    {Reason::SharedCount, "shared-count", Effect::Doubt,
     "The file does not exist, but several programs are recorded as its users."},
    {Reason::SystemOwned, "system-owned", Effect::Doubt,
     "What it names does not exist, but the entry belongs to Windows itself."},
    {Reason::PathTooLong, "path-too-long", Effect::Doubt,
     "The path does not exist, but it is longer than most programs can open."},
    {Reason::AbsentOnShare, "absent-on-share", Effect::Doubt,
     "The other computer that it names has no such file at present."},
    {Reason::NotRegistered, "not-registered", Effect::Doubt,
     "What it names is not registered on this computer."},
    {Reason::Found, "found", Effect::Undecided, "What it names exists."},
    {Reason::FoundInsideText, "found-inside-text", Effect::Undecided,
     "A part of its text is the path of a file or a folder that exists."},
    {Reason::FoundInOtherView, "found-in-other-view", Effect::Undecided,
     "The file exists for programs of the other kind, 32-bit or 64-bit."},
    {Reason::FoundOnPath, "found-on-path", Effect::Undecided,
     "Windows finds the file in one of the folders in which it looks for programs."},
    {Reason::FoundWithExtension, "found-with-extension", Effect::Undecided,
     "The file exists once Windows adds the missing extension."},
    {Reason::FoundBehindLauncher, "found-behind-launcher", Effect::Undecided,
     "Another program opens the file that it names, and that file exists."},
    {Reason::FoundWithOwnerVariables, "found-with-owner-variables", Effect::Undecided,
     "The file exists with the variables of the user or the program that the entry is for."},
    {Reason::UnknownVariable, "unknown-variable", Effect::Undecided,
     "Its path has a variable whose value is not known here."},
    {Reason::PlaceUnknown, "place-unknown", Effect::Undecided,
     "Its path does not say on which drive or in which folder it begins."},
    {Reason::Share, "share", Effect::Undecided,
     "It names a file on another computer, which is not asked."},
    {Reason::DriveAbsent, "drive-absent", Effect::Undecided,
     "It names a file on a drive that is not connected."},
    {Reason::DriveRemovable, "drive-removable", Effect::Undecided,
     "It names a file on a drive whose disk can be changed."},
    {Reason::AccessDenied, "access-denied", Effect::Undecided,
     "Access was denied, so it is not known whether it exists."},
    {Reason::ReparseBroken, "reparse-broken", Effect::Undecided,
     "Its path goes through a link that leads nowhere at present."},
    {Reason::ShortName, "short-name", Effect::Undecided,
     "Its path has a short name that cannot be looked up here."},
    {Reason::PackagedApp, "packaged-app", Effect::Undecided,
     "It belongs to an app that Windows installs and removes itself."},
    {Reason::InstallerOnDemand, "installer-on-demand", Effect::Undecided,
     "Windows Installer installs the file when it is first used."},
    {Reason::OtherHandler, "other-handler", Effect::Undecided,
     "Another component carries out this command."},
    {Reason::LauncherUnclear, "launcher-unclear", Effect::Undecided,
     "Another program is started, and what it opens cannot be told."},
    {Reason::TextTooLong, "text-too-long", Effect::Undecided,
     "The text is too long to be tried in every way."},
    {Reason::NoText, "no-text", Effect::Undecided, "The entry holds no text that names a file."},
    {Reason::NotAPath, "not-a-path", Effect::Undecided, "The text only describes something."},
    {Reason::EntryGone, "entry-gone", Effect::Undecided, "The entry no longer exists."},
    {Reason::UserChoice, "user-choice", Effect::Undecided,
     "A user has chosen the program for this kind of file."},
    {Reason::HoldsRecords, "holds-records", Effect::Undecided,
     "The key holds other entries, which may be in use."},
    {Reason::History, "history", Effect::Undecided,
     "It is a record of what a user did, and names nothing that could be checked."},
    {Reason::RuleWithoutPath, "rule-without-path", Effect::Undecided,
     "This firewall rule names no program of its own."},
    {Reason::RecordWithoutName, "record-without-name", Effect::Undecided,
     "The row has no name, so it stands for the whole list and not for one entry."},
    {Reason::ListWithoutRecord, "list-without-record", Effect::Undecided,
     "The row stands for a list that does not exist."},
    {Reason::OwnShadowRow, "own-shadow-row", Effect::Undecided,
     "The row repeats another row of this scan."},
    {Reason::LogsNotReplayed, "logs-not-replayed", Effect::Undecided,
     "Windows was not shut down cleanly, so the newest entries of this disk are not known."},
    {Reason::Implausible, "implausible", Effect::Undecided,
     "Too much looks missing at once, as if a disk or a folder were not connected."},
    {Reason::NotExamined, "not-examined", Effect::Undecided,
     "The entry was not examined a second time."},
}};

constexpr std::array<const char*, 3> confidenceCodes{"unsure", "likely", "sure"};
constexpr std::array<const char*, 3> confidenceWords{"Unsure", "Likely", "Sure"};  // in English

constexpr const char* section = "Evidence";

std::string textOr(const Form42& form, const char* key, const char* english) {
  std::string text = readLanguageText(form, section, key);
  return text.empty() ? std::string(english) : text;
}

bool has(std::span<const Reason> reasons, Reason reason) {
  return std::ranges::find(reasons, reason) != reasons.end();
}

// The reason that the confidence follows from: one that decides nothing comes last.
Reason decisive(std::span<const Reason> reasons) {
  return *std::ranges::max_element(
      reasons, {}, [](Reason reason) { return static_cast<int>(ruleOf(reason).effect); });
}

}  // namespace

std::span<const ReasonRule, reasonCount> reasonRules() { return rules; }

const ReasonRule& ruleOf(Reason reason) { return rules[static_cast<std::size_t>(reason)]; }

const char* codeOf(Confidence confidence) {
  return confidenceCodes[static_cast<std::size_t>(confidence)];
}

std::optional<Confidence> confidenceOfCode(std::string_view code) {
  const auto* found = std::ranges::find(confidenceCodes, code);
  if (found == confidenceCodes.end()) {
    return std::nullopt;
  }
  return static_cast<Confidence>(found - confidenceCodes.begin());
}

Confidence confidenceOf(std::span<const Reason> reasons) {
  const auto countOf = [&](Effect effect) {
    return std::ranges::count_if(reasons,
                                 [&](Reason reason) { return ruleOf(reason).effect == effect; });
  };
  if (reasons.empty() || countOf(Effect::Undecided) > 0) {
    return Confidence::Unsure;
  }
  const auto doubts = countOf(Effect::Doubt);
  if (doubts == 0) {
    return Confidence::Sure;
  }
  return doubts == 1 || has(reasons, Reason::ParentAbsent) ? Confidence::Likely
                                                           : Confidence::Unsure;
}

std::string reasonCodes(const Evidence& evidence) {
  std::string codes;
  for (const Reason reason : evidence.reasons) {
    codes.append(codes.empty() ? "" : " ").append(ruleOf(reason).code);
  }
  return codes;
}

std::string wordOf(const Form42& form, Confidence confidence) {
  return textOr(form, codeOf(confidence), confidenceWords[static_cast<std::size_t>(confidence)]);
}

std::string sentenceOf(const Form42& form, const Evidence& evidence) {
  const ReasonRule& rule =
      ruleOf(evidence.reasons.empty() ? Reason::NotExamined : decisive(evidence.reasons));
  return textOr(form, rule.code, rule.sentence);
}

}  // namespace zelvreg
