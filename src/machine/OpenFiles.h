// The handles of files and of folder searches that the program has open.
#ifndef ZELVREG_MACHINE_OPEN_FILES_H
#define ZELVREG_MACHINE_OPEN_FILES_H

#include <windows.h>

#include <cstdint>
#include <map>
#include <variant>
#include <vector>

#include "machine/FileDescriptor.h"

namespace zelvreg::machine {

struct OpenFile {
  FileDescriptor file;
  bool mayRead = false;
  bool mayWrite = false;
};

struct OpenSearch {
  std::vector<WIN32_FIND_DATAA> found;
  std::size_t next = 0;
};

class OpenFiles {
 public:
  HANDLE add(OpenFile file);
  HANDLE add(OpenSearch search);

  // Null if the handle is none, closed, or one of the other sort. Valid until it is closed.
  OpenFile* file(HANDLE handle);
  OpenSearch* search(HANDLE handle);

  // False if there is no such handle of this sort.
  bool closeFile(HANDLE handle);
  bool closeSearch(HANDLE handle);

  [[nodiscard]] std::size_t count() const { return open.size(); }

 private:
  using Entry = std::variant<OpenFile, OpenSearch>;
  HANDLE addEntry(Entry entry);
  template <typename Sort>
  Sort* get(HANDLE handle);
  template <typename Sort>
  bool close(HANDLE handle);

  std::map<std::uintptr_t, Entry> open;
  std::uintptr_t last = 0;
};

}  // namespace zelvreg::machine

#endif
