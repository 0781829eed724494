// What a file may contain that no program has written, or that somebody has written to do harm.
#ifndef ZELVREG_TESTS_SUPPORT_UNRULY_CONTENTS_H
#define ZELVREG_TESTS_SUPPORT_UNRULY_CONTENTS_H

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::fixture {

// Any of these bytes in any order, the same each time.
inline std::string randomText(std::minstd_rand& random, std::size_t size,
                              std::string_view bytes = {}) {
  std::string text(size, '\0');
  for (char& byte : text) {
    const auto number = random();
    byte = bytes.empty() ? static_cast<char>(number >> 8) : bytes[number % bytes.size()];
  }
  return text;
}

inline std::string longLine(char byte) {
  std::string line;
  line.resize(10'000'000, byte);
  return line;
}

// One line of ten million bytes, NULs alone, any bytes, and those in any order that mean something
// in a file of this sort.
inline std::vector<std::string> unrulyContents(std::string_view meaningful) {
  std::minstd_rand random(1);
  std::vector<std::string> contents{longLine('x'), std::string(1000, '\0'),
                                    std::string("a\0b\r\n\0\n\0", 8)};
  for (const std::size_t size : {1U, 17U, 302U, 5000U, 100'000U}) {
    contents.push_back(randomText(random, size));
    contents.push_back(randomText(random, size, meaningful));
  }
  for (const char byte : meaningful) {
    contents.emplace_back(100'000, byte);
  }
  return contents;
}

}  // namespace zelvreg::fixture

#endif
