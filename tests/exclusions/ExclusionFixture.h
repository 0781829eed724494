// The exclusions of one test: their file, the results that they are about, the pages' clicks.
#ifndef ZELVREG_TESTS_EXCLUSIONS_EXCLUSION_FIXTURE_H
#define ZELVREG_TESTS_EXCLUSIONS_EXCLUSION_FIXTURE_H

#include <string>
#include <string_view>
#include <vector>

#include "exclusions/ExclusionList.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {

using Texts = std::vector<std::string>;

class ExclusionFixture : public fixture::ComputerFixture {
 protected:
  ExclusionFixture() {
    makeFolder(form.programFolder);
    bindClicks(form);
  }
  ~ExclusionFixture() override { DeleteFileW(Wide(path()).get()); }

  [[nodiscard]] std::string path() const { return form.programFolder + "\\exregscan.txt"; }
  [[nodiscard]] std::string content() const { return readFileText(path()).value_or("(none)"); }
  void write(std::string_view text) const { makeFile(path(), text); }

  void addResult(std::string_view rootName, std::string_view subKey) {
    ScannerRun run;
    addRow(form, run, {"location", "bad value", "2", rootName, subKey, "a"});
  }

  // The keys of the results that are left, without their roots.
  [[nodiscard]] Texts results() const {
    Texts keys;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      keys.push_back(form.View2.text(row, subKeyColumn));
    }
    return keys;
  }

  [[nodiscard]] Texts entries() const {
    Texts texts;
    for (std::size_t row = 1; row <= form.View4.count(); ++row) {
      texts.push_back(form.View4.text(row, 0));
    }
    return texts;
  }
};

}  // namespace zelvreg

#endif
