// What a text of the registry refers to, resolved as Windows itself would: with the variables of
// its owner and of its view, along the search path, with the extension that the system adds, behind
// launchers, in both system folders.
#ifndef ZELVREG_EVIDENCE_TEXT_LOOK_H
#define ZELVREG_EVIDENCE_TEXT_LOOK_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evidence/InstalledProducts.h"
#include "evidence/Launchers.h"
#include "evidence/OwnerVariables.h"
#include "evidence/PathLook.h"
#include "form/Evidence.h"
#include "runtime/Shares.h"
#include "text/TextTable.h"

namespace zelvreg {

class TextLook {
 public:
  // For as many findings as are expected: a table of 100,000 that grows holds everybody up.
  TextLook(Shares mayAskShares, std::size_t expectedFindings)
      : paths(mayAskShares, variables, products, 2 * expectedFindings) {
    known.reserve(expectedFindings);
  }
  TextLook(const TextLook&) = delete;
  TextLook& operator=(const TextLook&) = delete;
  ~TextLook() = default;

  // The reasons with what was tested; without a confidence. `text` is as it stands in the registry.
  // Valid as long as this.
  const Evidence& at(const std::string& text, const TextOwner& owner, Reading reading);

  // The first of several texts that is found; what is said of the first one if none is.
  Evidence atAny(const std::vector<std::string>& texts, const TextOwner& owner, Reading reading);

  // A text with the variables of its owner.
  std::string expanded(std::string_view text, const TextOwner& owner);

  OwnerVariables variables;
  InstalledProducts products;

 private:
  Evidence look(const std::string& text, const TextOwner& owner, Reading reading, int depth);
  PathTrial tryText(const std::string& text, const TextOwner& owner, Reading reading, int depth);
  PathTrial tryTarget(const LaunchTarget& target, const TextOwner& owner, int depth);

  void tryPart(PathTrial& trial, const std::string& part, const TextOwner& owner, Reading reading);

  struct Nothing {};

  PathLook paths;
  // Parts that name nothing: all texts of one folder begin alike.
  TextTable<Nothing> deadParts;
  // By text, owner and reading: a class and its merged view name the same file.
  TextTable<Evidence> known;
};

Evidence withReason(Reason reason);
// Whether a reason says that the target was found.
bool isFound(const Evidence& evidence);

}  // namespace zelvreg

#endif
