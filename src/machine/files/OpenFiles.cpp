#include "machine/files/OpenFiles.h"

#include <utility>

namespace zelvreg::machine {

namespace {

std::uintptr_t numberOf(HANDLE handle) { return reinterpret_cast<std::uintptr_t>(handle); }

}  // namespace

HANDLE OpenFiles::addEntry(Entry entry) {
  // Handles of the system are multiples of four, and a closed one is not used again at once.
  last += 4;
  open.emplace(last, std::move(entry));
  return reinterpret_cast<HANDLE>(last);
}

HANDLE OpenFiles::add(OpenFile file) { return addEntry(std::move(file)); }

HANDLE OpenFiles::add(OpenSearch search) { return addEntry(std::move(search)); }

HANDLE OpenFiles::add(SharedBlock block) { return addEntry(std::move(block)); }

HANDLE OpenFiles::add(OpenProcessList list) { return addEntry(std::move(list)); }

HANDLE OpenFiles::add(StartedProgram program) { return addEntry(program); }

template <typename Sort>
Sort* OpenFiles::get(HANDLE handle) {
  const auto found = open.find(numberOf(handle));
  return found == open.end() ? nullptr : std::get_if<Sort>(&found->second);
}

bool OpenFiles::close(HANDLE handle) {
  const auto found = open.find(numberOf(handle));
  if (found == open.end() || std::holds_alternative<OpenSearch>(found->second)) return false;
  open.erase(found);
  return true;
}

OpenFile* OpenFiles::file(HANDLE handle) { return get<OpenFile>(handle); }

OpenSearch* OpenFiles::search(HANDLE handle) { return get<OpenSearch>(handle); }

SharedBlock* OpenFiles::block(HANDLE handle) { return get<SharedBlock>(handle); }

OpenProcessList* OpenFiles::processList(HANDLE handle) { return get<OpenProcessList>(handle); }

SharedBlock* OpenFiles::blockAt(const void* memory) {
  for (auto& [number, entry] : open) {
    auto* shared = std::get_if<SharedBlock>(&entry);
    if (shared != nullptr && shared->bytes.data() == memory) return shared;
  }
  return nullptr;
}

SharedBlock* OpenFiles::newestBlock() {
  SharedBlock* newest = nullptr;
  for (auto& [number, entry] : open) {
    auto* shared = std::get_if<SharedBlock>(&entry);
    newest = shared != nullptr ? shared : newest;
  }
  return newest;
}

bool OpenFiles::closeSearch(HANDLE handle) {
  return search(handle) != nullptr && open.erase(numberOf(handle)) > 0;
}

}  // namespace zelvreg::machine
