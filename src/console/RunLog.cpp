#include "console/RunLog.h"

#include <array>
#include <cstdio>

#include "console/DisplayText.h"
#include "console/TimeArguments.h"

namespace zelvreg::console {

void RunLog::note(const std::string& step) {
  const std::string line =
      utcNow() + " zelvreg[" + std::to_string(processNumber()) + "] " + printable(step) + "\n";
  isWritten = file.append(line) && isWritten;
}

void RunLog::end(int status) {
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - startedAt;
  std::array<char, 32> seconds{};
  std::snprintf(seconds.data(), seconds.size(), "%.1f", taken.count());
  note("ended with status " + std::to_string(status) + " after " + seconds.data() + " seconds");
}

}  // namespace zelvreg::console
