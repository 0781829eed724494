// Text between blanks, in the files that people edit.
#ifndef ZELVREG_MACHINE_BASE_TRIMMING_H
#define ZELVREG_MACHINE_BASE_TRIMMING_H

#include <string_view>
#include <type_traits>

namespace zelvreg::machine {

// Without the units at both ends that are among `blanks`; each kind of file has its own. `blanks`
// alone says which units these are, so that `text` may be a string too. The result is part of
// `text`, and lives no longer.
template <typename Unit>
std::basic_string_view<Unit> trimmed(std::type_identity_t<std::basic_string_view<Unit>> text,
                                     std::basic_string_view<Unit> blanks) {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::basic_string_view<Unit>::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace zelvreg::machine

#endif
