// The files that the program keeps for its user, and that other programs can write.
#include <algorithm>
#include <array>
#include <memory>

#include "exclusions/ExclusionFile.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "fuzz/FuzzTarget.h"
#include "keys/RegistryImport.h"
#include "languages/readlangfile.h"
#include "machine/base/MachineError.h"
#include "runtime/IniText.h"
#include "runtime/OwnText.h"
#include "scan/Findings.h"
#include "support/MachineFixture.h"
#include "support/RegistryContent.h"
#include "text/Pattern.h"
#include "text/Text.h"
#include "translation/LanguageCheck.h"
#include "undo/JournalFile.h"
#include "undo/UndoRestore.h"

namespace zelvreg::fuzz {
namespace {

class SmallComputer : public fixture::MachineBuilder {
 public:
  SmallComputer() {
    key(R"(HKEY_LOCAL_MACHINE\SOFTWARE\A)", R"("b"="c")");
    key(R"(HKEY_CURRENT_USER\Software\A)");
    start();
  }
  using MachineBuilder::computer;
  using MachineBuilder::file;
  using MachineBuilder::restart;

  [[nodiscard]] fixture::RegistryContent content() const {
    return fixture::registryContent(computer());
  }
};

// Which no export can hold in the name of a key.
bool hasLineBreak(const fixture::RegistryContent::value_type& entry) {
  return entry.first.find_first_of("\r\n") != std::string::npos;
}

void restore(std::string_view input) {
  SmallComputer computer;
  Form42 form;
  const auto before = computer.content();
  restoreJournal(form, input);
  const auto after = computer.content();
  for (const auto& [name, data] : before) {
    require(after.contains(name), "a journal brings back, and takes nothing away");
  }
  // Each record writes one value, in a key that may be new with those above it.
  require(restorableRecords(input) != 0 || after == before,
          "a journal without records that can be restored writes nothing");
  try {
    computer.restart();
    require(computer.content() == after, "what a journal writes can be saved and read");
  } catch (const machine::MachineError&) {
    require(std::ranges::any_of(after, hasLineBreak), "only a line break in a name is refused");
  }
}

std::vector<JournalRecord> recordsOf(std::string_view file) {
  std::vector<JournalRecord> records;
  for (std::size_t number = 1; number <= journalRecordCount(file); ++number) {
    records.push_back(journalRecordAt(file, number));
  }
  return records;
}

void readRecords(std::string_view input) {
  isTornJournal(input);
  const std::string file = journalFile(recordsOf(input));
  require(!isTornJournal(file), "what is written is whole");
  const std::vector<JournalRecord> written = recordsOf(file);
  const std::string again = journalFile(written);
  require(recordsOf(again) == written, "what was written is read alike");
  // What did not fit is gone, so the second file may be in the code page where the first was UTF-8.
  const bool isNarrower = file.starts_with(utf8Mark) && !again.starts_with(utf8Mark);
  require(isNarrower || again == file, "what was read is written alike");
}

void exclude(std::string_view input) {
  static const SmallComputer computer;
  Form42 form;
  form.programFolder = "C:\\program";
  computer.file("C:\\program\\exregscan.txt", input);
  ScannerRun run;
  for (const std::string_view key : {"Software\\A", "Software\\B[x]", "CLSID\\{0}\\?"}) {
    addRow(form, run, {"location", "bad value", "2", "HKEY_LOCAL_MACHINE", key, "a"});
  }
  Command29(form);
  require(form.View2.count() <= 3, "exclusions add no finding");
  const std::vector<std::string> entries = exclusionsIn(input);
  require(entries.size() <= input.size() + 1, "no more entries than characters");
  require(!entries.empty() || form.View2.count() == 3, "without entries all findings stay");
}

// Both in one input, the text up to the first line break.
void matchPattern(std::string_view input) {
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string_view text = input.substr(0, end);
  const std::string_view pattern = input.substr(std::min(end + 1, input.size()));
  const Match match = matchesPattern(text, pattern);
  if (pattern.find_first_of("*?#[") == std::string_view::npos) {
    require((match == Match::Yes) == (text == pattern), "letters stand for themselves");
  }
  if (match != Match::Refused) {
    require(matchesPattern(text, std::string(pattern) + "*") != Match::No || match == Match::No,
            "what fits, fits with anything behind it");
    require(matchesPattern(text, "*" + std::string(pattern)) != Match::No || match == Match::No,
            "what fits, fits with anything in front of it");
  }
}

void readLanguage(std::string_view input) {
  constexpr std::array charsets{0, 128, 134, 178, 204, 238};
  for (const int charset : charsets) {
    const LanguageFile file = LanguageFile::ofBytes(input, charset);
    // A carriage return alone ends no line.
    const std::string text = file.value("Form42", "Command1");
    require(text.find_first_of("\"\n=") == std::string::npos, "a text is one line without quotes");
    checkLanguageFile(input, charset, &file);
    charsetInList(input, "german");
  }
  for (const LanguageFields& fields : languageListOf(input)) {
    require(fields.size() <= 3, "a language has a name, a charset and a tag");
  }
}

void readIni(std::string_view input) {
  const IniText first(input);
  IniText changed(first.text());
  require(changed.text() == first.text(), "what was written is read alike");
  changed.set("section", "name", input);
  const IniText again(changed.text());
  require(again.value("SECTION", "NAME") == input, "any text can be kept");
  for (const std::string& name : first.names("section")) {
    require(
        lowerCase(name) == "name" || again.value("section", name) == first.value("section", name),
        "other settings stay");
  }
}

void importExport(std::string_view input) {
  const SmallComputer computer;
  const auto before = computer.content();
  userOfRegistryText(input);
  const RegistryImport done = importRegistryText(input);
  require(done.message.find('\n') == std::string::npos, "what is told is one line");
  require(done.isDone || !done.message.empty(), "what failed is told");
  const bool isNothing = done.keys + done.valuesSet + done.valuesDeleted + done.keysDeleted == 0;
  require(!isNothing || computer.content() == before, "what changes is counted");
}

constexpr std::array<FuzzTarget, 7> targets{{
    {.name = "journal", .run = restore},
    {.name = "journal-records", .run = readRecords},
    {.name = "exclusions", .run = exclude},
    {.name = "pattern", .run = matchPattern},
    {.name = "language", .run = readLanguage},
    {.name = "portable-settings", .run = readIni},
    {.name = "safety-export", .run = importExport},
}};

}  // namespace

std::span<const FuzzTarget> userFileTargets() { return targets; }

}  // namespace zelvreg::fuzz
