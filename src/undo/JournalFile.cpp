#include "undo/JournalFile.h"

#include <array>
#include <cmath>

#include "text/Text.h"

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

}  // namespace

std::string journalBytes(const JournalRecord& record) {
  std::string bytes;
  for (const auto& [field, width] : fields) {
    std::string text = record.*field;
    text.resize(width, ' ');
    bytes += text;
  }
  return bytes;
}

JournalRecord journalRecordAt(std::string_view file, std::size_t number) {
  JournalRecord record;
  std::size_t start = (number - 1) * journalRecordSize;
  for (const auto& [field, width] : fields) {
    if (start < file.size()) {
      record.*field = trim(untilNul(file.substr(start, width)));
    }
    start += width;
  }
  return record;
}

std::size_t journalRecordCount(std::size_t fileSize) {
  const double exact = static_cast<double>(fileSize) / static_cast<double>(journalRecordSize);
  return static_cast<std::size_t>(std::llrint(exact));
}

bool isTornJournal(std::size_t fileSize) { return fileSize % journalRecordSize != 0; }

}  // namespace zelvreg
