// Writes a registry file of version 5.00 as a stream, however large it gets.
#ifndef ZELVREG_BENCH_REGISTRY_TEXT_H
#define ZELVREG_BENCH_REGISTRY_TEXT_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>

namespace zelvreg::bench {

// All text is UTF-8, as the file itself. Throws std::runtime_error with one line when
// the file cannot be written.
class RegistryText {
 public:
  explicit RegistryText(const std::filesystem::path& file);

  // A key that holds others, with all keys above it that were not written yet.
  void container(std::string_view path);
  // Any other key; its parent must have been written, and it must not have been.
  void key(std::string_view path);

  // Values of the key written last. An empty name is the default value.
  void text(std::string_view name, std::string_view data);
  void expandableText(std::string_view name, std::string_view data);
  // Expandable if it has a variable.
  void reference(std::string_view name, std::string_view data);
  void texts(std::string_view name, std::span<const std::string_view> data);
  void number(std::string_view name, std::uint32_t data);
  void binary(std::string_view name, std::uint64_t data);

  [[nodiscard]] std::size_t keyCount() const { return keys; }

  // Writes what is left.
  void finish();

 private:
  void beginValue(std::string_view name);
  void quoted(std::string_view text);
  void units(std::string_view text);
  void byte(unsigned number);
  void endLine();
  void flush();

  std::string fileName;
  std::ofstream output;
  std::string pending;
  std::unordered_set<std::string> containers;
  std::size_t keys = 0;
};

}  // namespace zelvreg::bench

#endif
