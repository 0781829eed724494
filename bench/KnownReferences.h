// The labels of a made machine, found again by the rows of a scan.
#ifndef ZELVREG_BENCH_KNOWN_REFERENCES_H
#define ZELVREG_BENCH_KNOWN_REFERENCES_H

#include <cstddef>
#include <string>
#include <unordered_map>

#include "Labels.h"

namespace zelvreg {
struct Form42;
}

namespace zelvreg::bench {

struct KnownReference {
  std::string place;  // kind code, key and value
  const char* family = "";
  Truth truth = Truth::Alive;
};

class KnownReferences {
 public:
  // A second label of one place replaces the first.
  void add(const Label& label);

  // What a row of View2 names; null if that has no label.
  [[nodiscard]] const KnownReference* find(const Form42& form, std::size_t row) const;

  [[nodiscard]] std::size_t count() const { return known.size(); }

 private:
  // By the place, without regard to case.
  std::unordered_map<std::string, KnownReference> known;
};

}  // namespace zelvreg::bench

#endif
