#include "evidence/SecondLook.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "evidence/FindingOwner.h"
#include "evidence/KindLooks.h"
#include "evidence/Plausibility.h"
#include "evidence/Reasons.h"
#include "evidence/RowEvidence.h"
#include "evidence/SystemOwner.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "registry/Hives.h"
#include "registry/SubkeyEnumerators.h"
#include "runtime/HiveLogs.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

class Look {
 public:
  Look(const Form42& formInUse, std::size_t rows)
      : texts(sharesOf(formInUse), rows), form(formInUse) {
    named.reserve(rows);
  }

  Evidence at(std::size_t row) {
    Evidence evidence = reasonsFor(row);
    evidence.confidence = confidenceOf(evidence.reasons);
    return evidence;
  }

  TextLook texts;

 private:
  Evidence reasonsFor(std::size_t row) {
    const KindRule* rule = kindRule(form, row);
    if (rule == nullptr) {
      const bool hasKey = !form.View2.text(row, rootNameColumn).empty();
      return withReason(hasKey ? Reason::NotExamined : Reason::OwnShadowRow);
    }
    if (const auto reason = doubtOfRow(row, *rule)) {
      return withReason(*reason);
    }
    LookedAt finding{.form = form,
                     .row = row,
                     .entry = entries.entryOf(form, row, rule->code),
                     .owner = {},
                     .texts = texts};
    if (finding.entry.state != EntryIs::There) {
      return withReason(finding.entry.state == EntryIs::Denied ? Reason::AccessDenied
                                                               : Reason::EntryGone);
    }
    finding.owner = {.user = texts.variables.ownerOf(finding.entry.key),
                     .view = finding.entry.view,
                     .isEveryones = finding.entry.key.hive == HiveHandle::LocalMachine};
    Evidence evidence = rule->look(finding);
    if (confidenceOf(evidence.reasons) != Confidence::Unsure) {
      addDoubts(evidence, finding.entry);
    }
    return evidence;
  }

  // Rows that name no entry of their own.
  std::optional<Reason> doubtOfRow(std::size_t row, const KindRule& rule) {
    constexpr int sharedDll = 2;
    constexpr int emptyRecord = 133;
    // The second list of shared DLLs is tested with the names of the first one in it.
    if (rule.code == sharedDll && !named.insert(form.View2.text(row, locationColumn)).second) {
      return Reason::OwnShadowRow;
    }
    if (rule.code == emptyRecord && trim(form.View2.text(row, badValueColumn)).empty()) {
      const Entry list = entries.entryOf(form, row, rule.code);
      return list.state == EntryIs::Gone ? Reason::ListWithoutRecord : Reason::RecordWithoutName;
    }
    return std::nullopt;
  }

  void addDoubts(Evidence& evidence, const Entry& entry) {
    const TruePlace& key = entry.key;
    if (key.hive == HiveHandle::LocalMachine && isSystems(entry)) {
      evidence.reasons.add(Reason::SystemOwned);
    }
    if (isBehindLogs(key)) {
      evidence.reasons.add(Reason::LogsNotReplayed);
    }
  }

  // Neighbors are mostly values of one key.
  bool isSystems(const Entry& entry) {
    if (entry.key.path != lastOwned.path || entry.key.hive != lastOwned.hive) {
      lastOwned = entry.key;
      isLastSystems = isOwnedBySystem(*entry.opened);
    }
    return isLastSystems;
  }

  // All keys of one file have the same first names, and neighbors mostly come from one file.
  bool isBehindLogs(const TruePlace& key) {
    std::size_t first = std::min(key.path.find(u'\\'), key.path.size());
    const bool isClasses = key.hive == HiveHandle::CurrentUser &&
                           isSameName(key.path.substr(0, userClasses.size()), userClasses);
    first = isClasses ? userClasses.size() : first;
    const auto known = std::ranges::find_if(files, [&](const FileOfKeys& file) {
      return file.hive == key.hive && key.path.compare(0, first, file.start) == 0;
    });
    if (known != files.end()) {
      return known->isBehindLogs;
    }
    const TruePlace start{key.hive, key.path.substr(0, first)};
    files.push_back({key.hive, start.path, isBehindItsLogs(utf8(start.fullPath()))});
    return files.back().isBehindLogs;
  }

  struct FileOfKeys {
    HiveHandle hive;
    std::u16string start;  // the path of its first key
    bool isBehindLogs;
  };
  const std::u16string userClasses = u"Software\\Classes";

  const Form42& form;
  EntryReader entries;
  std::unordered_set<std::string> named;
  std::vector<FileOfKeys> files;
  TruePlace lastOwned;
  bool isLastSystems = false;
};

void tellImplausible(const Form42& form) {
  std::string text;
  for (const std::string& line : form.implausible) {
    text += (text.empty() ? "" : "; ") + line;
  }
  if (!text.empty()) {
    form.dialogs.tell(textOf(form, "implausible", {text}), MessageIcon::Exclamation);
  }
}

}  // namespace

void lookAgain(Form42& form) {
  form.messages.discard(std::exchange(form.evidence, {}));
  form.implausible.clear();
  form.Text2.setText("1");
  const std::vector<bool> isUsers = form.userScope ? keepRowsOfScope(form) : std::vector<bool>();
  Look look(form, form.View2.count());
  form.evidence.reserve(form.View2.count());
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.messages.doEvents();
    // A click on Cancel ends the look, not what it has found.
    form.evidence.push_back(isStopAsked(form) ? withReason(Reason::NotExamined) : look.at(row));
    form.evidence.back().isUsers = !isUsers.empty() && isUsers[row - 1];
    form.View2.setItemData(row, form.evidence.size());
  }
  weighTogether(form, look.texts);
  tellImplausible(form);
}

Evidence lookAtRow(const Form42& form, std::size_t row) { return Look(form, 1).at(row); }

const Evidence* evidenceOf(const Form42& form, std::size_t row) {
  const std::size_t number = form.View2.itemData(row);
  return number == 0 || number > form.evidence.size() ? nullptr : &form.evidence[number - 1];
}

void tickByConfidence(Form42& form) {
  const Confidence least = form.safeguards.careful ? form.leastTicked : Confidence::Unsure;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.View2.setChecked(row, evidenceAt(form, row).confidence >= least);
  }
}

}  // namespace zelvreg
