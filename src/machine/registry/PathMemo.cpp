#include "machine/registry/PathMemo.h"

#include <cstring>

namespace zelvreg::machine {

namespace {

// Paths of one length begin alike more often than not.
bool isSamePath(std::u16string_view first, std::u16string_view second) {
  return first.size() == second.size() &&
         std::memcmp(first.data(), second.data(), first.size() * sizeof(char16_t)) == 0;
}

}  // namespace

const std::optional<KeyPlace>* PathMemo::find(const PathQuestion& question,
                                              std::uint64_t generation) const {
  for (const Answer& answer : answers) {
    if (answer.root == question.root && answer.generation == generation &&
        answer.viewFlags == question.viewFlags && answer.options == question.options &&
        isSamePath(answer.path, question.path)) {
      return &answer.place;
    }
  }
  return nullptr;
}

void PathMemo::keep(const PathQuestion& question, std::uint64_t generation,
                    const std::optional<KeyPlace>& place) {
  Answer& answer = answers[oldest];
  oldest = (oldest + 1) % answers.size();
  answer.root = question.root;
  answer.viewFlags = question.viewFlags;
  answer.options = question.options;
  answer.generation = generation;
  answer.path = question.path;
  answer.place = place;
}

}  // namespace zelvreg::machine
