// What the program says beside the captions of its controls: messages, counts, the progress.
//
// A language file may have each text under its key in section "Form42"; where it has none, or an
// empty one, the English text stands. "%1" to "%9" stand for values, in whatever order a language
// needs them.
#ifndef ZELVREG_LANGUAGES_TEXTS_H
#define ZELVREG_LANGUAGES_TEXTS_H

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace zelvreg {

struct Form42;
class LanguageFile;

struct Text {
  std::string_view key;
  std::string_view english;
};

inline constexpr std::array texts{
    Text{"yes", "&Yes"},
    Text{"no", "&No"},
    Text{"ok", "OK"},
    Text{"close", "Close"},
    Text{"fix-question", "Do You want to Fix selected items"},
    Text{"fix-hidden", "Ticked rows that the filter hides: %1"},
    Text{"fix-no-export",
         "Nothing was repaired: the safety export of what would go could not be written to the "
         "folder backup\\registry of the program. See that it can be written and the keys read, or "
         "repair without it."},
    Text{"fix-no-exclusions",
         "Nothing was repaired: the exclusions in the file %1 could not be read, so what they keep "
         "is not known. See that the file can be read, and scan again."},
    Text{"fix-no-journal",
         "Nothing was repaired: the undo journal, or its entry in the list, could not be written. "
         "See that the program's folder can be written, or switch undo information off."},
    Text{"fix-outcome",
         "%1 repaired, %2 left alone because their repair would have taken more than was found, "
         "%3 without effect. What was not repaired stays in the list, without a tick."},
    Text{"repair-result", "%1 repaired, %2 left, %3 spared"},
    Text{"sure-rows", "%1 surely dead"},
    Text{"likely-rows", "%1 likely"},
    Text{"unsure-rows", "%1 unsure"},
    Text{"unsure-rows-ticked", "%1 unsure and ticked all the same"},
    Text{"sure-rows-left", "%1 surely dead and left alone"},
    Text{"likely-rows-left", "%1 likely and left alone"},
    Text{"unsure-rows-left", "%1 unsure and left alone"},
    Text{"none", "none"},
    Text{"problems-found", "%1 Problem(s) Found "},
    Text{"problems-left", "%1 Problem(s) Still There "},
    Text{"total-found", "Total Problems Found"},
    Text{"scan-nothing-chosen", "Please select any item from the list first to perform the test"},
    Text{"scan-testing", "Testing"},
    Text{"scan-finished", "Finished"},
    Text{"scan-place", "%1 of %2"},
    Text{"time-minutes", "About %1 minutes left"},
    Text{"time-minute", "About a minute left"},
    Text{"time-seconds", "About %1 seconds left"},
    Text{"time-moment", "Less than 10 seconds left"},
    Text{"notice-finished", "The scan has ended"},
    Text{"notice-nothing", "No problems were found"},
    Text{"implausible", "This is implausible: %1."},
    Text{"implausible-folder-gone", "the folder %1 does not exist, so %2"},
    Text{"implausible-folder-hollow", "the folder %1 holds no file, so %2"},
    Text{"implausible-category", "more than half of the files of \"%1\" do not exist, so %2"},
    Text{"implausible-one-row", "1 finding is not called dead"},
    Text{"implausible-rows", "%1 findings are not called dead"},
    Text{"undo-finished", "Finished Retriving undo data"},
    Text{"undo-export-open",
         "Nothing was restored: %1 could have been written by somebody who is no administrator. "
         "Look at it; a copy in a folder of administrators alone can be restored."},
    Text{"undo-folder-open",
         "Nothing was restored: users who are no administrators can write to the folder %1. Move "
         "the program to a folder that only administrators can write to."},
    Text{"undo-no-file", "Nothing was restored: the entry names no file of the program's folder."},
    Text{"undo-records-refused",
         "%1: the registry refused %2 of %3 records. See that you have the rights of an "
         "administrator, and restore it again."},
    Text{"undo-not-removed",
         "The entry %1 was not removed. See that you have the rights of an administrator, and try "
         "again."},
    Text{"undo-journal-left",
         "The entry was removed, but its file %1 could not be deleted. Delete it yourself."},
    Text{"exclusion-remove-question",
         "Are you sure you would like to remove the selected Exclusion text from the list?"},
    Text{"exclusion-remove-title", "Remove"},
    Text{"exclusion-not-written",
         "Nothing was excluded: the file %1 could not be written. See that the program's folder "
         "can be written."},
    Text{"exclusion-not-changed",
         "The exclusions were not changed: the file %1 could not be read or written. See that it "
         "can be, and try again."},
    Text{"set-by-policy", "Set by your administrator"},
    Text{"no-entry", "No Entry Selected"},
    Text{"choose-entry", "Please Select entry from the list to show details"},
    Text{"entry-details",
         "The registration key \"%1\\%2\" contains the application path to \"%2\". The path points "
         "to the missing target \"%3\" and can therefore be deleted."},
    Text{"report-filter", "*.txt (text files)"},
    Text{"report-title", "Save As"},
    Text{"theme-system", "Colors: same as Windows"},
    Text{"theme-light", "Colors: light"},
    Text{"theme-dark", "Colors: dark"},
    Text{"all-roots", "My Computer"},
    Text{"name-categories", "Categories"},
    Text{"name-findings", "Findings"},
    Text{"name-filter", "Filter of the findings"},
    Text{"filter-cue", "Filter"},
    Text{"filter-count", "%1 of %2 shown"},
    Text{"name-journals", "Undo journals"},
    Text{"name-exclusions", "Exclusions"},
    Text{"name-find-text", "Text to find"},
    Text{"name-find-root", "Root to search"},
    Text{"name-theme", "Colors"},
    Text{"name-help", "Help"},
    Text{"name-language", "Language"},
    Text{"name-about", "About"},
    Text{"name-minimize", "Minimize"},
    Text{"name-maximize", "Maximize"},
    Text{"name-restore", "Restore the size"},
    Text{"translator-missing",
         "The program for translators is missing: %1. Copy it there, or install zelvreg again."},
    Text{"legal-line", "Copyright %1 the zelvreg authors"},
    Text{"help-missing", "The help cannot be shown: %1 is not there or cannot be opened."},
    Text{"c1", "Invalid Font Reference"},
    Text{"c2", "Invalid Shared Dll's"},
    Text{"c3", "Invalid Application path"},
    Text{"c4", "Invalid Help files"},
    Text{"c5", "Invalid Icon Reference"},
    Text{"c6", "Invalid Files extintion"},
    Text{"c7", "Invalid ClassId Configuration"},
    Text{"c8", "Current user settings"},
    Text{"c9", "Global user settings"},
    Text{"c10", "Computer settings"},
    Text{"c11", "Invalid Firewall settings"},
    Text{"c12", "Invalid File Extensions"},
    Text{"c13", "Add/Remove programs"},
    Text{"c14", "Startup programs"},
    Text{"c15", "Startup programs"},
    Text{"c16", "Missing Mui cache reference"},
    Text{"recent-lists", "Users MRU lists"},
};

// The place of a text in the table. A key that the table does not have does not compile.
class TextKey {
 public:
  consteval TextKey(std::string_view key) : index(0) {
    while (texts.at(index).key != key) {
      ++index;
    }
  }
  consteval TextKey(const char* key) : TextKey(std::string_view(key)) {}
  [[nodiscard]] constexpr std::size_t number() const { return index; }

 private:
  std::size_t index;
};

// As data, which is the same in all languages.
constexpr std::string_view englishOf(TextKey key) { return texts[key.number()].english; }

// Takes over the texts of a language, until the next call.
void loadTexts(Form42& form, const LanguageFile& language);

// A text in the language in use, with the values for "%1" and so on. What a value holds is not
// looked at again.
std::string textOf(const Form42& form, TextKey key,
                   std::initializer_list<std::string_view> values = {});
// What is shown for a text that is data: its translation, if it is one of the English texts.
std::string translated(const Form42& form, const std::string& english);

}  // namespace zelvreg

#endif
