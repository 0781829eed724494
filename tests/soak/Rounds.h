// The same again and again in one process: what a suite asks for that never ends, or a user who
// leaves the window open for months.
#ifndef ZELVREG_TESTS_SOAK_ROUNDS_H
#define ZELVREG_TESTS_SOAK_ROUNDS_H

#include <cstddef>
#include <functional>

namespace zelvreg::fixture {

// Goes as many rounds as ZELVREG_ROUNDS says, or else `usually`, until one fails. Fails if the
// process holds more after the last one than after the first quarter of them.
void goRounds(std::size_t usually, const std::function<void()>& round);

}  // namespace zelvreg::fixture

#endif
