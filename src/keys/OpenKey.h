// An open key that closes itself.
#ifndef ZELVREG_KEYS_OPEN_KEY_H
#define ZELVREG_KEYS_OPEN_KEY_H

#include <windows.h>

#include <string>

#include "keys/OpenPair.h"
#include "keys/RootHandles.h"
#include "text/Wide.h"

namespace zelvreg {

// The rights that the direct routines ask for.
inline constexpr REGSAM workOn64BitView =
    319;                                       // query, set, create, enumerate, notify, link, 0x100
inline constexpr REGSAM workOn32BitView = 63;  // the same without the flag of the 64-bit view
inline constexpr REGSAM queryOn32BitView = 1;
inline constexpr REGSAM writeOn32BitView = 0x20006;
inline constexpr REGSAM settingsAccess = 0x2003F;

class OpenKey {
 public:
  OpenKey() = default;
  OpenKey(HiveHandle hive, const std::string& path, REGSAM access,
          ClassesOf classes = ClassesOf::Both)
      : pair(hive, Wide(path).get(), access, 0, classes) {}

  [[nodiscard]] bool isOpen() const { return pair.handle() != nullptr; }
  // What the call that opened it returned.
  [[nodiscard]] LONG openStatus() const { return pair.openStatus(); }
  [[nodiscard]] HKEY handle() const { return pair.handle(); }

  // The name of the subkey at a place, as RegEnumKey gives it.
  template <typename Room>
  [[nodiscard]] LONG subkeyName(DWORD index, Room& room) const {
    const OpenPair::Place place = pair.subkeyAt(index);
    return RegEnumKeyW(place.key, place.index, roomIn(room), static_cast<DWORD>(room.size()));
  }
  // Where RegEnumValue finds the value at a place.
  [[nodiscard]] OpenPair::Place valueAt(DWORD index) const { return pair.valueAt(index); }
  // Where RegQueryValueEx finds a value of this name.
  [[nodiscard]] HKEY keyOf(const std::string& valueName) const {
    return pair.keyOf(Wide(valueName).get());
  }

  // What the call that closes it returns; 0 if it is closed already.
  LONG close() { return pair.close(); }
  // As OpenPair does it: leaves the handle open, unless that would keep another user's keys loaded.
  void abandon() { pair.abandon(); }

 private:
  OpenPair pair;
};

}  // namespace zelvreg

#endif
