// A hive and its logs in one input.
#ifndef ZELVREG_TESTS_FUZZ_LOG_FILE_H
#define ZELVREG_TESTS_FUZZ_LOG_FILE_H

#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::fuzz {

struct HiveWithLogs {
  std::string hive;
  std::vector<std::string> logs;
};

// The files one behind the other, at the start how long each is but the last. Any bytes are some
// such files.
HiveWithLogs hiveWithLogs(std::string_view input);
std::string inputOf(const HiveWithLogs& files);

// Puts checksums of base blocks right, and hashes of the entries of logs that are as long as they
// say.
void signHiveAndLogs(std::string& input);
void signLog(std::string& log);

}  // namespace zelvreg::fuzz

#endif
