// What the console program was asked to do.
#ifndef ZELVREG_CONSOLE_COMMAND_LINE_H
#define ZELVREG_CONSOLE_COMMAND_LINE_H

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "console/HelpLayout.h"
#include "console/Paint.h"
#include "form/Evidence.h"
#include "form/Safeguards.h"

namespace zelvreg::console {

enum class Command {
  Scan,
  Fix,
  Detect,
  Search,
  ListUndo,
  RestoreUndo,
  RemoveUndo,
  RestoreExport,
  UndoOn,
  UndoOff,
  ListExclusions,
  AddExclusion,
  RemoveExclusion,
  ListLanguages,
  UseLanguage,
  CheckLanguage,
  Automatic,
  Doctor,
  Merge,
  ScanImages,
};
enum class Format { Tables, Json, JsonLines, Csv };

// Which computer to work on; empty on Windows, where it is the running one.
struct Target {
  std::string machineFolder;
  std::string offlineRoot;
  std::string image = {};                  // of a disk, a file
  std::optional<unsigned> partition = {};  // of the Windows in the image
  std::string overlay = {};                // new image that takes what is written
  bool writesInPlace = false;              // the image itself is written
  std::map<char, std::string> drives;      // by upper-case letter
  std::string user;                        // a name, or empty
  // Each user is worked on in turn.
  bool everyUser = false;
  // The profiles of services and the like are there as well.
  bool everyProfile = false;
  bool leavesLogs = false;  // hives that were not shut down cleanly are read as they are
  bool missingDrivesAreDead = false;
  bool filesAreReadOnly = false;
  std::size_t keptBackups = 3;  // older backups of a hive beside the newest

  // Whether it is a disk of a computer that is not running.
  [[nodiscard]] bool isDisk() const { return !offlineRoot.empty() || !image.empty(); }
};

enum class SearchMode { Any, Left, Right, Exact };

// What a search looks for, and where.
struct SearchOptions {
  std::string text;
  std::string root;  // as cboRoot lists it
  bool testsKeys = false;
  bool testsValues = false;
  bool testsData = false;
  bool matchesCase = false;
  SearchMode mode = SearchMode::Any;
};

// What results are merged, and where the outcome goes.
struct MergeOptions {
  std::vector<std::string> results;  // files, folders, or standard input
  // Files, or standard output; empty for none.
  std::string json;
  std::string csv;
  std::string html;
  bool isAnonymous = false;
  std::string now;  // what it says of its time, in UTC; empty for the clock
};

// Which images are scanned, one by one, and what becomes of their results.
struct ImagesOptions {
  std::vector<std::string> lists;
  std::string resultsFolder;
  bool scansAgain = false;                             // also those that have a result
  std::optional<std::chrono::duration<double>> limit;  // for each of them
};

struct Options {
  Command command = Command::Scan;
  Target target;
  std::set<std::size_t> rows;  // category rows to scan, from 1
  bool areRowsNamed = false;   // by --only; else they are all
  Format format = Format::Tables;
  bool isFull = false;  // tables show whole texts on a terminal too
  bool isQuiet = false;
  bool exitsZero = false;  // problems found are no failure of the call
  bool answersYes = false;
  std::string language;             // tag
  std::string languageFile = {};    // that is checked
  std::optional<int> charset = {};  // of that file
  std::set<int> kinds;              // kind codes to fix; empty for all
  // What was chosen for safeguards, the narrower choices first.
  std::vector<SafeguardChoice> safeguardChoices;
  bool isAsDescribed = false;
  // A repair takes no finding that is less sure; without it, the safeguard says from where on.
  std::optional<Confidence> leastSure;
  // When to give up a scan or a search; never without it.
  std::optional<std::chrono::steady_clock::time_point> deadline;
  std::string now = {};      // what a result says of its time, in UTC; empty for the clock
  bool isRehearsal = false;  // tells what a repair would do, and does nothing
  std::string reviewedFile;  // result whose rows alone are repaired; empty for none
  std::optional<std::size_t> mostRows;  // with more than these to repair, nothing is repaired
  std::string reportFile;               // of the text report; empty for none
  std::string logFile = {};             // that gets a line for each step; empty for none
  std::string pageFile = {};            // of the page for a browser; empty for none
  bool reportsEvidence = false;         // the report tells how sure each finding is
  std::size_t entry = 0;                // row of a list, from 1
  std::string exportFile;               // safety export that is to be imported
  std::string exclusion;                // key that is to be excluded
  SearchOptions search;
  MergeOptions merge = {};
  ImagesOptions images = {};
  std::string mode;  // the program's own command line, of an automatic mode
};

// Whether a command works on files alone, and no computer needs to be named.
bool needsNoComputer(Command command);

// Whether what was asked for may change the computer.
bool changesComputer(const Options& options);

// One line that says what is wrong with the call and what to do.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& line, std::string textBelow = "")
      : std::runtime_error(line), below(std::move(textBelow)) {}

  std::string below;  // lines that are shown after it; mostly none
};

// What --color asks for, wherever it stands. Read before all else, because what is wrong with the
// rest is told in color too.
ColorUse colorAskedFor(const std::vector<std::string>& arguments);

// The options, or the help text that was asked for. Throws UsageError.
struct ParsedCommandLine {
  Options options;
  // Or the version, or a script of completions: what is printed instead of a run.
  std::optional<std::string> help;
};
ParsedCommandLine parseCommandLine(int count, const char* const* arguments,
                                   const HelpLayout& layout = {});

// The rows named in a list separated by commas, each by the value name of its tick or by its word.
// Throws UsageError for an unknown name, and for an empty list.
std::set<std::size_t> rowsNamed(const std::string& names);

// The root that a long or a short name means in any case, or all of them for "all"; as cboRoot
// lists it. Throws UsageError for any other text.
std::string searchRootNamed(const std::string& name);

}  // namespace zelvreg::console

#endif
