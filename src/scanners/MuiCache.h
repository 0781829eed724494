// Row 16: display names that the shell keeps for programs that no longer exist.
#ifndef ZELVREG_SCANNERS_MUI_CACHE_H
#define ZELVREG_SCANNERS_MUI_CACHE_H

namespace zelvreg {

struct Form42;

// Reports each value of the cache whose name is the path of a missing file. The name is tested
// whole, with what the shell puts after the file's name. Once started, it runs to its end.
void MuiCache(Form42& form);

}  // namespace zelvreg

#endif
