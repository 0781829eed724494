#include "machine/PathMemo.h"

namespace zelvreg::machine {

const std::optional<KeyPlace>* PathMemo::find(const PathQuestion& question,
                                              std::uint64_t generation) const {
  for (const Answer& answer : answers) {
    if (answer.root == question.root && answer.generation == generation &&
        answer.viewFlags == question.viewFlags && answer.options == question.options &&
        answer.path == question.path) {
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
