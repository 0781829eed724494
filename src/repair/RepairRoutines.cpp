#include "repair/RepairRoutines.h"

#include <windows.h>

#include <cstdint>
#include <initializer_list>
#include <limits>

#include "repair/RepairSteps.h"
#include "repair/RepairTable.h"

namespace zelvreg {
namespace {

// What the class scanner of the current user would have its rows repaired by.
constexpr RepairStep userClassSteps[] = {
    {Step::DeleteValue, "HKCU", {.field = Field::SubKey}, {.field = Field::BadValue}},
};
constexpr RepairKind userClasses{11, userClassSteps};

std::int64_t rowCount(const Form42& form) { return static_cast<std::int64_t>(form.View2.count()); }

// A row that is not there is passed over.
void repairRow(Form42& form, const RepairKind& kind, std::int64_t index, std::string& shortRoot) {
  const auto row = static_cast<std::size_t>(index);
  if (index < 1 || !isOfKind(form, row, kind.code) || !form.View2.isChecked(row)) {
    return;
  }
  takeSteps(form, row, kind, shortRoot);
  form.View2.remove(row);
}

// The test for the end stands at the bottom, so that an empty list starts at 0 and goes on below
// it.
void repairKinds(Form42& form, std::initializer_list<const RepairKind*> kinds) {
  std::string shortRoot;
  std::int64_t index = rowCount(form);
  do {
    form.messages.doEvents();
    for (const RepairKind* kind : kinds) {
      repairRow(form, *kind, index, shortRoot);
    }
    --index;
  } while (index != 0);
}

void repairOnly(Form42& form, int code) { repairKinds(form, {repairKind(code)}); }

}  // namespace

void deletefirewall(Form42& form) { repairOnly(form, 11); }
void deletebitmap(Form42& form) { repairOnly(form, 10); }
void deleteclisidref2(Form42& form) { repairOnly(form, 9); }
void deleteclissidref(Form42& form) { repairOnly(form, 8); }
void deleteclissidref71(Form42& form) { repairOnly(form, 71); }
void deleteclissidref72(Form42& form) { repairOnly(form, 72); }
void deletefileext(Form42& form) { repairOnly(form, 122); }
void deleteprogref(Form42& form) { repairKinds(form, {repairKind(7), repairKind(771)}); }
void deleteiconref(Form42& form) { repairOnly(form, 6); }
void deletehelpchm(Form42& form) { repairOnly(form, 5); }
void deletehelpfiles(Form42& form) { repairOnly(form, 4); }

void deletehelpfiles2(Form42& form) {
  repairOnly(form, 55);
  repairOnly(form, 56);
}

void deletebadapppath(Form42& form) {
  std::string shortRoot;
  const std::int64_t count = rowCount(form);
  std::int64_t index = count > std::numeric_limits<std::int16_t>::max() ? 0 : count;
  do {
    form.messages.doEvents();
    repairRow(form, *repairKind(3), index, shortRoot);
    --index;
  } while (index >= 1);
}

void deleteshareddll(Form42& form) { repairOnly(form, 2); }
void deletefont(Form42& form) { repairOnly(form, 1); }
void deleteusers(Form42& form) { repairKinds(form, {&userClasses}); }
void deleteusers2(Form42& form) { repairOnly(form, 12); }
void deletemachine(Form42& form) { repairOnly(form, 13); }
void deleteuninstall(Form42& form) { repairKinds(form, {repairKind(133), repairKind(135)}); }
void deleteMRU(Form42& form) { repairOnly(form, 144); }
void deleteMRUhist(Form42& form) { repairOnly(form, 155); }
void deleteMuiCache(Form42& form) { repairOnly(form, 166); }

}  // namespace zelvreg
