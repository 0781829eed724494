#include "undo/UndoRestore.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "form/Form42.h"
#include "registry/Hives.h"
#include "text/Numbers.h"
#include "undo/JournalFile.h"

namespace zelvreg {
namespace {

using Text = std::string JournalRecord::*;

enum class Root { ByHive, CurrentUser, Users, LocalMachine };

// Where a record of one kind is written. The key is `key`, then `below` after a backslash if there
// is one, then `after`; a value without a name is the default value.
struct RestoreRule {
  std::string_view kind;
  Root root;
  Text key;
  Text below;
  const char* after;
  Text valueName;
  Text data;
  bool neverEmpty;  // an empty text is written as one blank
};

constexpr std::array<RestoreRule, 7> rules{{
    {"6", Root::ByHive, &JournalRecord::text, nullptr, "\\defaulticon", nullptr,
     &JournalRecord::value, false},
    {"3", Root::ByHive, &JournalRecord::key, &JournalRecord::value, "", nullptr,
     &JournalRecord::text, false},
    {"7", Root::ByHive, &JournalRecord::text, nullptr, "", nullptr, &JournalRecord::value, true},
    {"11", Root::CurrentUser, &JournalRecord::key, nullptr, "", &JournalRecord::value,
     &JournalRecord::text, false},
    {"12", Root::Users, &JournalRecord::key, nullptr, "", &JournalRecord::value,
     &JournalRecord::text, false},
    {"13", Root::LocalMachine, &JournalRecord::key, nullptr, "", &JournalRecord::value,
     &JournalRecord::text, false},
    // Any other kind. A value that was deleted by its location is restored with name and data
    // exchanged.
    {"", Root::ByHive, &JournalRecord::key, nullptr, "", &JournalRecord::value,
     &JournalRecord::text, false},
}};

constexpr std::string_view sharedDll = "2";

const RestoreRule& ruleFor(std::string_view kind) {
  const auto* found = std::ranges::find(rules, kind, &RestoreRule::kind);
  return found == rules.end() ? rules.back() : *found;
}

// Only two of the four digits name a root that is written to.
HiveHandle hiveOf(int digit) {
  return digit == 1 || digit == 2 ? journalRoots[static_cast<std::size_t>(digit - 1)]
                                  : HiveHandle::Unknown;
}

HiveHandle rootOf(Root root, int digit) {
  switch (root) {
    case Root::CurrentUser:
      return HiveHandle::CurrentUser;
    case Root::Users:
      return HiveHandle::Users;
    case Root::LocalMachine:
      return HiveHandle::LocalMachine;
    default:
      return hiveOf(digit);
  }
}

// False if the registry refuses it. True also for a record that names no root to write to, as
// below.
bool restoreText(const JournalRecord& record, int digit) {
  const RestoreRule& rule = ruleFor(record.kind);
  const HiveHandle hive = rootOf(rule.root, digit);
  if (hive == HiveHandle::Unknown) {
    return true;
  }
  std::string key = record.*rule.key;
  if (rule.below != nullptr) {
    key += "\\" + record.*rule.below;
  }
  key += rule.after;
  const std::string& data = record.*rule.data;
  return SaveRegString(hive, key, rule.valueName == nullptr ? "" : record.*rule.valueName,
                       rule.neverEmpty && data.empty() ? " " : data);
}

// A shared DLL is restored with a use count of one, whatever it was before.
bool restoreSharedDll(Form42& form, const JournalRecord& record, int digit) {
  const HiveHandle hive = hiveOf(digit);
  return hive == HiveHandle::Unknown ||
         SetRegDword(form, keyPath(hive, record.key), record.text, 1);
}

// A field that is no number, or one beyond 16 bits, leaves the digit of the record before.
int digitOf(const std::string& field, int before) {
  const double number = std::nearbyint(convertedNumber(field).value_or(before));
  const bool fits = number >= INT16_MIN && number <= INT16_MAX;
  return fits ? static_cast<int>(number) : before;
}

}  // namespace

std::size_t restoreJournal(Form42& form, std::string_view file) {
  std::size_t refused = 0;
  const std::size_t count = journalRecordCount(file);
  std::size_t number = 1;
  int digit = 0;
  do {
    form.messages.doEvents();
    form.journalRecord = journalRecordAt(file, number);
    const JournalRecord& record = form.journalRecord;
    digit = digitOf(record.hive, digit);
    const bool isRestored = record.kind == sharedDll ? restoreSharedDll(form, record, digit)
                                                     : restoreText(record, digit);
    refused += isRestored ? 0 : 1;
    ++number;
  } while (number <= count);
  return refused;
}

std::size_t restorableRecords(std::string_view file) {
  std::size_t restorable = 0;
  int digit = 0;
  for (std::size_t number = 1; number <= journalRecordCount(file); ++number) {
    const JournalRecord record = journalRecordAt(file, number);
    digit = digitOf(record.hive, digit);
    const HiveHandle hive =
        record.kind == sharedDll ? hiveOf(digit) : rootOf(ruleFor(record.kind).root, digit);
    restorable += hive == HiveHandle::Unknown ? 0 : 1;
  }
  return restorable;
}

}  // namespace zelvreg
