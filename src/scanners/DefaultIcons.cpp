#include "scanners/DefaultIcons.h"

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"
#include "registry/View64.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/ScannedKeys.h"
#include "scanners/References.h"
#include "scanners/WorkList.h"
#include "text/Characters.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr std::size_t categoryRow = 5;

// Without the index after the file, and without quotes around all of it. `value` is a path on a
// drive, so it has at least two characters.
std::string iconFile(std::string value) {
  value.resize(std::min(value.find(','), value.size()));
  const std::string_view trimmed = trim(value);
  if (!trimmed.empty() && trimmed.front() == '"') {
    return std::string(withoutLast(trimmed.substr(1), 1));
  }
  return value;
}

void testIcon(Form42& form, ScannerRun& run, const std::string& name) {
  std::string value = GetKeyValue64(form, HiveHandle::ClassesRoot, name + "\\defaulticon", "");
  value = trim(resolvedPath(form, value));
  // Names without a drive, and resource numbers alone, are not judged.
  if (!hasDriveColon(value)) {
    return;
  }
  value = iconFile(value);
  if (FileExists(form, resolvedPath(form, value))) {
    return;
  }
  form.List2.add(value);
  addRow(form, run,
         {.location = name,
          .badValue = value,
          .kindCode = "6",
          .rootName = longName(HiveHandle::ClassesRoot),
          .subKey = "\\defaulticon",
          .iconKey = categoryAt(categoryRow).icon});
  countInTotal(form);
}

}  // namespace

void Command10(Form42& form) {
  showCaption(form, categoryRow);
  ScannerRun run{.row = nextRow(form)};
  form.List1.clear();
  form.List2.clear();
  fEnumKey(form, HiveHandle::ClassesRoot, scannedKeys::classes);
  walkEntries(form, form.List1, LastTurn::TheLast, [&](int /*index*/, const std::string& entry) {
    const std::string name(trim(entry));
    form.Label3.caption = name;
    form.Label3.refresh();
    testIcon(form, run, name);
    showFound(form, categoryRow, run);
  });
  showNothingFound(form, categoryRow, run);
  storeRowCount(form);
}

}  // namespace zelvreg
