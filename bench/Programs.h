// Whole programs, timed from outside.
#ifndef ZELVREG_BENCH_PROGRAMS_H
#define ZELVREG_BENCH_PROGRAMS_H

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Measure.h"

namespace zelvreg::bench {

// Seconds by the clock, and of processor time in the kernel too.
struct ProgramTimes {
  double elapsed = 0;
  double processor = 0;
};

// Runs a program with these words, of which the first is its file, and throws its output away.
// Throws std::runtime_error with one line if it cannot be run or ends with more than
// `highestStatus`.
ProgramTimes runProgram(const std::vector<std::string>& words, int highestStatus = 0);

// Medians of so many runs.
ProgramTimes measureProgram(const std::vector<std::string>& words, std::size_t runs,
                            int highestStatus = 0);

// A program of this name in one of the folders, which are separated by colons as in PATH.
std::optional<std::filesystem::path> findProgram(std::string_view name, std::string_view folders);

// zelvreg itself, which is built beside the running program. Throws std::runtime_error with one
// line if it is not there.
std::filesystem::path zelvregProgram();

// The demo machine of the sources.
std::filesystem::path demoMachine();

}  // namespace zelvreg::bench

#endif
