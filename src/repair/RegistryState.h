// The registry as it is, or as it will be once what was noted is gone: what a repair is judged by,
// before it and in its midst.
#ifndef ZELVREG_REPAIR_REGISTRY_STATE_H
#define ZELVREG_REPAIR_REGISTRY_STATE_H

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "repair/TruePlaces.h"

namespace zelvreg {

class RegistryState {
 public:
  // What refuses itself, or cannot be told, is there.
  [[nodiscard]] bool hasKey(const TruePlace& key) const;
  [[nodiscard]] bool hasValue(const TruePlace& key, const std::u16string& name) const;

  // A value; none when it is not there or cannot be read.
  [[nodiscard]] std::optional<WideValue> value(const TruePlace& key,
                                               const std::u16string& name) const;
  // What lies in a key itself, where it is a link; none when it cannot be read.
  [[nodiscard]] std::optional<std::vector<WideValue>> values(const TruePlace& key) const;
  [[nodiscard]] std::optional<std::vector<std::u16string>> subkeys(const TruePlace& key) const;

  // Whether a link below the users' roots leads to the key, or is it. A user can make one that
  // leads anywhere. The one from a user's software to the classes is the system's own.
  [[nodiscard]] static bool isBehindUsersLink(const TruePlace& key);

  // From now on they count as gone, a key with all below it.
  void noteKeyGone(const TruePlace& key);
  void noteValueGone(const TruePlace& key, const std::u16string& name);

 private:
  using Paths = std::set<std::u16string, NameOrder>;

  [[nodiscard]] std::u16string identityOf(const TruePlace& key) const;
  [[nodiscard]] std::u16string identityOf(const TruePlace& key, const std::u16string& value) const;
  [[nodiscard]] bool isKeyGone(const TruePlace& key) const;
  [[nodiscard]] bool isValueGone(const TruePlace& key, const std::u16string& name) const;

  Paths goneKeys;
  Paths goneValues;
  mutable std::optional<std::u16string> userKey;  // looked up when first asked for
};

// The place of a subkey.
[[nodiscard]] TruePlace below(const TruePlace& key, const std::u16string& name);

}  // namespace zelvreg

#endif
