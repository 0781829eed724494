#include "machine/OpenFiles.h"

#include <utility>

namespace zelvreg::machine {

namespace {

std::uintptr_t numberOf(HANDLE handle) { return reinterpret_cast<std::uintptr_t>(handle); }

}  // namespace

HANDLE OpenFiles::addEntry(Entry entry) {
  // Handles of the system are multiples of four, and a closed one does not come back at once.
  last += 4;
  open.emplace(last, std::move(entry));
  return reinterpret_cast<HANDLE>(last);
}

HANDLE OpenFiles::add(OpenFile file) { return addEntry(std::move(file)); }

HANDLE OpenFiles::add(OpenSearch search) { return addEntry(std::move(search)); }

template <typename Sort>
Sort* OpenFiles::get(HANDLE handle) {
  const auto found = open.find(numberOf(handle));
  return found == open.end() ? nullptr : std::get_if<Sort>(&found->second);
}

template <typename Sort>
bool OpenFiles::close(HANDLE handle) {
  if (get<Sort>(handle) == nullptr) return false;
  open.erase(numberOf(handle));
  return true;
}

OpenFile* OpenFiles::file(HANDLE handle) { return get<OpenFile>(handle); }

OpenSearch* OpenFiles::search(HANDLE handle) { return get<OpenSearch>(handle); }

bool OpenFiles::closeFile(HANDLE handle) { return close<OpenFile>(handle); }

bool OpenFiles::closeSearch(HANDLE handle) { return close<OpenSearch>(handle); }

}  // namespace zelvreg::machine
