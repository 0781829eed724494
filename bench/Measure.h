// Measuring: time and memory of this process, work in a process of its own, medians.
#ifndef ZELVREG_BENCH_MEASURE_H
#define ZELVREG_BENCH_MEASURE_H

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace zelvreg::bench {

// Seconds of processor time that this process has used, in the kernel too. On a machine that works
// for others as well it says more than a clock.
double processorTime();

double secondsOf(const std::function<void()>& work);

// Memory of this process in megabytes: what it holds now, and the most since the last reset.
double memoryNow();
double memoryPeak();
void resetMemoryPeak();

double median(std::vector<double> numbers);

// Runs some work in a child process, so that neither its memory nor what it has read helps the next
// one, and gives the numbers that it answers. Throws std::runtime_error with the child's message
// when the work throws.
std::vector<double> runInChild(const std::function<std::vector<double>()>& work);

// Two works compared: pairs of samples taken by turns, so that both meet the same disturbances.
struct Comparison {
  double first = 0;  // medians, in seconds
  double second = 0;
  double ratio = 0;  // median of second / first
};
Comparison compare(std::size_t pairs, const std::function<double()>& first,
                   const std::function<double()>& second);

}  // namespace zelvreg::bench

#endif
