// How the registry tells names apart.
#ifndef ZELVREG_KEYS_NAME_ORDER_H
#define ZELVREG_KEYS_NAME_ORDER_H

#include <string>

namespace zelvreg {

// Orders names without regard to case.
struct NameOrder {
  bool operator()(const std::u16string& first, const std::u16string& second) const;
};
// Whether two names differ in case at most.
bool isSameName(const std::u16string& first, const std::u16string& second);

}  // namespace zelvreg

#endif
