// The sixteen categories of a scan, in the order in which they are listed and run.
#ifndef ZELVREG_SCAN_CATEGORY_TABLE_H
#define ZELVREG_SCAN_CATEGORY_TABLE_H

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "languages/Texts.h"
#include "widgets/Button.h"

namespace zelvreg {

struct Form42;

using EntryPointOf = const EntryPoint& (*)(const Form42& form);

struct Category {
  std::string_view nameKey;     // language key of the name
  std::string_view english;     // the name where no language file has one
  std::string_view textKey;     // language key of the description
  std::string_view icon;        // key in ImageList1
  std::string_view valueName;   // value of the tick under timer\reg
  std::string_view optionName;  // another name on the command line
  TextKey caption;              // shown in Label4 while it is tested, and where rows tell no place
  std::array<EntryPointOf, 3> routines;  // in order; null after the last
};

// Row n is the element n - 1.
std::span<const Category, 16> categories();
const Category& categoryAt(std::size_t row);
// The row that a name means, in any case: that of its tick, or its word of the command line.
std::optional<std::size_t> categoryNamed(std::string_view name);

// The columns of View1.
inline constexpr std::size_t descriptionColumn = 1;
inline constexpr std::size_t problemsColumn = 2;
inline constexpr std::size_t statusColumn = 3;

}  // namespace zelvreg

#endif
