// Hives and logs in memory of their own, so that a sanitizer sees when a byte beside them is read.
#ifndef ZELVREG_TESTS_MACHINE_REPLAY_OWN_BYTES_H
#define ZELVREG_TESTS_MACHINE_REPLAY_OWN_BYTES_H

#include <cstddef>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "machine/replay/Replay.h"

namespace zelvreg::fixture {

class OwnBytes {
 public:
  explicit OwnBytes(const std::string& text)
      : size(text.size()), bytes(std::make_unique<std::byte[]>(size)) {
    std::memcpy(bytes.get(), text.data(), size);
  }
  [[nodiscard]] std::span<const std::byte> span() const { return {bytes.get(), size}; }

 private:
  std::size_t size;
  std::unique_ptr<std::byte[]> bytes;
};

inline machine::Replay replay(const std::string& hive, const std::vector<std::string>& logs) {
  const OwnBytes file(hive);
  std::vector<OwnBytes> own;
  std::vector<std::span<const std::byte>> spans;
  own.reserve(logs.size());
  for (const std::string& log : logs) {
    spans.push_back(own.emplace_back(log).span());
  }
  return machine::replayLogs(file.span(), spans);
}

}  // namespace zelvreg::fixture

#endif
