#include "fuzz/LogFile.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

#include "LogMaker.h"
#include "machine/replay/Marvin32.h"

namespace zelvreg::fuzz {
namespace {

constexpr std::size_t baseBlockSize = 512;
constexpr std::size_t sizes = 2 * sizeof(std::uint32_t);  // of the hive and its first log

// As many bytes from the front as there are of them.
std::string take(std::string_view& rest, std::size_t size) {
  std::string taken(rest.substr(0, size));
  rest.remove_prefix(taken.size());
  return taken;
}

}  // namespace

HiveWithLogs hiveWithLogs(std::string_view input) {
  HiveWithLogs files;
  if (input.size() < sizes) {
    return files;
  }
  std::string_view rest = input.substr(sizes);
  files.hive = take(rest, bench::wordAt(input, 0));
  const std::size_t firstLog = bench::wordAt(input, sizeof(std::uint32_t));
  if (firstLog != 0) {
    files.logs.push_back(take(rest, firstLog));
  }
  files.logs.emplace_back(rest);
  return files;
}

std::string inputOf(const HiveWithLogs& files) {
  std::string input(sizes, '\0');
  bench::putWord(input, 0, static_cast<std::uint32_t>(files.hive.size()));
  if (files.logs.size() > 1) {
    bench::putWord(input, sizeof(std::uint32_t),
                   static_cast<std::uint32_t>(files.logs.front().size()));
  }
  input += files.hive;
  for (const std::string& log : files.logs) {
    input += log;
  }
  return input;
}

void signLog(std::string& log) {
  if (log.size() < baseBlockSize) {
    return;
  }
  bench::signBaseBlock(log);
  constexpr std::size_t head = 40;  // its last two numbers are the hashes
  for (std::size_t at = log.find("HvLE"); at != std::string::npos; at = log.find("HvLE", at + 4)) {
    const std::size_t size = at + 8 > log.size() ? 0 : bench::wordAt(log, at + 4);
    if (size < head || size > log.size() - at) {
      continue;
    }
    const auto bytes = std::as_bytes(std::span(log)).subspan(at, size);
    const std::uint64_t content = machine::marvin32(bytes.subspan(head));
    std::memcpy(log.data() + at + 24, &content, sizeof content);
    const std::uint64_t ofHead = machine::marvin32(bytes.first(32));
    std::memcpy(log.data() + at + 32, &ofHead, sizeof ofHead);
  }
}

void signHiveAndLogs(std::string& input) {
  HiveWithLogs files = hiveWithLogs(input);
  if (files.hive.size() < baseBlockSize) {
    return;
  }
  bench::signBaseBlock(files.hive);
  for (std::string& log : files.logs) {
    signLog(log);
  }
  // What each length says may be more than there is; it stays.
  input.replace(sizes, files.hive.size(), files.hive);
  std::size_t at = sizes + files.hive.size();
  for (const std::string& log : files.logs) {
    input.replace(at, log.size(), log);
    at += log.size();
  }
}

}  // namespace zelvreg::fuzz
