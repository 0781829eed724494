#include "repair/RepairRoutines.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "form/Form42.h"
#include "repair/RepairSteps.h"
#include "repair/RepairTable.h"

namespace zelvreg {
namespace {

std::int64_t rowCount(const Form42& form) { return static_cast<std::int64_t>(form.View2.count()); }

// A row that does not exist is skipped.
void repairRow(Form42& form, const RepairKind& kind, std::int64_t index, HiveHandle& root) {
  const auto row = static_cast<std::size_t>(index);
  if (index < 1 || !isOfKind(form, row, kind.code) || !form.View2.isChecked(row)) {
    return;
  }
  const bool isGone = takeSteps(form, row, kind, root);
  if (isGone || !form.safeguards.protects) {
    form.View2.remove(row);
  } else {
    form.View2.setChecked(row, false);
  }
}

// The test for the end is at the bottom, so that the loop runs once for an empty list.
void repairKinds(Form42& form, std::initializer_list<const RepairKind*> kinds) {
  HiveHandle root = HiveHandle::Unknown;
  std::int64_t index = rowCount(form);
  do {
    form.messages.doEvents();
    for (const RepairKind* kind : kinds) {
      repairRow(form, *kind, index, root);
    }
    --index;
  } while (index > 0);
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
  HiveHandle root = HiveHandle::Unknown;
  const std::int64_t count = rowCount(form);
  std::int64_t index = count > std::numeric_limits<std::int16_t>::max() ? 0 : count;
  do {
    form.messages.doEvents();
    repairRow(form, *repairKind(3), index, root);
    --index;
  } while (index >= 1);
}

void deleteshareddll(Form42& form) { repairOnly(form, 2); }
void deletefont(Form42& form) { repairOnly(form, 1); }
void deleteusers(Form42& form) { repairKinds(form, {&userClassKind()}); }
void deleteusers2(Form42& form) { repairOnly(form, 12); }
void deletemachine(Form42& form) { repairOnly(form, 13); }
void deleteuninstall(Form42& form) { repairKinds(form, {repairKind(133), repairKind(135)}); }
void deleteMRU(Form42& form) { repairOnly(form, 144); }
void deleteMRUhist(Form42& form) { repairOnly(form, 155); }
void deleteMuiCache(Form42& form) { repairOnly(form, 166); }

namespace {

template <int... codes>
constexpr std::array<int, sizeof...(codes)> walkFor{codes...};

// One walk for each list of codes.
template <const auto&... walks>
constexpr std::array<std::span<const int>, sizeof...(walks)> walksOf{walks...};

constexpr std::array<RepairRoutine, 22> cascade{{
    {deletefirewall, walksOf<walkFor<11>>},
    {deletebitmap, walksOf<walkFor<10>>},
    {deleteclisidref2, walksOf<walkFor<9>>},
    {deleteclissidref, walksOf<walkFor<8>>},
    {deleteclissidref71, walksOf<walkFor<71>>},
    {deleteclissidref72, walksOf<walkFor<72>>},
    {deletefileext, walksOf<walkFor<122>>},
    {deleteprogref, walksOf<walkFor<7, 771>>},
    {deleteiconref, walksOf<walkFor<6>>},
    {deletehelpchm, walksOf<walkFor<5>>},
    {deletehelpfiles, walksOf<walkFor<4>>},
    {deletehelpfiles2, walksOf<walkFor<55>, walkFor<56>>},
    {deletebadapppath, walksOf<walkFor<3>>},
    {deleteshareddll, walksOf<walkFor<2>>},
    {deletefont, walksOf<walkFor<1>>},
    {deleteusers, walksOf<walkFor<11>>},
    {deleteusers2, walksOf<walkFor<12>>},
    {deletemachine, walksOf<walkFor<13>>},
    {deleteuninstall, walksOf<walkFor<133, 135>>},
    {deleteMRU, walksOf<walkFor<144>>},
    {deleteMRUhist, walksOf<walkFor<155>>},
    {deleteMuiCache, walksOf<walkFor<166>>},
}};

}  // namespace

std::span<const RepairRoutine> repairCascade() { return cascade; }

}  // namespace zelvreg
