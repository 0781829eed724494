// The second look at the findings of each kind: what the entry of the row refers to, or for a kind
// that names no file, whether anything depends on it.
#ifndef ZELVREG_EVIDENCE_KIND_LOOKS_H
#define ZELVREG_EVIDENCE_KIND_LOOKS_H

#include <cstddef>
#include <string>

#include "evidence/Entry.h"
#include "evidence/TextLook.h"
#include "form/Evidence.h"

namespace zelvreg {

struct Form42;

// One finding to be looked at.
struct LookedAt {
  const Form42& form;
  std::size_t row;
  Entry entry;
  TextOwner owner;
  TextLook& texts;

  // A cell of the row.
  [[nodiscard]] const std::string& cell(std::size_t column) const;
  // Whether its location is a class of an app that Windows installs and removes itself.
  [[nodiscard]] bool isOfPackagedClass() const;
};

// Reasons with what was tested, without a confidence.
using KindLook = Evidence (*)(const LookedAt& finding);

struct KindRule {
  int code;
  std::size_t category;  // its row in the list of categories
  KindLook look;
  // Whether the entry names a file, so that a disk that is not connected makes it look dead.
  bool namesFile;
};

// The rule for a row: by its code, and where two kinds share one, by its key. Null for a row
// without a code that a scan gives.
const KindRule* kindRule(const Form42& form, std::size_t row);

// One for each family; see docs/evidence.md.
namespace looks {

// Files.
Evidence font(const LookedAt& finding);
Evidence sharedDll(const LookedAt& finding);
Evidence applicationPath(const LookedAt& finding);
Evidence helpFile(const LookedAt& finding);
Evidence helpTopic(const LookedAt& finding);
Evidence icon(const LookedAt& finding);
Evidence command(const LookedAt& finding);
Evidence server(const LookedAt& finding);
Evidence reference(const LookedAt& finding);
Evidence firewallRule(const LookedAt& finding);
Evidence helpFolder(const LookedAt& finding);
Evidence recordValue(const LookedAt& finding);
Evidence startupProgram(const LookedAt& finding);
Evidence muiName(const LookedAt& finding);

// Entries that name no file.
Evidence libraryReference(const LookedAt& finding);
Evidence fileExtension(const LookedAt& finding);
Evidence emptyRecord(const LookedAt& finding);
Evidence recentEntry(const LookedAt& finding);
Evidence emptyCommandOrMediaType(const LookedAt& finding);

}  // namespace looks

}  // namespace zelvreg

#endif
