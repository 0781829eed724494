// The handles of files and of folder searches that the program has open.
#ifndef ZELVREG_MACHINE_FILES_OPEN_FILES_H
#define ZELVREG_MACHINE_FILES_OPEN_FILES_H

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "machine/base/FileDescriptor.h"
#include "machine/files/Drives.h"

namespace zelvreg::machine {

struct OpenFile {
  FileDescriptor file;
  bool mayRead = false;
  bool mayWrite = false;
};

// What of a folder fits a pattern, in the order of its names as they were at the beginning.
struct OpenSearch {
  Place folder;
  std::u16string pattern;  // in upper case
  std::shared_ptr<const ListedNames> names;
  std::size_t next = 0;  // the folder itself, the one above, then the names
};

// A named block of memory that processes share; the window of the suite reads it.
struct SharedBlock {
  std::vector<char> bytes;
  std::size_t flushed = 0;  // how many of them, by the last flush
};

// A list of processes as it was when it was asked for.
struct OpenProcessList {
  std::vector<std::string> names;
  std::size_t next = 0;
};

// A program that was started: the handles of its process and of its thread.
struct StartedProgram {};

class OpenFiles {
 public:
  HANDLE add(OpenFile file);
  HANDLE add(SharedBlock block);
  HANDLE add(OpenProcessList list);
  HANDLE add(OpenSearch search);
  HANDLE add(StartedProgram program);

  // Null if the handle is unknown, closed, or of the other kind. Valid until it is closed.
  OpenFile* file(HANDLE handle);
  OpenSearch* search(HANDLE handle);
  SharedBlock* block(HANDLE handle);
  OpenProcessList* processList(HANDLE handle);

  // False if there is no such handle of this sort.
  bool closeSearch(HANDLE handle);
  // Anything but a search.
  bool close(HANDLE handle);

  // The block whose memory begins here; null if there is none.
  SharedBlock* blockAt(const void* memory);
  // The newest block that is still open; null if there is none.
  SharedBlock* newestBlock();

  [[nodiscard]] std::size_t count() const { return open.size(); }

 private:
  using Entry = std::variant<OpenFile, OpenSearch, SharedBlock, OpenProcessList, StartedProgram>;
  HANDLE addEntry(Entry entry);
  template <typename Sort>
  Sort* get(HANDLE handle);

  std::map<std::uintptr_t, Entry> open;
  std::uintptr_t last = 0;
};

}  // namespace zelvreg::machine

#endif
