// The results list: adding a finding, counting it, ticking rows.
#ifndef ZELVREG_SCAN_FINDINGS_H
#define ZELVREG_SCAN_FINDINGS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvreg {

struct Form42;

// A dead reference. Its only store is a row of View2.
struct Finding {
  std::string_view location;  // the entry itself
  std::string_view badValue;  // the dead data
  std::string_view kindCode;  // selects the repair
  std::string_view rootName;  // long name of the root
  std::string_view subKey;    // path of the key below the root
  std::string_view iconKey;   // key in ImageList1; one that it does not hold leaves no icon
};

// The columns of View2; the location is the item's own text.
inline constexpr std::size_t locationColumn = 0;
inline constexpr std::size_t badValueColumn = 1;
inline constexpr std::size_t kindCodeColumn = 2;
inline constexpr std::size_t rootNameColumn = 3;
inline constexpr std::size_t subKeyColumn = 4;

// Which row the fields after the location, and the icon, go to.
enum class FieldsGoTo : std::uint8_t { RowJustAdded, NumberedRow };
// Which row is scrolled into view.
enum class ScrollsTo : std::uint8_t { RowJustAdded, NumberedRow, Nothing };
enum class TotalIsSaved : std::uint8_t { AtEachFinding, AtTheEnd };

// The counters of one run of a scanner.
struct ScannerRun {
  std::size_t row = 1;  // number of the row that the next finding will take
  int found = 0;        // also the place of the next bad value in List2
  FieldsGoTo fields = FieldsGoTo::RowJustAdded;
  ScrollsTo scroll = ScrollsTo::RowJustAdded;
  TotalIsSaved total = TotalIsSaved::AtEachFinding;
};

// A loop over all rows calls it for each: it serves the message queue after every so many. Not once
// Cancel was pressed: then the findings may be used, and what the loop does with them must be done.
inline constexpr std::size_t mostUnservedRows = 64;
void serveUntilStop(Form42& form, std::size_t row);

// The number of the first row after those of earlier scanners.
std::size_t nextRow(const Form42& form);

// Appends a finding, unticked, scrolls to it, and counts it in `run` and in the running total. The
// bad value is trimmed and listed in List2.
void addFinding(Form42& form, ScannerRun& run, const Finding& finding);

// Its two halves, for scanners that fill List2 in another way or not at all. Only the row, with its
// texts as they are, counted in `run`:
void addRow(Form42& form, ScannerRun& run, const Finding& finding);
// Only the running total:
void countInTotal(Form42& form, TotalIsSaved saved = TotalIsSaved::AtEachFinding);

// Sets the running total to 0, in both of its forms.
void clearTotal(Form42& form);

// Saves the running total where the suite reads it.
void saveTotalFound(const Form42& form);

// The full path of a row's key, with the long name of its root. The empty text for a row that does
// not exist.
std::string fullKey(const Form42& form, std::size_t row);

// The number of rows of View2.
std::string rowCountText(const Form42& form);

// What Label3 and Label4 show after a scan or a search: that number with its words, and the caption
// of the running total.
std::string problemsFoundText(const Form42& form);
std::string totalFoundCaption(const Form42& form);

// Saves it for the next scanner.
void storeRowCount(Form42& form);

// Shows in Label4 what a category row tests.
void showCaption(Form42& form, std::size_t row);

// Shows a count in the "# Problems" cell of a category row.
void showProblems(Form42& form, std::size_t row, std::int64_t count);

// Show the count of a run in its category row: after an entry, unless nothing was found yet; and at
// the end of the run, if nothing was found.
void showFound(Form42& form, std::size_t row, const ScannerRun& run);
void showNothingFound(Form42& form, std::size_t row, const ScannerRun& run);

// Select All and Select None of the results and of the categories. They leave hidden rows alone.
void chameleonButton16_Click(Form42& form);
void chameleonButton17_Click(Form42& form);
void chameleonButton21_Click(Form42& form);
void chameleonButton22_Click(Form42& form);

}  // namespace zelvreg

#endif
