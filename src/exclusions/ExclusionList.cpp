#include "exclusions/ExclusionList.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "exclusions/ExclusionFile.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "scan/Findings.h"
#include "scan/OwnPaths.h"
#include "scan/Policies.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Pattern.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// A key that is shorter than the entry does not match, since only that many characters are
// compared. A pattern that the match refuses removes every row: a condition that fails enters its
// block.
bool isMatched(std::string_view key, std::string_view pattern) {
  return matchesPattern(firstCharacters(key, characterCount(pattern)), pattern) != Match::No;
}

// All entries together, so that thousands of them cost a key no more than a few.
class Entries {
 public:
  explicit Entries(const ListView& list) {
    std::vector<std::string> plain;
    for (std::size_t row = 1; row <= list.count(); ++row) {
      std::string entry = lowerCase(trim(list.text(row, 0)));
      const bool isPattern = entry.find_first_of("*?#[") != std::string::npos;
      (isPattern ? patterns : plain).push_back(std::move(entry));
    }
    std::ranges::sort(plain);
    for (std::string& entry : plain) {
      // One that begins with another takes nothing more.
      if (starts.empty() || !entry.starts_with(starts.back())) {
        starts.push_back(std::move(entry));
      }
    }
  }

  [[nodiscard]] bool isEmpty() const { return starts.empty() && patterns.empty(); }

  // Of a full key in any case.
  [[nodiscard]] bool take(const std::string& fullKey) const {
    const std::string lower = lowerCase(fullKey);
    const std::string_view key = trim(lower);
    // No start begins with another, so only the last one that is not after the key can be its own.
    const auto next = std::ranges::upper_bound(starts, key);
    return (next != starts.begin() && key.starts_with(*std::prev(next))) ||
           std::ranges::any_of(
               patterns, [key](const std::string& pattern) { return isMatched(key, pattern); });
  }

 private:
  std::vector<std::string> starts;  // sorted
  std::vector<std::string> patterns;
};

bool hasKeyOfRowBefore(const ListView& list, std::size_t row) {
  return row > 1 && list.text(row, subKeyColumn) == list.text(row - 1, subKeyColumn) &&
         list.text(row, rootNameColumn) == list.text(row - 1, rootNameColumn);
}

enum class Queue : std::uint8_t { IsServed, Waits };

// Which rows of View2 the entries take, in their order. Changes none.
std::vector<bool> judgedRows(Form42& form, const Entries& entries, Queue queue) {
  std::vector<bool> isTaken;
  isTaken.reserve(form.View2.count());
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    // Rows beside each other are often of the same key.
    isTaken.push_back(hasKeyOfRowBefore(form.View2, row) ? isTaken.back()
                                                         : entries.take(fullKey(form, row)));
    if (queue == Queue::IsServed) {
      serveUntilStop(form, row);
    }
  }
  return isTaken;
}

void removeHighlighted(ListView& list) {
  list.removeWhere(
      [&list](std::size_t row) { return list.isSelected(row) && !list.isLocked(row); });
}

void openDialog(Form42& form, const std::string& entry, const std::string& row) {
  form.Form1.Text1.setText(entry);
  form.Form1.Text2.setText(row);
  form.Form1.load.run();
  form.Form1.isOpen = true;
  if (form.Form1.show) {
    form.Form1.show(form.Form1);
  }
}

std::vector<std::string> linesOf(const Form42& form, bool skipsBlank) {
  std::vector<std::string> lines;
  for (std::size_t row = 1; row <= form.View4.count(); ++row) {
    const std::string& entry = form.View4.text(row, 0);
    if (!form.View4.isLocked(row) && (!skipsBlank || !trim(entry).empty())) {
      lines.push_back(entry);
    }
  }
  return lines;
}

// To the letter, nobody is told.
void tellOfFile(Form42& form, TextKey text) {
  if (form.safeguards != asDescribed()) {
    form.dialogs.tell(textOf(form, text, {exclusionPath(form)}), MessageIcon::Exclamation);
  }
}

