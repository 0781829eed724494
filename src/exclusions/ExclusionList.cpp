#include "exclusions/ExclusionList.h"

#include <algorithm>

#include "exclusions/ExclusionFile.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Pattern.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

struct Entry {
  std::string pattern;
  bool isPlain;  // no wildcards in it
};

Entry entryOf(std::string_view text) {
  const std::string pattern = lowerCase(trim(text));
  return {pattern, pattern.find_first_of("*?#[") == std::string::npos};
}

// A key that is shorter than the entry does not match, since only that many characters are
// compared. A pattern that the match refuses removes every row: a condition that fails enters its
// block.
bool isExcluded(const std::string& key, const Entry& entry) {
  return entry.isPlain ? key.starts_with(entry.pattern)
                       : matchesPattern(firstCharacters(key, characterCount(entry.pattern)),
                                        entry.pattern) != Match::No;
}

// As entries see them, in the order of the rows.
std::vector<std::string> keysOfRows(const Form42& form) {
  std::vector<std::string> keys;
  keys.reserve(form.View2.count());
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    keys.emplace_back(trim(lowerCase(fullKey(form, row))));
  }
  return keys;
}

bool isExcludedByAny(const std::string& key, const std::vector<Entry>& entries) {
  return std::ranges::any_of(entries, [&](const Entry& entry) { return isExcluded(key, entry); });
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
    if (!skipsBlank || !trim(entry).empty()) {
      lines.push_back(entry);
    }
  }
  return lines;
}

}  // namespace

void loadExclusions(Form42& form) {
  form.View4.clear();
  for (const std::string& entry : readExclusions(form)) {
    form.View4.add(entry);
  }
}

// The queue is not served meanwhile: a list that is filtered in part would offer what the user has
// excluded. So nothing is done twice here.
void Command29(Form42& form) {
  loadExclusions(form);
  std::vector<Entry> entries;
  for (std::size_t row = 1; row <= form.View4.count(); ++row) {
    entries.push_back(entryOf(form.View4.text(row, 0)));
  }
  const std::vector<std::string> keys = keysOfRows(form);
  for (std::size_t row = keys.size(); row > 0; --row) {
    if (isExcludedByAny(keys[row - 1], entries)) {
      form.View2.remove(row);
    }
  }
}

void chameleonButton5_Click(Form42& form) { openDialog(form, "", ""); }

void chameleonButton8_Click(Form42& form) {
  const std::string& row = form.Text3.text();
  openDialog(form, form.View4.text(static_cast<std::size_t>(leadingNumber(row)), 0), row);
}

void chameleonButton6_Click(Form42& form) {
  const Answer answer = form.dialogs.ask(
      {.text = "Are you sure you would like to remove the selected Exclusion text from the list?",
       .icon = MessageIcon::Exclamation,
       .isQuestion = true,
       .title = "Remove"});
  if (answer == Answer::No) {
    return;
  }
  for (std::size_t row = form.View4.count(); row >= 1; --row) {
    if (form.View4.isSelected(row)) {
      form.View4.remove(row);
    }
  }
  // Blank rows are written too, and one empty line when no row is left.
  std::vector<std::string> lines = linesOf(form, false);
  if (lines.empty()) {
    lines.emplace_back();
  }
  writeExclusions(form, lines);
}

void View4_ItemClick(Form42& form, std::size_t row) {
  form.Text3.setText(decimal(static_cast<std::int64_t>(row)));
  form.chameleonButton6.enabled = true;
  form.chameleonButton8.enabled = true;
}

void chameleonButton9_Click(Form42& form) {
  for (std::size_t row = 1; row <= form.View2.count();) {
    if (!form.View2.isSelected(row)) {
      ++row;
      continue;
    }
    const std::string key = fullKey(form, row);
    if (!trim(key).empty()) {
      appendExclusion(form, key);
    }
    form.View2.remove(row);
  }
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
    if (!entry.empty()) {
      appendExclusion(form, text);
    }
    // An empty entry still gets into the list, where it excludes everything.
    form.View4.add(entry);
  }
  closeExclusionDialog(form);
}

void closeExclusionDialog(Form42& form) {
  form.Form1.shadow.remove();
  form.Form1.isOpen = false;
}

void Text6_Change(Form42& form) {
  if (leadingNumber(form.Text6.text()) == 1) {
    const std::vector<std::string> lines = linesOf(form, true);
    if (lines.empty()) {
      deleteExclusions(form);
    } else {
      writeExclusions(form, lines);
    }
    form.Text6.setText("");
  }
}

}  // namespace zelvreg
