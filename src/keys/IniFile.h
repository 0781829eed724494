// A forgiving reader of INI files.
#ifndef ZELVREG_KEYS_INI_FILE_H
#define ZELVREG_KEYS_INI_FILE_H

#include <windows.h>

#include <string>

#include "runtime/Shares.h"

namespace zelvreg {

// Looks for the first section whose header contains `section` followed by a blank or "]", and in it
// for the first line that begins with `key` and holds "=". All is compared in upper case. Found:
// `result` is what stands behind the "=", in upper case like the line, `section` the whole name
// from the header, `rc` 0. Else `result` is `fallback` and `rc` is 2, also for a file that may not
// be followed.
void fReadIniFuzzy(const std::string& file, std::string& section, const std::string& key,
                   const std::string& fallback, std::string& result, LONG& rc,
                   Shares shares = Shares::Refused);

}  // namespace zelvreg

#endif
