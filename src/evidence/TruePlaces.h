// Where keys really are: what the views and the merged classes root show at one path, as paths of
// the 64-bit view, in the registry's own spelling.
#ifndef ZELVREG_EVIDENCE_TRUE_PLACES_H
#define ZELVREG_EVIDENCE_TRUE_PLACES_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "keys/WideKey.h"

namespace zelvreg {

// A key below HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or HKEY_USERS.
struct TruePlace {
  HiveHandle hive = HiveHandle::Unknown;
  std::u16string path;

  // With the long name of its root.
  [[nodiscard]] std::u16string fullPath() const;
};

// The 64-bit view; the process's own; or both, to miss nothing.
enum class Views : std::uint8_t { True, Own, Both };

// Where a call with this path may lead, places of the 64-bit view first, and in each view the
// user's first, as in the merged classes root. They need not exist. None for a path that no key can
// have, and for other roots.
[[nodiscard]] std::vector<TruePlace> possiblePlaces(HiveHandle hive, const std::string& key,
                                                    Views views);

// The name of the user's own key for a path below HKEY_USERS, which may be of the user's classes.
[[nodiscard]] std::u16string userOf(const std::u16string& path);

// The name of the current user's key below HKEY_USERS; empty if it cannot be found out.
[[nodiscard]] std::u16string currentUserKey();

// The place of a subkey.
[[nodiscard]] TruePlace below(const TruePlace& key, const std::u16string& name);

// Whether two places are the same key. Case does not count.
[[nodiscard]] bool isSameKey(const TruePlace& first, const TruePlace& second);

// Remembers the names that it has listed, so do not use it after changes of the registry.
class TruePlaces {
 public:
  // The keys that a call with this path may mean, without those that do not exist. Keys that deny
  // access are among them. None for a path that no key can have, and for other roots.
  [[nodiscard]] std::vector<TruePlace> of(HiveHandle hive, const std::string& key, Views views);

 private:
  using NameSet = std::set<std::u16string, NameOrder>;

  void addIfThere(std::vector<TruePlace>& places, const TruePlace& asked);
  const NameSet& namesIn(const TruePlace& place);

  std::map<std::u16string, NameSet> listed;  // by the full path of the key above
};

}  // namespace zelvreg

#endif
