// Whether a key contains anything that is still in use, so that no repair may delete all of it.
#ifndef ZELVREG_REPAIR_LIVING_CONTENT_H
#define ZELVREG_REPAIR_LIVING_CONTENT_H

#include <cstdint>
#include <optional>
#include <string>

#include "repair/RegistryState.h"

namespace zelvreg {

struct Form42;

// What a finding says about a key that it names.
enum class KeyIs : std::uint8_t {
  DeadReference,  // its default value names something that is gone
  Empty,          // it holds no value but a blank default one
};

// The full path of the first thing in the key or below it that a repair must not delete: a
// reference that leads somewhere or cannot be decided; a subkey with values, which is a separate
// record, unless all of them are dead; a link; what cannot be read. std::nullopt if all of it may
// go.
std::optional<std::u16string> livingContent(const Form42& form, const RegistryState& registry,
                                            const TruePlace& key, KeyIs is);

// What a text of the registry refers to, as far as it can be told from here.
enum class Reference : std::uint8_t {
  None,    // it only describes
  Dead,    // a path on a drive that is there, and by no reading of it is there anything
  Living,  // it is found, or cannot be decided: a share, a bare name, a class
};
Reference referenceIn(const Form42& form, const std::string& text);

// Whether a text is the path of an existing file or folder on a drive. It may be in quotes and have
// arguments after it.
bool isFoundNow(const Form42& form, const std::string& text);

}  // namespace zelvreg

#endif
