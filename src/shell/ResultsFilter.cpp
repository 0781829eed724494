#include "shell/ResultsFilter.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "languages/Texts.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

// About 4 milliseconds.
constexpr std::size_t rowsAtOnce = 2048;

bool holds(const std::string& text, const std::string& wanted) {
  return asciiLength(text) == text.size() ? containsIgnoringCase(text, wanted)
                                          : contains(lowerCase(text), wanted);
}

// A finding has the icon of its category, but for one kind that has none. 0 for no category.
std::size_t categoryOf(const Form42& form, std::size_t row) {
  constexpr std::size_t helpFiles = 4;
  const std::string& icon = form.View2.smallIcon(row);
  if (icon.empty()) {
    return form.View2.text(row, kindCodeColumn) == "4" ? helpFiles : 0;
  }
  const auto found = std::ranges::find(categories(), icon, &Category::icon);
  return found == categories().end() ? 0
                                     : static_cast<std::size_t>(found - categories().begin()) + 1;
}

bool isFiltered(const FilterPass& pass) { return !pass.wanted.empty() || pass.category != 0; }

bool isWanted(const Form42& form, std::size_t row) {
  constexpr std::array<std::size_t, 3> asStored{badValueColumn, rootNameColumn, subKeyColumn};
  const std::string& wanted = form.filterPass.wanted;
  const std::size_t category = form.filterPass.category;
  if (category != 0 && categoryOf(form, row) != category) {
    return false;
  }
  return wanted.empty() || holds(translated(form, form.View2.text(row, locationColumn)), wanted) ||
         std::ranges::any_of(asStored, [&](std::size_t column) {
           return holds(form.View2.text(row, column), wanted);
         });
}

void showCount(Form42& form) {
  const std::size_t all = form.View2.count();
  const std::string text =
      !isFiltered(form.filterPass)
          ? std::string()
          : textOf(form, "filter-count",
                   {std::to_string(all - form.View2.hiddenCount()), std::to_string(all)});
  if (text != form.FilterText.caption.get()) {
    form.FilterText.caption = text;
  }
}

void filterSome(Form42& form) {
  FilterPass& pass = form.filterPass;
  if (!isFiltered(pass) && form.View2.hiddenCount() == 0) {
    pass.nextRow = form.View2.count() + 1;
  }
  const std::size_t end = std::min(form.View2.count() + 1, pass.nextRow + rowsAtOnce);
  for (; pass.nextRow < end; ++pass.nextRow) {
    form.View2.setHidden(pass.nextRow, !isWanted(form, pass.nextRow));
  }
  pass.rowsThen = form.View2.count();
  showCount(form);
  if (pass.nextRow <= form.View2.count() && !pass.isPosted) {
    pass.isPosted = true;
    form.messages.post([&form] {
      form.filterPass.isPosted = false;
      followResults(form);
    });
  }
}

}  // namespace

void filterResults(Form42& form) {
  form.filterPass.wanted = lowerCase(form.FilterBox.text());
  form.filterPass.nextRow = 1;
  filterSome(form);
}

std::array<std::size_t, 16> countByCategory(const Form42& form) {
  std::array<std::size_t, 16> counts{};
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    if (const std::size_t category = categoryOf(form, row); category != 0) {
      ++counts[category - 1];
    }
  }
  return counts;
}

void filterByCategory(Form42& form, std::size_t category) {
  form.filterPass.category = form.filterPass.category == category ? 0 : category;
  filterResults(form);
}

void clearFilter(Form42& form) {
  form.filterPass.category = 0;
  form.FilterBox.setText("");
}

void followResults(Form42& form) {
  FilterPass& pass = form.filterPass;
  if (form.View2.count() < pass.rowsThen) {
    pass.nextRow = 1;
  }
  filterSome(form);
}

}  // namespace zelvreg
