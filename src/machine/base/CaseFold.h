// The upper-case form by which names of keys, values, files and variables are compared.
#ifndef ZELVREG_MACHINE_BASE_CASE_FOLD_H
#define ZELVREG_MACHINE_BASE_CASE_FOLD_H

#include <cstddef>
#include <string>
#include <string_view>

namespace zelvreg::machine {

// One UTF-16 unit, as the system's own table maps it: one to one, surrogates unchanged.
char16_t upperCase(char16_t unit);
std::u16string upperCase(std::u16string_view text);

// The other way, for text that is shown or compared by the program.
char16_t lowerCase(char16_t unit);

// How many units at their start two texts have in common, case included.
std::size_t commonLength(std::u16string_view first, std::u16string_view second);

// Less than, equal to or greater than 0, as `first` sorts before, with or after `second`.
int compareNames(std::u16string_view first, std::u16string_view second);

// Whether they differ in case at most.
inline bool isSameName(std::u16string_view first, std::u16string_view second) {
  return first.size() == second.size() && compareNames(first, second) == 0;
}

}  // namespace zelvreg::machine

#endif
