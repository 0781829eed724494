// What a scan or a search in progress has found out and is asked for again: hundreds of thousands
// of entries name some thousand files. One that touches what it finds asks every time, since its
// questions have effects.
#ifndef ZELVREG_FORM_SCAN_MEMORY_H
#define ZELVREG_FORM_SCAN_MEMORY_H

#include <string>

#include "runtime/FileSystemObject.h"
#include "text/TextTable.h"

namespace zelvreg {

// A text of the registry as the resolver leaves it, and the path that it means.
struct ResolvedText {
  std::string text;
  std::string path;
};

struct ScanMemory {
  TextTable<fileSystemObject::Answer> files;  // by path
  TextTable<ResolvedText> texts;
};

}  // namespace zelvreg

#endif
