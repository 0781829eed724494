// A sequence that stays quick with 100,000 entries and more: what is inserted or erased moves the
// entries of one chunk, not all that follow. It is one pointer, and takes its memory from an arena,
// always the same one, which must outlive it.
#ifndef ZELVREG_MACHINE_BASE_CHUNKED_LIST_H
#define ZELVREG_MACHINE_BASE_CHUNKED_LIST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

#include "machine/base/Arena.h"

namespace zelvreg::machine {

// What a long list may have besides its entries.
struct NoCompanion {};

// A list of at most `mostAlone` entries is one chunk; a longer one has a companion too, for good.
template <typename Entry, std::size_t mostAlone = 512, typename Companion = NoCompanion>
class ChunkedList {
 public:
  // Where an entry is, or where one would be inserted. Any change makes positions stale.
  struct Position {
    std::size_t chunk;
    std::size_t slot;
  };

  ChunkedList() = default;
  ~ChunkedList() = default;
  ChunkedList(ChunkedList&& other) noexcept : head(std::exchange(other.head, nullptr)) {}
  ChunkedList& operator=(ChunkedList&& other) noexcept {
    head = std::exchange(other.head, nullptr);
    return *this;
  }
  ChunkedList(const ChunkedList&) = delete;
  ChunkedList& operator=(const ChunkedList&) = delete;

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

  // The position after that of an entry.
  [[nodiscard]] Position after(Position position) const {
    const bool isInChunk =
        position.chunk < chunkCount() && position.slot + 1 < chunk(position.chunk).size();
    return isInChunk ? Position{position.chunk, position.slot + 1}
                     : Position{position.chunk + 1, 0};
  }

  // Where an entry would be appended.
  [[nodiscard]] Position end() const { return {chunkCount(), 0}; }

  // Null while the list is one chunk.
  [[nodiscard]] Companion* companion() { return isLong() ? &directory().companion : nullptr; }
  [[nodiscard]] const Companion* companion() const {
    return isLong() ? &directory().companion : nullptr;
  }

  // The first position whose entry `isBefore` does not hold for; the list must be sorted by it.
  template <typename Predicate>
  [[nodiscard]] Position partitionPoint(Predicate isBefore) const {
    std::size_t first = 0;
    if (isLong()) {
      const std::span<Head* const> chunks(directory().chunks, directory().size);
      const auto found = std::partition_point(
          chunks.begin(), chunks.end(),
          [&](const Head* entries) { return isBefore(entriesOf(entries).back()); });
      first = static_cast<std::size_t>(found - chunks.begin());
    }
    if (first == chunkCount()) {
      return {first, 0};
    }
    const std::span<const Entry> entries = chunk(first);
    const auto entry = std::partition_point(entries.begin(), entries.end(), isBefore);
    return {first, static_cast<std::size_t>(entry - entries.begin())};
  }

  void append(Arena& arena, const Entry& entry) { insert(arena, end(), entry); }

  // Replaces everything; for a list that is filled in one go.
  void assign(Arena& arena, std::span<const Entry> entries) {
    head = nullptr;
    if (entries.empty()) {
      return;
    }
    if (entries.size() <= mostAlone) {
      head = newChunk(arena, entries.size());
      fill(head, entries);
      return;
    }
    makeLong(arena);
    for (; !entries.empty(); entries = entries.subspan(std::min(chunkSize, entries.size()))) {
      fill(addChunk(arena, directory().size), entries.first(std::min(chunkSize, entries.size())));
    }
  }

  void insert(Arena& arena, Position position, const Entry& entry) {
    if (position.chunk == chunkCount()) {
      // At the end: fill the last chunk first.
      position = chunkCount() == 0 ? Position{0, 0}
                                   : Position{chunkCount() - 1, chunk(chunkCount() - 1).size()};
    }
    Head* place = makeRoom(arena, position);
    Entry* entries = entriesOf(place).data();
    std::copy_backward(entries + position.slot, entries + place->size, entries + place->size + 1);
    entries[position.slot] = entry;
    ++place->size;
  }

