// A sequence that stays quick with 100,000 entries and more: what is inserted or erased moves the
// entries of one chunk, not all that follow. Short lists take their memory from an arena, always
// the same one, which must outlive them.
#ifndef ZELVREG_MACHINE_BASE_CHUNKED_LIST_H
#define ZELVREG_MACHINE_BASE_CHUNKED_LIST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "machine/base/Arena.h"

namespace zelvreg::machine {

template <typename Entry>
class ChunkedList {
 public:
  // Where an entry is, or where one would be inserted. Any change makes positions stale.
  struct Position {
    std::size_t chunk;
    std::size_t slot;
  };

  [[nodiscard]] bool empty() const { return chunkCount() == 0; }
  [[nodiscard]] std::size_t size() const {
    std::size_t count = 0;
    for (std::size_t index = 0; index < chunkCount(); ++index) {
      count += chunk(index).size();
    }
    return count;
  }

  // The entry at an index, or null after the last one.
  [[nodiscard]] const Entry* at(std::size_t index) const {
    for (std::size_t next = 0; next < chunkCount(); ++next) {
      const std::span<const Entry> entries = chunk(next);
      if (index < entries.size()) {
        return &entries[index];
      }
      index -= entries.size();
    }
    return nullptr;
  }

  // The entry there, or null at the end.
  [[nodiscard]] Entry* at(Position position) {
    return const_cast<Entry*>(std::as_const(*this).at(position));
  }
  [[nodiscard]] const Entry* at(Position position) const {
    const bool isEntry =
        position.chunk < chunkCount() && position.slot < chunk(position.chunk).size();
    return isEntry ? &chunk(position.chunk)[position.slot] : nullptr;
  }

  [[nodiscard]] const Entry* last() const {
    return empty() ? nullptr : &chunk(chunkCount() - 1).back();
  }

  // The first position whose entry `isBefore` does not hold for; the list must be sorted by it.
  template <typename Predicate>
  [[nodiscard]] Position partitionPoint(Predicate isBefore) const {
    std::size_t first = 0;
    if (many != nullptr) {
      const auto found =
          std::partition_point(many->begin(), many->end(),
                               [&](const Chunk& entries) { return isBefore(entries.back()); });
      first = static_cast<std::size_t>(found - many->begin());
    }
    if (first == chunkCount()) {
      return {first, 0};
    }
    const std::span<const Entry> entries = chunk(first);
    const auto entry = std::partition_point(entries.begin(), entries.end(), isBefore);
    return {first, static_cast<std::size_t>(entry - entries.begin())};
  }

  void append(Arena& arena, const Entry& entry) { insert(arena, {chunkCount(), 0}, entry); }

  // Replaces everything; for a list that is filled in one go.
  void assign(Arena& arena, std::span<const Entry> entries) {
    if (entries.size() <= chunkSize) {
      many.reset();
      few = arena.allocate<Entry>(entries.size());
      fewSize = fewCapacity = static_cast<std::uint32_t>(entries.size());
      std::copy(entries.begin(), entries.end(), few);
      return;
    }
    many = std::make_unique<std::vector<Chunk>>();
    for (; !entries.empty(); entries = entries.subspan(std::min(chunkSize, entries.size()))) {
      const auto chunk = entries.first(std::min(chunkSize, entries.size()));
      many->emplace_back(chunk.begin(), chunk.end());
    }
  }

  void insert(Arena& arena, Position position, const Entry& entry) {
    if (position.chunk == chunkCount()) {
      // At the end: fill the last chunk first.
      position = chunkCount() == 0 ? Position{0, 0}
                                   : Position{chunkCount() - 1, chunk(chunkCount() - 1).size()};
    }
    if (!empty() && chunk(position.chunk).size() == chunkSize) {
      position = makeRoom(position);
    }
    if (many != nullptr) {
      Chunk& entries = (*many)[position.chunk];
      entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(position.slot), entry);
      return;
    }
    if (fewSize == fewCapacity) {
      fewCapacity = std::max<std::uint32_t>(fewCapacity * 2, 1);
      few = std::copy_n(few, fewSize, arena.allocate<Entry>(fewCapacity)) - fewSize;
    }
    std::copy_backward(few + position.slot, few + fewSize, few + fewSize + 1);
    few[position.slot] = entry;
    ++fewSize;
  }

  // `position` must be that of an entry.
  void erase(Position position) {
    if (many == nullptr) {
      std::copy(few + position.slot + 1, few + fewSize, few + position.slot);
      --fewSize;
      return;
    }
    Chunk& entries = (*many)[position.chunk];
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(position.slot));
    if (entries.empty()) {
      many->erase(many->begin() + static_cast<std::ptrdiff_t>(position.chunk));
    }
  }

  template <typename Visitor>
  void forEach(Visitor visit) const {
    for (std::size_t index = 0; index < chunkCount(); ++index) {
      for (const Entry& entry : chunk(index)) {
        visit(entry);
      }
    }
  }

 private:
  using Chunk = std::vector<Entry>;
  static constexpr std::size_t chunkSize = 512;
  static_assert(std::is_trivially_copyable_v<Entry>);

  // No chunk is empty.
  [[nodiscard]] std::size_t chunkCount() const {
    return many != nullptr ? many->size() : fewSize == 0 ? 0 : 1;
  }
  [[nodiscard]] std::span<const Entry> chunk(std::size_t index) const {
    return many != nullptr ? std::span<const Entry>((*many)[index])
                           : std::span<const Entry>(few, fewSize);
  }

  // Parts a full chunk in two, or at the list's end begins a new one; gives the position that
  // means the same afterwards.
  Position makeRoom(Position position) {
    if (many == nullptr) {
      many = std::make_unique<std::vector<Chunk>>();
      many->emplace_back(few, few + fewSize);
    }
    const bool isAtEnd = position.chunk + 1 == many->size() && position.slot == chunkSize;
    const std::size_t kept = isAtEnd ? chunkSize : chunkSize / 2;
    Chunk& full = (*many)[position.chunk];
    const auto middle = full.begin() + static_cast<std::ptrdiff_t>(kept);
    Chunk upper(middle, full.end());
    full.erase(middle, full.end());
    many->insert(many->begin() + static_cast<std::ptrdiff_t>(position.chunk) + 1, std::move(upper));
    if (position.slot > kept || isAtEnd) {
      return {position.chunk + 1, position.slot - kept};
    }
    return position;
  }

  // Everything, while it fits in one chunk; in the arena.
  Entry* few = nullptr;
  std::uint32_t fewSize = 0;
  std::uint32_t fewCapacity = 0;
  // Everything, from then on.
  std::unique_ptr<std::vector<Chunk>> many;
};

}  // namespace zelvreg::machine

#endif
