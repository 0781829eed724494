// Rows of results and the safety exports that they lead to.
#ifndef ZELVREG_TESTS_REPAIR_SAFETY_EXPORT_FIXTURE_H
#define ZELVREG_TESTS_REPAIR_SAFETY_EXPORT_FIXTURE_H

#include <set>
#include <string>
#include <vector>

#include "keys/RegistryTextReader.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

class SafetyExportFixture : public ComputerFixture {
 protected:
  // The program's folder is one of this test's own, without exports.
  SafetyExportFixture();

  // Adds a ticked row and gives its number.
  std::size_t addTickedRow(const Finding& finding);

  // Whole paths of the exports there are, in the order of their names.
  [[nodiscard]] std::vector<std::string> exports() const;
  // The only export, as changes; a failure if there are several, or none.
  [[nodiscard]] std::vector<RegistryChange> exported() const;
  // The same in lower case: "root\key" for a key, "root\key|name" for a value of it, with a "-" in
  // front where it says that there is none.
  [[nodiscard]] std::vector<std::string> exportedNames() const;
};

}  // namespace zelvreg::fixture

#endif