  // `position` must be that of an entry.
  void erase(Arena& arena, Position position) {
    Head* place = chunkHead(position.chunk);
    const std::span<Entry> entries = entriesOf(place);
    std::copy(entries.begin() + static_cast<std::ptrdiff_t>(position.slot) + 1, entries.end(),
              entries.begin() + static_cast<std::ptrdiff_t>(position.slot));
    --place->size;
    if (place->size == 0 && isLong()) {
      Head** chunks = directory().chunks;
      std::copy(chunks + position.chunk + 1, chunks + directory().size, chunks + position.chunk);
      --directory().size;
      giveBack(arena, place);
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
  // Of a chunk, whose entries follow it, or of a directory, which has no capacity of its own.
  struct Head {
    std::uint32_t size;
    std::uint32_t capacity;
  };
  struct Directory : Head {
    Head** chunks;
    std::size_t chunkCapacity;
    Companion companion;
  };
  static constexpr std::size_t chunkSize = 512;
  static_assert(mostAlone <= chunkSize);
  static_assert(std::is_trivially_copyable_v<Entry> && alignof(Entry) <= alignof(Head*));
  static_assert(std::is_trivially_destructible_v<Companion>);

  static std::size_t sizeOf(std::size_t capacity) {
    constexpr std::size_t unit = alignof(Head*);
    // NOLINTNEXTLINE(bugprone-sizeof-expression): the size of a pointer is meant where it is one
    return (sizeof(Head) + capacity * sizeof(Entry) + unit - 1) / unit * unit;
  }
  static std::span<Entry> entriesOf(Head* chunk) {
    return {reinterpret_cast<Entry*>(chunk + 1), chunk->size};
  }
  static std::span<const Entry> entriesOf(const Head* chunk) {
    return {reinterpret_cast<const Entry*>(chunk + 1), chunk->size};
  }
  static std::byte* bytesOf(Head* chunk) { return reinterpret_cast<std::byte*>(chunk); }
  static Head* newChunk(Arena& arena, std::size_t capacity) {
    return std::construct_at(reinterpret_cast<Head*>(arena.takeRoom(sizeOf(capacity))),
                             Head{0, static_cast<std::uint32_t>(capacity)});
  }
  static void giveBack(Arena& arena, Head* chunk) {
    arena.giveBack(bytesOf(chunk), sizeOf(chunk->capacity));
  }
  static void fill(Head* chunk, std::span<const Entry> entries) {
    chunk->size = static_cast<std::uint32_t>(entries.size());
    std::copy(entries.begin(), entries.end(), entriesOf(chunk).begin());
  }

  [[nodiscard]] bool isLong() const { return head != nullptr && head->capacity == 0; }
  [[nodiscard]] Directory& directory() { return *static_cast<Directory*>(head); }
  [[nodiscard]] const Directory& directory() const { return *static_cast<const Directory*>(head); }

  // No chunk that counts is empty.
  [[nodiscard]] std::size_t chunkCount() const {
    return isLong() ? head->size : head == nullptr || head->size == 0 ? 0 : 1;
  }
  [[nodiscard]] Head* chunkHead(std::size_t index) {
    return isLong() ? directory().chunks[index] : head;
  }
  [[nodiscard]] std::span<const Entry> chunk(std::size_t index) const {
    return entriesOf(static_cast<const Head*>(isLong() ? directory().chunks[index] : head));
  }

  // The chunk of a position, with room for one entry more; it becomes the position that means the
  // same afterwards.
  Head* makeRoom(Arena& arena, Position& position) {
    if (head == nullptr) {
      head = newChunk(arena, 1);
    } else if (!isLong() && head->size == mostAlone) {
      Head* only = head;
      makeLong(arena);
      fill(addChunk(arena, 0), entriesOf(only));
      giveBack(arena, only);
    }
    if (!isLong()) {
      grow(arena);
      return head;
    }
    if (directory().size == 0) {
      return addChunk(arena, 0);
    }
    if (chunk(position.chunk).size() == chunkSize) {
      part(arena, position);
    }
    return chunkHead(position.chunk);
  }

  // By one entry, as long as nothing lies behind the list: then none of its room stays unused.
  void grow(Arena& arena) {
    if (head->size < head->capacity) {
      return;
    }
    const std::size_t size = sizeOf(head->capacity);
    if (arena.extendRoom(bytesOf(head), size, sizeOf(head->capacity + 1))) {
      ++head->capacity;
      return;
    }
    Head* larger = newChunk(arena, std::min<std::size_t>(head->capacity * 2, mostAlone));
    fill(larger, entriesOf(head));
    giveBack(arena, head);
    head = larger;
  }

  void makeLong(Arena& arena) {
    constexpr std::size_t firstCapacity = 2;
    auto* made = std::construct_at(arena.allocate<Directory>(1));
    made->size = made->capacity = 0;
    made->chunkCapacity = firstCapacity;
    made->chunks = arena.allocate<Head*>(firstCapacity);
    head = made;
  }

  Head* addChunk(Arena& arena, std::size_t index) {
    Directory& all = directory();
    if (all.size == all.chunkCapacity) {
      all.chunkCapacity *= 2;
      all.chunks =
          std::copy_n(all.chunks, all.size, arena.allocate<Head*>(all.chunkCapacity)) - all.size;
    }
    std::copy_backward(all.chunks + index, all.chunks + all.size, all.chunks + all.size + 1);
    ++all.size;
    return all.chunks[index] = newChunk(arena, chunkSize);
  }

  // Parts a full chunk in two, or at the list's end begins a new one.
  void part(Arena& arena, Position& position) {
    const bool isAtEnd = position.chunk + 1 == head->size && position.slot == chunkSize;
    const std::size_t kept = isAtEnd ? chunkSize : chunkSize / 2;
    Head* upper = addChunk(arena, position.chunk + 1);
    Head* lower = chunkHead(position.chunk);
    fill(upper, std::as_const(*this).chunk(position.chunk).subspan(kept));
    lower->size = static_cast<std::uint32_t>(kept);
    if (position.slot > kept || isAtEnd) {
      position = {position.chunk + 1, position.slot - kept};
    }
  }

  Head* head = nullptr;  // the only chunk, or a directory of all; null for an empty list
};

}  // namespace zelvreg::machine

#endif
