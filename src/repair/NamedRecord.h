// What a finding names, as it lies in the registry.
#ifndef ZELVREG_REPAIR_NAMED_RECORD_H
#define ZELVREG_REPAIR_NAMED_RECORD_H

#include <optional>
#include <string>

#include "repair/RegistryState.h"
#include "repair/RepairTable.h"

namespace zelvreg {

// A value, or a key where `value` is none.
struct RecordPlace {
  TruePlace key;
  std::optional<std::u16string> value;

  // The whole path; of a value with its name behind it, in quotes.
  [[nodiscard]] std::u16string text() const;
};
[[nodiscard]] bool isSameRecord(const RecordPlace& first, const RecordPlace& second);

struct NamedRecord {
  Names names = Names::Value;
  RecordPlace place;
  // Why the finding is not to be believed, or the empty text.
  std::string doubt;

  // Of a key that is named by its text: whether it still has one.
  [[nodiscard]] bool isThere(const RegistryState& registry) const;
};

// None where nothing of the sort is there any more.
std::optional<NamedRecord> namedRecord(Form42& form, const RegistryState& registry, std::size_t row,
                                       const RepairKind& kind);

}  // namespace zelvreg

#endif
