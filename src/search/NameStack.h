// The names of the keys of several levels, one level above the other, in one piece of memory.
#ifndef ZELVREG_SEARCH_NAME_STACK_H
#define ZELVREG_SEARCH_NAME_STACK_H

#include <cstddef>
#include <string>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg {

// A place is where a name begins, or the top, where the next name will. The first name of a level
// stands at what was the top before; the next one at after() of its place.
class NameStack {
 public:
  // The name must not hold a NUL.
  void add(std::u16string_view name) {
    appendUtf8(names, name);
    names += '\0';
  }
  [[nodiscard]] std::size_t top() const { return names.size(); }
  // Valid until the next change.
  [[nodiscard]] std::string_view at(std::size_t place) const {
    return std::string_view(names).substr(place, names.find('\0', place) - place);
  }
  [[nodiscard]] std::size_t after(std::size_t place) const { return names.find('\0', place) + 1; }
  // Takes away the names from this place on.
  void cutTo(std::size_t place) { names.resize(place); }

 private:
  std::string names;  // each with a NUL behind it
};

}  // namespace zelvreg

#endif
