// Takes cases from a table, and fills the gaps in their texts.
#ifndef ZELVREG_BENCH_CASES_H
#define ZELVREG_BENCH_CASES_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "CaseTable.h"
#include "FilePool.h"
#include "Random.h"

namespace zelvreg::bench {

enum class Owner : std::uint8_t { Machine, User };

// What the text of a case becomes.
enum class Use : std::uint8_t {
  Data,    // that of a value
  Name,    // the name of a value, in which no variable is expanded
  Folder,  // the data of a value that names a folder: the one that the file is in
};

struct Place {
  FileKind kind;
  View view;
  Owner owner;
  Use use = Use::Data;
};

class Cases {
 public:
  // Both must live longer. The numbers decide where in the table it begins.
  Cases(std::span<const Case> cases, const FilePool& pool, Random& numbers);

  // So many that fit the place, always the one that was taken least often up to now.
  std::vector<Reference> take(const Place& place, std::size_t count);

 private:
  [[nodiscard]] std::size_t next(const Place& place) const;
  [[nodiscard]] Reference filled(const Case& taken, const Place& place) const;
  [[nodiscard]] std::string filling(std::string_view gap, const Place& place) const;

  std::span<const Case> table;
  const FilePool& files;
  Random& random;
  std::size_t first;              // where among cases taken equally often it begins
  std::vector<std::size_t> uses;  // of each case
};

// Leaves the first of those with one text, for lists that are named by it.
void removeRepeated(std::vector<Reference>& references);

}  // namespace zelvreg::bench

#endif
