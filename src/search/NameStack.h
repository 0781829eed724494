// The names of the keys of several levels, one level above the other, in one piece of memory.
#ifndef ZELVREG_SEARCH_NAME_STACK_H
#define ZELVREG_SEARCH_NAME_STACK_H

#include <cstddef>
#include <string>
#include <string_view>

#include "unicode/Unicode.h"

namespace zelvreg {

// A place is where a name begins, or the top, where the next name will. The first name of a level
// stands at what was the top before; the next one sizeOf() the first after it.
class NameStack {
 public:
  // The name must not hold a NUL.
  void add(std::u16string_view name) {
    appendUtf8(names, name);
    names += '\0';
  }
  [[nodiscard]] std::size_t top() const { return names.size(); }
  // Valid until the next change.
  [[nodiscard]] std::string_view at(std::size_t place) const { return names.c_str() + place; }
  // How far the next name is from this one.
  static std::size_t sizeOf(std::string_view name) { return name.size() + 1; }
  // Takes away the names from this place on.
  void cutTo(std::size_t place) { names.resize(place); }

 private:
  std::string names;  // each with a NUL behind it
};

}  // namespace zelvreg

#endif
