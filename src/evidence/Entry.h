// The entry of the registry that a finding names, as it stands there now.
#ifndef ZELVREG_EVIDENCE_ENTRY_H
#define ZELVREG_EVIDENCE_ENTRY_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "evidence/OwnerVariables.h"
#include "evidence/TruePlaces.h"

namespace zelvreg {

struct Form42;

enum class EntryIs : std::uint8_t { There, Gone, Denied };

struct Entry {
  EntryIs state = EntryIs::Gone;
  TruePlace key;                       // where it is, or would be
  std::optional<std::u16string> name;  // of the value; without one the key itself is named
  DWORD type = REG_NONE;
  std::string text;  // of a single text, as it is; empty for any other type
  DWORD number = 0;  // of a REG_DWORD of its full size
  // The key, open to read its values and, if that is allowed, its owner and its subkeys; null if it
  // is not there.
  // Valid until the next entry is read.
  const WideKey* opened = nullptr;
  ProgramView view = ProgramView::Bits64;  // of the programs that read it
};

// Reads what rows name. Rows of one list follow each other, so the key of the last one stays open.
class EntryReader {
 public:
  // A key of which only the default value was judged comes with that value.
  Entry entryOf(const Form42& form, std::size_t row, int code);

 private:
  struct OpenPlace {
    TruePlace place;
    ProgramView view;
    WideKey key;
  };
  const std::vector<OpenPlace>& open(HiveHandle root, const std::string& key);

  HiveHandle rootOf(const Form42& form, std::size_t row);

  std::string lastRootName;
  HiveHandle namedRoot = HiveHandle::Unknown;
  HiveHandle lastRoot = HiveHandle::Unknown;
  std::string lastKey;
  std::vector<OpenPlace> places;
};

// What a key holds. Nothing for one that does not exist or cannot be read.
struct KeyContent {
  bool isDenied = false;
  std::vector<WideValue> values;
  std::vector<std::u16string> subkeys;

  [[nodiscard]] bool hasNamedValue() const;
};
KeyContent contentOf(const TruePlace& key);

// Whether the key or anything below it, some levels deep, holds a value.
bool holdsValues(const TruePlace& key, int levels);

// Whether a component carries out a command, whatever the text of its key says; also if the verb
// cannot be read.
bool hasOtherHandler(const Entry& command);

// The key above; the root itself for a key directly below it.
TruePlace parentOf(const TruePlace& key);

}  // namespace zelvreg

#endif
