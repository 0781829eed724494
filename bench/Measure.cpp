#include "Measure.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zelvreg::bench {
namespace {

double statusLine(std::string_view wanted) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(wanted)) {
      return std::strtod(line.c_str() + wanted.size(), nullptr) / 1024;
    }
  }
  return 0;
}

void writeAll(int file, const void* bytes, std::size_t size) {
  const auto* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(file, next, size);
    if (written <= 0) {
      return;
    }
    next += written;
    size -= static_cast<std::size_t>(written);
  }
}

std::string readAll(int file) {
  std::string bytes;
  std::array<char, 4096> block{};
  for (ssize_t count = read(file, block.data(), block.size()); count > 0;
       count = read(file, block.data(), block.size())) {
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
  return bytes;
}

// The child's side: it ends here. Its answer is a 1 and numbers, or a 0 and a message.
[[noreturn]] void answer(int file, const std::function<std::vector<double>()>& work) {
  try {
    const std::vector<double> numbers = work();
    writeAll(file, "1", 1);
    writeAll(file, numbers.data(), numbers.size() * sizeof(double));
  } catch (const std::exception& error) {
    writeAll(file, "0", 1);
    writeAll(file, error.what(), std::strlen(error.what()));
  }
  close(file);
  _exit(0);
}

}  // namespace

double processorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double secondsOf(const std::function<void()>& work) {
  const double start = processorTime();
  work();
  return processorTime() - start;
}

double memoryNow() { return statusLine("VmRSS:"); }

double memoryPeak() { return statusLine("VmHWM:"); }

void resetMemoryPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

double median(std::vector<double> numbers) {
  if (numbers.empty()) {
    return 0;
  }
  const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
  std::nth_element(numbers.begin(), middle, numbers.end());
  return *middle;
}

std::vector<double> runInChild(const std::function<std::vector<double>()>& work) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) {
    throw std::runtime_error("no pipe can be made; close some programs");
  }
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    answer(ends[1], work);
  }
  close(ends[1]);
  const std::string bytes = child > 0 ? readAll(ends[0]) : std::string();
  close(ends[0]);
  if (child > 0) {
    waitpid(child, nullptr, 0);
  }
  if (!bytes.starts_with('1')) {
    throw std::runtime_error(bytes.size() > 1 ? bytes.substr(1)
                                              : "the measuring process ended without an answer");
  }
  std::vector<double> numbers((bytes.size() - 1) / sizeof(double));
  if (!numbers.empty()) {
    std::memcpy(numbers.data(), bytes.data() + 1, numbers.size() * sizeof(double));
  }
  return numbers;
}

Comparison compare(std::size_t pairs, const std::function<double()>& first,
                   const std::function<double()>& second) {
  std::vector<double> firsts;
  std::vector<double> seconds;
  std::vector<double> ratios;
  for (std::size_t pair = 0; pair < pairs; ++pair) {
    const bool isTurned = pair % 2 == 1;
    const double early = isTurned ? second() : first();
    const double late = isTurned ? first() : second();
    firsts.push_back(isTurned ? late : early);
    seconds.push_back(isTurned ? early : late);
    ratios.push_back(seconds.back() / firsts.back());
  }
  return {median(firsts), median(seconds), median(ratios)};
}

}  // namespace zelvreg::bench
