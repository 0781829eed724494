// One record of an undo journal.
#ifndef ZELVREG_FORM_JOURNAL_RECORD_H
#define ZELVREG_FORM_JOURNAL_RECORD_H

#include <string>

namespace zelvreg {

// Its fields as they stand, before they are cut or filled to their widths.
struct JournalRecord {
  std::string kind;
  std::string hive;
  std::string key;
  std::string value;
  std::string text;

  bool operator==(const JournalRecord&) const = default;
};

}  // namespace zelvreg

#endif
