// An open key that closes itself, with the key that it covers where classes are merged.
#ifndef ZELVREG_KEYS_OPEN_PAIR_H
#define ZELVREG_KEYS_OPEN_PAIR_H

#include <windows.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "roots/Roots.h"

namespace zelvreg {

// What of HKEY_CLASSES_ROOT is meant where another user's classes stand in (keys/ActingUser.h): the
// user's and the computer's, as the system shows them, to read them; or only the user's, to change
// them.
enum class ClassesOf : unsigned char { Both, User };

// Whether keys that are abandoned stay open, as the program was made to do. At first they do not: a
// process that scans and repairs for years would run out of handles.
void leaveKeysOpen(bool leaves);

class OpenPair {
 public:
  OpenPair() = default;
  OpenPair(HiveHandle hive, LPCWSTR path, REGSAM access, DWORD options = 0,
           ClassesOf classes = ClassesOf::Both);
  // A subkey, by its name.
  OpenPair(const OpenPair& parent, LPCWSTR name, REGSAM access);
  // Takes over the handle.
  OpenPair(HKEY opened, LONG openStatus) : key(opened), status(openStatus) {}
  OpenPair(OpenPair&& other) noexcept
      : key(std::exchange(other.key, nullptr)),
        status(other.status),
        merged(std::move(other.merged)) {}
  OpenPair(const OpenPair&) = delete;
  OpenPair& operator=(const OpenPair&) = delete;
  OpenPair& operator=(OpenPair&&) = delete;
  ~OpenPair() { close(); }

  // The user's key, else the computer's; null if neither could be opened.
  [[nodiscard]] HKEY handle() const { return key; }
  // What the call that opened it returned.
  [[nodiscard]] LONG openStatus() const { return status; }
  // What the call that closes it returns; 0 if it is closed already.
  LONG close() {
    merged.reset();
    HKEY open = std::exchange(key, nullptr);
    return open == nullptr ? ERROR_SUCCESS : RegCloseKey(open);
  }
  // Leaves the handle open for good, if that is how it is to be; closes it otherwise.
  void abandon();

  // Where a call that lists subkeys or values finds the one at this place.
  struct Place {
    HKEY key;
    DWORD index;
  };
  [[nodiscard]] Place subkeyAt(DWORD index) const {
    return merged ? merged->subkey(index) : Place{key, index};
  }
  [[nodiscard]] Place valueAt(DWORD index) const {
    return merged ? merged->value(index) : Place{key, index};
  }
  // The key that shows a value of this name: the user's if it has one.
  [[nodiscard]] HKEY keyOf(LPCWSTR valueName) const {
    return merged ? merged->keyOf(valueName) : key;
  }

 private:
  // What both keys hold together, listed when it is first asked for.
  class Merged {
   public:
    // Closes `computersKey` in the end.
    Merged(HKEY usersKey, HKEY computersKey) : users(usersKey), computers(computersKey) {}
    Merged(const Merged&) = delete;
    Merged& operator=(const Merged&) = delete;
    ~Merged() { RegCloseKey(computers); }

    [[nodiscard]] HKEY computersKey() const { return computers; }
    Place subkey(DWORD index);
    Place value(DWORD index);
    [[nodiscard]] HKEY keyOf(LPCWSTR valueName) const;

   private:
    using Places = std::vector<Place>;

    [[nodiscard]] Places listedSubkeys() const;
    [[nodiscard]] Places listedValues() const;
    [[nodiscard]] Place placeIn(const Places& places, DWORD index) const;

    HKEY users;
    HKEY computers;
    std::optional<Places> subkeys;
    std::optional<Places> values;
  };

  void openCovered(HKEY parent, LPCWSTR path, REGSAM access, DWORD options);

  HKEY key = nullptr;
  LONG status = ERROR_SUCCESS;
  std::unique_ptr<Merged> merged;  // only where both keys are there
};

}  // namespace zelvreg

#endif
