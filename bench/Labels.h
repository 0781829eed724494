// What is known of each reference of a made machine, because of how it was made.
#ifndef ZELVREG_BENCH_LABELS_H
#define ZELVREG_BENCH_LABELS_H

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

namespace zelvreg::bench {

enum class Truth : std::uint8_t {
  Dead,         // what it names was never made, and nothing else can be meant
  Alive,        // a running Windows finds what it names
  Undecidable,  // cannot be told from the machine alone
};
inline constexpr std::size_t truthCount = 3;

// "dead", "alive" and "undecidable".
std::string_view nameOf(Truth truth);

// A text of the registry that names something.
struct Reference {
  std::string text;
  Truth truth = Truth::Alive;
  // What is special about it; of every other reference one of the three below. A literal.
  const char* family = "";
};
inline constexpr const char* plainFamily = "plain";             // it is there
inline constexpr const char* deadFileFamily = "dead-file";      // its folder is there
inline constexpr const char* deadFolderFamily = "dead-folder";  // its folder is not there

// One reference as a scanner may report it. One that several scanners may report has several.
struct Label {
  std::string_view kind;  // the kind code of its finding
  std::string_view root;  // long name
  std::string_view key;   // below the root
  std::string_view value;
  const char* family = "";
  Truth truth = Truth::Alive;
};

// Is given every label once; the texts live no longer than the call. May be empty.
using LabelSink = std::function<void(const Label&)>;

// Writes labels as lines of six columns with tabs between them: label, family, kind, root, key,
// value. The first line names the columns.
class LabelFile {
 public:
  explicit LabelFile(const std::filesystem::path& file);

  void add(const Label& label);
  // Writes what is left. Throws std::runtime_error with one line if the file cannot be written.
  void finish();

 private:
  std::string fileName;
  std::ofstream output;
};

}  // namespace zelvreg::bench

#endif
