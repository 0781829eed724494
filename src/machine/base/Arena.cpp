#include "machine/base/Arena.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace zelvreg::machine {
namespace {

constexpr std::size_t smallestBlock = 64 * 1024;
constexpr std::size_t largestBlock = 4 * 1024 * 1024;
constexpr std::size_t hugePage = 2 * 1024 * 1024;
constexpr std::size_t pointerSize = sizeof(std::byte*);

}  // namespace

Arena::~Arena() {
  for (std::byte* block : blocks) {
    std::free(block);
  }
}

std::byte* Arena::newBlock(std::size_t size) {
  const std::size_t alignment = size < hugePage ? alignof(std::max_align_t) : hugePage;
  size = (size + alignment - 1) / alignment * alignment;
  void* memory = std::aligned_alloc(alignment, size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  if (alignment == hugePage) {
    // A large hive fills tens of megabytes, and a page fault for each 4 KB of them would take
    // longer than what is done with them. A refusal does no harm.
    static_cast<void>(madvise(memory, size, MADV_HUGEPAGE));
  }
  blocks.push_back(static_cast<std::byte*>(memory));
  return blocks.back();
}

std::byte* Arena::allocateInNewBlock(std::size_t size) {
  if (size > smallestBlock / 4) {
    return newBlock(size);
  }
  // Each block is as large as all before it, so that a small registry takes little.
  const std::size_t blockSize =
      std::min(smallestBlock << std::min<std::size_t>(blocks.size(), 8), largestBlock);
  std::byte* place = newBlock(blockSize);
  next = place + size;
  left = blockSize - size;
  return place;
}

std::byte* Arena::takeRoom(std::size_t size) {
  const std::size_t pointers = size / pointerSize;
  if (pointers > largestSpare || spares[pointers] == nullptr) {
    return allocateBytes(size, alignof(std::byte*));
  }
  std::byte* room = spares[pointers];
  std::memcpy(&spares[pointers], room, pointerSize);
  return room;
}

void Arena::giveBack(std::byte* room, std::size_t size) {
  const std::size_t pointers = size / pointerSize;
  if (pointers > 0 && pointers <= largestSpare) {
    std::memcpy(room, &spares[pointers], pointerSize);
    spares[pointers] = room;
  }
}

bool Arena::extendRoom(std::byte* room, std::size_t size, std::size_t newSize) {
  const std::size_t more = newSize - size;
  if (room + size != next || more > left) {
    return false;
  }
  next += more;
  left -= more;
  return true;
}

}  // namespace zelvreg::machine
