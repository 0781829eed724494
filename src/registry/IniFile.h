// A forgiving reader of INI files.
#ifndef ZELVREG_REGISTRY_INI_FILE_H
#define ZELVREG_REGISTRY_INI_FILE_H

#include <windows.h>

#include <string>

namespace zelvreg {

// Looks for the first section whose header contains `section` followed by a blank or "]", and in it
// for the first line that begins with `key` and holds "=". All is compared in upper case. Found:
// `result` is what stands behind the "=", in upper case like the line, `section` the whole name
// from the header, `rc` 0. Else `result` is `fallback` and `rc` is 2.
void fReadIniFuzzy(const std::string& file, std::string& section, const std::string& key,
                   const std::string& fallback, std::string& result, LONG& rc);

}  // namespace zelvreg

#endif
