// The keys that a scan could not look at, for lack of rights.
#ifndef ZELVREG_KEYS_REFUSED_KEYS_H
#define ZELVREG_KEYS_REFUSED_KEYS_H

#include <windows.h>

#include <set>
#include <string>

#include "roots/Roots.h"
#include "text/Text.h"

namespace zelvreg {

// Whole paths. One that is asked for in several spellings is there once, in the first.
struct AnyCase {
  bool operator()(const std::string& first, const std::string& second) const {
    return lowerCase(first) < lowerCase(second);
  }
};
using KeyPaths = std::set<std::string, AnyCase>;

// While one lives, a key that refuses to be opened for changes is opened for reading, which is all
// that a scan does with it; one that refuses that, too, is noted. Without it a process without the
// rights of an administrator would see next to nothing of HKEY_LOCAL_MACHINE. One at a time.
class RefusedKeys {
 public:
  RefusedKeys();
  RefusedKeys(const RefusedKeys&) = delete;
  RefusedKeys& operator=(const RefusedKeys&) = delete;
  ~RefusedKeys();

  [[nodiscard]] const KeyPaths& paths() const { return refused; }
  void note(HiveHandle hive, LPCWSTR path);

 private:
  KeyPaths refused;
};

// RegOpenKeyEx of a key that is to be read, by the path below its root.
LONG openNotingRefusal(HiveHandle hive, LPCWSTR path, DWORD options, REGSAM access, HKEY& key);

}  // namespace zelvreg

#endif
