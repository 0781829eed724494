// Any target under libFuzzer: zelvreg-fuzz --target=NAME, then the options and folders of that.
// With --targets it prints their names, a line each.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "fuzz/FuzzTarget.h"
#include "fuzz/TellingNumbers.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size,
                                        std::size_t largestSize);

namespace {

using zelvreg::fuzz::FuzzTarget;
using zelvreg::fuzz::tellingNumbers;

const FuzzTarget* chosen = nullptr;

void choose(std::string_view name) {
  for (const FuzzTarget& target : zelvreg::fuzz::fuzzTargets()) {
    if (name == target.name) {
      chosen = &target;
    }
  }
}

void changeNumber(std::string& bytes, std::minstd_rand& random) {
  const std::size_t words = bytes.size() / sizeof(std::uint32_t);
  if (words == 0) {
    return;
  }
  char* const place = bytes.data() + random() % words * sizeof(std::uint32_t);
  std::uint32_t number = tellingNumbers[random() % tellingNumbers.size()];
  if (random() % 2 == 0) {
    // As somewhere else in the input: where one link leads, another may.
    std::memcpy(&number, bytes.data() + random() % words * sizeof number, sizeof number);
  }
  std::memcpy(place, &number, sizeof number);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
  constexpr std::string_view option = "--target=";
  for (int at = 1; at < *count; ++at) {
    const std::string_view argument = (*arguments)[at];
    if (argument == "--targets") {
      for (const FuzzTarget& target : zelvreg::fuzz::fuzzTargets()) {
        std::puts(target.name);
      }
      std::exit(0);
    }
    if (argument.starts_with(option)) {
      choose(argument.substr(option.size()));
    }
  }
  if (chosen == nullptr) {
    std::fputs("zelvreg-fuzz: give --target=NAME; --targets lists the names\n", stderr);
    std::exit(2);
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  chosen->run({reinterpret_cast<const char*>(data), size});
  return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largestSize, unsigned seed) {
  std::minstd_rand random(seed);
  if (!chosen->isBinary || random() % 2 == 0) {
    size = LLVMFuzzerMutate(data, size, largestSize);
  }
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (chosen->isBinary && random() % 2 == 0) {
    changeNumber(bytes, random);
  }
  // A wrong checksum ends the reading at once, which is only now and then worth a try.
  if (chosen->mend != nullptr && random() % 8 != 0) {
    chosen->mend(bytes);
  }
  std::memcpy(data, bytes.data(), bytes.size());
  return bytes.size();
}
