// What reads bytes that somebody else has written, as something that any bytes can be given to: by
// libFuzzer, which looks for those that break it, and by the tests, which give it those that did.
#ifndef ZELVREG_TESTS_FUZZ_FUZZ_TARGET_H
#define ZELVREG_TESTS_FUZZ_FUZZ_TARGET_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zelvreg::fuzz {

// A rule that holds for any input was broken by this one.
class BrokenRule : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
inline void require(bool holds, const std::string& rule) {
  if (!holds) {
    throw BrokenRule(rule);
  }
}

struct FuzzTarget {
  // Also of its folder in tests/fuzz/inputs, and of its list of words in tests/fuzz/words if it has
  // one.
  const char* name;
  // Throws BrokenRule. Whatever else it throws is a fault, too.
  void (*run)(std::string_view input);
  // Puts checksums right after a change; null if there are none.
  void (*mend)(std::string& input) = nullptr;
  // Whether numbers of four bytes lead from one place in the input to another.
  bool isBinary = false;
};

std::span<const FuzzTarget> fuzzTargets();

// Those of each file beside this one.
std::span<const FuzzTarget> hiveTargets();
std::span<const FuzzTarget> folderTargets();
std::span<const FuzzTarget> userFileTargets();
std::span<const FuzzTarget> textTargets();
std::span<const FuzzTarget> foreignTargets();

}  // namespace zelvreg::fuzz

#endif
