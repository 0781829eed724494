// The registry as it is, or as it will be once what was noted is gone. A repair is judged by it,
// before it begins and while it runs.
#ifndef ZELVREG_REPAIR_REGISTRY_STATE_H
#define ZELVREG_REPAIR_REGISTRY_STATE_H

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "evidence/TruePlaces.h"

namespace zelvreg {

class RegistryState {
 public:
  // What denies access, or cannot be read, counts as existing.
  [[nodiscard]] bool hasKey(const TruePlace& key) const;
  [[nodiscard]] bool hasValue(const TruePlace& key, const std::u16string& name) const;

  // A value; std::nullopt if it does not exist or cannot be read.
  [[nodiscard]] std::optional<WideValue> value(const TruePlace& key,
                                               const std::u16string& name) const;
  // What is in a key; in the link itself, if it is one. std::nullopt if it cannot be read.
  [[nodiscard]] std::optional<std::vector<WideValue>> values(const TruePlace& key) const;
  [[nodiscard]] std::optional<std::vector<std::u16string>> subkeys(const TruePlace& key) const;

  // Whether the key, or one above it, is a link in a user's keys. A user can create one that leads
  // anywhere. The link from a user's software to the classes belongs to the system and does not
  // count.
  [[nodiscard]] static bool isBehindUsersLink(const TruePlace& key);

  // From now on they count as gone, a key with everything below it.
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

}  // namespace zelvreg

#endif
