#include "LogMaker.h"

#include <algorithm>
#include <cstring>

namespace zelvreg::bench {
namespace {

constexpr std::size_t headSize = 4096;  // of the file, before the first bin
constexpr std::size_t blockSize = 512;

std::uint32_t turned(std::uint32_t number, unsigned left) {
  return number << left | number >> (32 - left);
}

// Marvin32 as its authors write it: blocks of four bytes, then the rest with its end marked.
std::uint64_t hashOf(std::string_view bytes) {
  std::string padded(bytes);
  padded += static_cast<char>(0x80);
  padded.resize((padded.size() + 3) / 4 * 4 + 4);
  std::uint32_t low = 0x7A4E55C5;
  std::uint32_t high = 0x82EF4D88;
  for (std::size_t at = 0; at < padded.size(); at += 4) {
    low += wordAt(padded, at);
    high ^= low;
    low = turned(low, 20) + high;
    high = turned(high, 9) ^ low;
    low = turned(low, 27) + high;
    high = turned(high, 19);
  }
  return std::uint64_t{high} << 32 | low;
}

void putHash(std::string& bytes, std::size_t offset, std::uint64_t hash) {
  std::memcpy(bytes.data() + offset, &hash, sizeof hash);
}

void padTo(std::string& bytes, std::size_t unit) {
  bytes.resize((bytes.size() + unit - 1) / unit * unit);
}

}  // namespace

std::uint32_t wordAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

void putWord(std::string& bytes, std::size_t offset, std::uint32_t number) {
  std::memcpy(bytes.data() + offset, &number, sizeof number);
}

void signBaseBlock(std::string& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < 508; at += 4) {
    sum ^= wordAt(bytes, at);
  }
  if (sum == 0xFFFFFFFF) {
    sum = 0xFFFFFFFE;
  }
  putWord(bytes, 508, std::max(sum, 1U));
}

void setSequences(std::string& bytes, std::uint32_t first, std::uint32_t second) {
  putWord(bytes, 4, first);
  putWord(bytes, 8, second);
  signBaseBlock(bytes);
}

std::vector<LoggedPages> changedPages(std::string_view before, std::string_view after,
                                      std::size_t unit) {
  std::vector<LoggedPages> pages;
  for (std::size_t at = headSize; at < after.size(); at += unit) {
    const std::string_view now = after.substr(at, unit);
    if (at + unit <= before.size() && before.substr(at, unit) == now) {
      continue;
    }
    const auto offset = static_cast<std::uint32_t>(at - headSize);
    if (!pages.empty() && pages.back().offset + pages.back().bytes.size() == offset) {
      pages.back().bytes += now;
    } else {
      pages.push_back({offset, std::string(now)});
    }
  }
  return pages;
}

std::string entryBytes(const LoggedEntry& entry) {
  std::string bytes(40 + 8 * entry.pages.size(), '\0');
  for (std::size_t page = 0; page < entry.pages.size(); ++page) {
    putWord(bytes, 40 + 8 * page, entry.pages[page].offset);
    putWord(bytes, 44 + 8 * page, static_cast<std::uint32_t>(entry.pages[page].bytes.size()));
  }
  for (const LoggedPages& page : entry.pages) {
    bytes += page.bytes;
  }
  padTo(bytes, blockSize);
  std::memcpy(bytes.data(), "HvLE", 4);
  putWord(bytes, 4, static_cast<std::uint32_t>(bytes.size()));
  putWord(bytes, 8, entry.flags);
  putWord(bytes, 12, entry.sequence);
  putWord(bytes, 16, entry.binsSize);
  putWord(bytes, 20, static_cast<std::uint32_t>(entry.pages.size()));
  putHash(bytes, 24, hashOf(std::string_view(bytes).substr(40)));
  putHash(bytes, 32, hashOf(std::string_view(bytes).substr(0, 32)));
  return bytes;
}

std::string newLogHead(const std::string& hive, std::uint32_t sequence) {
  std::string head = hive.substr(0, blockSize);
  putWord(head, 28, 6);
  setSequences(head, sequence, sequence);
  return head;
}

std::string bitmapLogBytes(const std::string& hive, const std::vector<LoggedPages>& pages,
                           const BitmapLogForm& form) {
  const std::size_t unit = blockSize * form.clustering;
  std::string log = hive.substr(0, blockSize);
  putWord(log, 28, form.type);
  putWord(log, 44, form.clustering);
  setSequences(log, form.sequence, form.sequence);
  log.resize(unit);
  std::string bitmap = "DIRT" + std::string(wordAt(hive, 40) / blockSize / 8, '\0');
  std::string content;
  for (const LoggedPages& page : pages) {
    for (std::size_t at = 0; at < page.bytes.size(); at += blockSize) {
      const std::size_t bit = (page.offset + at) / blockSize;
      bitmap[4 + bit / 8] = static_cast<char>(bitmap[4 + bit / 8] | 1 << bit % 8);
    }
    content += page.bytes;
  }
  padTo(bitmap, unit);
  return log + bitmap + content;
}

}  // namespace zelvreg::bench
