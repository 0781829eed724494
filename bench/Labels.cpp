#include "Labels.h"

#include <array>
#include <stdexcept>

namespace zelvreg::bench {
namespace {

constexpr std::array<std::string_view, truthCount> names{"dead", "alive", "undecidable"};

}  // namespace

std::string_view nameOf(Truth truth) { return names[static_cast<std::size_t>(truth)]; }

LabelFile::LabelFile(const std::filesystem::path& file)
    : fileName(file.string()), output(file, std::ios::binary) {
  output << "label\tfamily\tkind\troot\tkey\tvalue\n";
}

void LabelFile::add(const Label& label) {
  output << nameOf(label.truth) << '\t' << label.family << '\t' << label.kind << '\t' << label.root
         << '\t' << label.key << '\t' << label.value << '\n';
}

void LabelFile::finish() {
  output.close();
  if (!output) {
    throw std::runtime_error(fileName + " cannot be written; check the folder and the room left");
  }
}

}  // namespace zelvreg::bench
