// The key or the value in the registry that a finding names.
#ifndef ZELVREG_REPAIR_NAMED_RECORD_H
#define ZELVREG_REPAIR_NAMED_RECORD_H

#include <optional>
#include <string>

#include "repair/RegistryState.h"
#include "repair/RepairTable.h"

namespace zelvreg {

// A value, or a key if `value` is std::nullopt.
struct RecordPlace {
  TruePlace key;
  std::optional<std::u16string> value;

  // The full path; for a value, its name follows in quotes.
  [[nodiscard]] std::u16string text() const;
};
[[nodiscard]] bool isSameRecord(const RecordPlace& first, const RecordPlace& second);

struct NamedRecord {
  Names names = Names::Value;
  RecordPlace place;
  // Why the finding is doubtful, or the empty text.
  std::string doubt;

  // Whether it still exists. A key that is named by its text must still have one.
  [[nodiscard]] bool isThere(const RegistryState& registry) const;
};

// std::nullopt if it no longer exists.
std::optional<NamedRecord> namedRecord(Form42& form, const RegistryState& registry, std::size_t row,
                                       const RepairKind& kind);

}  // namespace zelvreg

#endif
