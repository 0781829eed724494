// Reading a path as Windows does, before any folder is looked at.
#ifndef ZELVREG_MACHINE_FILES_PATH_NAME_H
#define ZELVREG_MACHINE_FILES_PATH_NAME_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zelvreg::machine {

struct PathName {
  // ERROR_SUCCESS, or what a call answers that is given this text.
  LONG error = ERROR_SUCCESS;
  char drive = '\0';  // the upper-case letter
  // From the drive's root down, as they are written, a backslash in front of each: "\\Windows\\x".
  std::u16string names;
  bool endsInSeparator = false;
};

// Both "\" and "/" separate; "." and ".." are resolved; blanks and dots at the end of a name are
// dropped. A path without a drive is taken from `current`, one that begins with a separator from
// the root of its drive. "\\?\" in front is passed over. The characters * ? " < > | and those below
// the blank are in no name (ERROR_INVALID_NAME), and there is no network (ERROR_PATH_NOT_FOUND).
PathName parsePath(std::u16string_view text, const PathName& current);

// A path with its drive, as a setting gives it.
PathName parseFullPath(std::u16string_view text);

// Cuts off the part after the last separator or the drive's colon and gives it.
std::u16string_view takeLastPart(std::u16string_view& text);

// The names of a path that `above` begins, which is a whole number of names; none if another path
// is there, in any case. Empty for `above` itself.
std::optional<std::u16string_view> namesBelow(const PathName& above, const PathName& path);

// A name without the blanks and dots at its end; "." and ".." stay.
std::u16string_view withoutEnd(std::u16string_view name);

inline bool isSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

}  // namespace zelvreg::machine

#endif
