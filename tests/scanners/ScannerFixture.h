// What the tests of all scanners share: the findings as texts, and a look at each yield.
#ifndef ZELVREG_TESTS_SCANNERS_SCANNER_FIXTURE_H
#define ZELVREG_TESTS_SCANNERS_SCANNER_FIXTURE_H

#include <functional>
#include <string>
#include <vector>

#include "support/ComputerFixture.h"

namespace zelvreg::fixture {

using Texts = std::vector<std::string>;

// Where the running total is kept for the suite.
inline const std::string countKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

class ScannerFixture : public ComputerFixture {
 protected:
  using ComputerFixture::ComputerFixture;

  std::vector<Texts> findings() const {
    std::vector<Texts> rows;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      rows.push_back(findingOf(form, row));
    }
    return rows;
  }

  // Scans, noting something each time the message queue is served.
  Texts noteDuring(void (*scanner)(Form42& form), const std::function<std::string()>& note) {
    Texts notes;
    form.messages.serveHost = [&] { notes.push_back(note()); };
    scanner(form);
    form.messages.serveHost = nullptr;
    return notes;
  }
};

}  // namespace zelvreg::fixture

#endif