// Keeps the rows of the page in the file, which is deleted if there are none. A file that could not
// be read is not replaced: its entries are not among the rows. After a failure the page shows what
// the file holds.
bool keepLines(Form42& form, const std::vector<std::string>& lines) {
  if (!form.areExclusionsUnread &&
      (lines.empty() ? deleteExclusions(form) : writeExclusions(form, lines))) {
    return true;
  }
  tellOfFile(form, "exclusion-not-changed");
  loadExclusions(form);
  return false;
}

}  // namespace

void loadExclusions(Form42& form) {
  form.View4.clear();
  const auto entries = readExclusions(form);
  const auto decided = exclusionsByPolicy(form);
  form.areExclusionsUnread = !entries || !decided;
  if (entries) {
    for (const std::string& entry : *entries) {
      form.View4.add(entry);
    }
  }
  if (decided) {
    for (const std::string& entry : *decided) {
      form.View4.setLocked(form.View4.add(entry), true);
    }
  }
}

// The rows go together: a list that is filtered in part would offer what the user has excluded.
void Command29(Form42& form) {
  loadExclusions(form);
  const Entries entries(form.View4);
  if (entries.isEmpty()) {
    return;
  }
  const std::size_t revision = form.View2.revision();
  std::vector<bool> isTaken = judgedRows(form, entries, Queue::IsServed);
  if (form.View2.revision() != revision) {
    isTaken = judgedRows(form, entries, Queue::Waits);
  }
  form.View2.removeWhere([&](std::size_t row) { return isTaken[row - 1]; });
}

void chameleonButton5_Click(Form42& form) { openDialog(form, "", ""); }

void chameleonButton8_Click(Form42& form) {
  const std::string& row = form.Text3.text();
  openDialog(form, form.View4.text(static_cast<std::size_t>(leadingNumber(row)), 0), row);
}

ListChange removeHighlightedExclusions(Form42& form) {
  const Answer answer = form.dialogs.ask({.text = textOf(form, "exclusion-remove-question"),
                                          .icon = MessageIcon::Exclamation,
                                          .isQuestion = true,
                                          .title = textOf(form, "exclusion-remove-title")});
  if (answer == Answer::No) {
    return ListChange::Declined;
  }
  removeHighlighted(form.View4);
  // Blank rows are written too, and one empty line when no row is left.
  std::vector<std::string> lines = linesOf(form, false);
  if (lines.empty()) {
    lines.emplace_back();
  }
  return keepLines(form, lines) ? ListChange::Done : ListChange::Failed;
}

void chameleonButton6_Click(Form42& form) { removeHighlightedExclusions(form); }

void View4_ItemClick(Form42& form, std::size_t row) {
  form.Text3.setText(decimal(static_cast<std::int64_t>(row)));
  form.chameleonButton6.enabled = !form.View4.isLocked(row);
  form.chameleonButton8.enabled = !form.View4.isLocked(row);
}

void chameleonButton9_Click(Form42& form) {
  std::vector<std::string> keys;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    if (form.View2.isSelected(row)) {
      keys.push_back(fullKey(form, row));
    }
  }
  // To the letter, rows go whether or not the file was written.
  if (!appendExclusions(form, keys)) {
    tellOfFile(form, "exclusion-not-written");
    if (form.safeguards != asDescribed()) {
      return;
    }
  }
  removeHighlighted(form.View2);
}

void Form1_orubutton1_Click(Form42& form) {
  const std::string& text = form.Form1.Text1.text();
  const std::string entry(trim(text));
  const double row = leadingNumber(form.Form1.Text2.text());
  if (row > 0) {
    form.View4.setText(static_cast<std::size_t>(row), 0, entry);
    form.Text6.setText("");
    form.Text6.setText("1");
  } else {
    const bool isKept = entry.empty() || appendExclusions(form, {text});
    if (!isKept) {
      tellOfFile(form, "exclusion-not-written");
    }
    // An empty entry still gets into the list, where it excludes everything.
    if (isKept || form.safeguards == asDescribed()) {
      form.View4.add(entry);
    }
  }
  closeExclusionDialog(form);
}

void closeExclusionDialog(Form42& form) {
  form.Form1.shadow.remove();
  form.Form1.isOpen = false;
}

void Text6_Change(Form42& form) {
  if (leadingNumber(form.Text6.text()) == 1) {
    keepLines(form, linesOf(form, true));
    form.Text6.setText("");
  }
}

}  // namespace zelvreg
