#include "undo/JournalFile.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "runtime/CodePageText.h"
#include "runtime/OwnText.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

struct JournalField {
  std::string JournalRecord::*field;
  std::size_t width;
};

constexpr std::array<JournalField, 5> fields{{
    {&JournalRecord::kind, 2},
    {&JournalRecord::hive, 50},
    {&JournalRecord::key, 150},
    {&JournalRecord::value, 50},
    {&JournalRecord::text, 50},
}};

bool isUtf8(std::string_view file) { return file.starts_with(utf8Mark); }

std::string_view recordsOf(std::string_view file) {
  return file.substr(isUtf8(file) ? utf8Mark.size() : 0);
}

std::string fieldBytes(std::string_view text, std::size_t width, bool asUtf8) {
  // No character is less than a byte.
  text = asUtf8 ? firstBytes(text, width) : firstCharacters(text, width);
  std::string bytes = asUtf8 ? std::string(text) : codePageBytes(text);
  while (bytes.size() > width) {
    text = withoutLast(text, 1);
    bytes = codePageBytes(text);
  }
  bytes.resize(width, ' ');
  return bytes;
}

std::string recordBytes(const std::vector<JournalRecord>& records, bool asUtf8) {
  std::string bytes(asUtf8 ? utf8Mark : "");
  for (const JournalRecord& record : records) {
    for (const auto& [field, width] : fields) {
      bytes += fieldBytes(record.*field, width, asUtf8);
    }
  }
  return bytes;
}

bool isInCodePage(const std::vector<JournalRecord>& records) {
  return std::ranges::all_of(records, [](const JournalRecord& record) {
    return std::ranges::all_of(fields, [&](const JournalField& field) {
      return exactCodePageBytes(record.*field.field).has_value();
    });
  });
}

}  // namespace

std::string journalFile(const std::vector<JournalRecord>& records, std::string_view before) {
  const bool isCovered = recordsOf(before).size() <= records.size() * journalRecordSize;
  const std::string_view kept = isCovered ? std::string_view() : before;
  const bool wasUtf8 = isUtf8(kept);
  std::string bytes = recordBytes(records, wasUtf8);
  if (!wasUtf8 && (!isInCodePage(records) || isUtf8(bytes))) {
    std::vector<JournalRecord> all = records;
    for (std::size_t number = all.size() + 1; number <= journalRecordCount(kept); ++number) {
      all.push_back(journalRecordAt(kept, number));
    }
    return recordBytes(all, true);
  }
  return isCovered ? bytes : bytes.append(kept.substr(bytes.size()));
}

JournalRecord journalRecordAt(std::string_view file, std::size_t number) {
  const std::string_view records = recordsOf(file);
  JournalRecord record;
  std::size_t start = (number - 1) * journalRecordSize;
  for (const auto& [field, width] : fields) {
    if (start < records.size()) {
      const std::string_view bytes = trim(untilNul(records.substr(start, width)));
      record.*field = isUtf8(file) ? utf8(utf16(bytes)) : textOfCodePage(bytes);
    }
    start += width;
  }
  return record;
}

std::size_t journalRecordCount(std::string_view file) {
  const auto size = static_cast<double>(recordsOf(file).size());
  return static_cast<std::size_t>(std::llrint(size / static_cast<double>(journalRecordSize)));
}

bool isTornJournal(std::string_view file) {
  return recordsOf(file).size() % journalRecordSize != 0;
}

}  // namespace zelvreg
