// What a repair does for one row of each kind, as data. The repair routines carry it out, and the
// safety export is planned by it.
#ifndef ZELVREG_REPAIR_REPAIR_TABLE_H
#define ZELVREG_REPAIR_REPAIR_TABLE_H

#include <cstdint>
#include <span>
#include <string>

#include "evidence/NamedPlaces.h"

namespace zelvreg {

struct Form42;

enum class Step : std::uint8_t {
  Grant,             // GrantKeyAccess for the current user
  DeleteValue,       // fDeleteValue: 64-bit view
  DeleteSubkey,      // fDeleteKey: 64-bit view, `value` names the subkey
  DeleteKey,         // RegDeleteKeyA: the process's own view; its result is kept
  DeleteTree,        // DeleteRegistryTree: 64-bit view
  DeleteByProvider,  // DeleteSubkeys2
  DeleteIfKept,      // SHDeleteKeyA, if the kept result is not 0: the process's own view
  EmptyDefault,      // SetRegistryValue of the empty text as the default value: 32-bit view
};

struct RepairStep {
  Step step;
  HiveHandle root;
  FieldText key;
  FieldText value;
};

struct RepairKind {
  int code;
  std::span<const RepairStep> steps;
};

// The steps of a kind; null for a code that no routine handles.
const RepairKind* repairKind(int code);

// The steps for rows of the current user's class scanner. They have the same code as firewall
// rules, whose routine takes them first.
const RepairKind& userClassKind();

// The root that a row names, for the steps of a routine, which know only the computer's root and
// the current user's, or for media types that of the classes. For any other root the result is
// `before`, that of the row before.
HiveHandle rootOfSteps(const Form42& form, std::size_t row, int code, HiveHandle before);

}  // namespace zelvreg

#endif
