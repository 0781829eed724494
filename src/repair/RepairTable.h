// What a repair does for one row of each kind, as data. The repair routines carry it out, and the
// safety export is planned by it.
#ifndef ZELVREG_REPAIR_REPAIR_TABLE_H
#define ZELVREG_REPAIR_REPAIR_TABLE_H

#include <cstdint>
#include <span>
#include <string>

#include "roots/Roots.h"

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

// A text with a field of the row in it.
enum class Field : std::uint8_t { None, Location, BadValue, SubKey };
struct FieldText {
  const char* before = "";
  Field field = Field::None;
  bool isTrimmed = true;
  const char* after = "";
};

// Instead of a root: the one that the row names.
inline constexpr HiveHandle rowsRoot = HiveHandle::Unknown;

struct RepairStep {
  Step step;
  HiveHandle root;
  FieldText key;
  FieldText value;
};

// What a finding names: the value or the key whose text was judged, in the 64-bit view.
enum class Names : std::uint8_t {
  Value,
  KeyOfDeadText,  // a key, by what its default value refers to
  EmptyKey,
};

// Why a finding may be doubtful.
enum class Doubt : std::uint8_t {
  None,
  ThereByNow,       // what the text refers to may have come back, or never have been gone
  OthersVariables,  // the same; and another user's text was judged by the variables of this one
  RuleBefore,       // a firewall rule without a path was judged by the path of the rule before it
};

// The key is `key`, then a backslash and `below` if there is one.
struct NamedPlace {
  Names names;
  HiveHandle root;
  FieldText key;
  FieldText below;
  FieldText value;
  Doubt doubt = Doubt::None;
  bool isBlankPassedOver = false;
};

// Of several places the first that exists is named; if blank ones are skipped, the first with a
// text that is not blank.
using NamedPlaces = std::span<const NamedPlace>;

struct RepairKind {
  int code;
  std::span<const RepairStep> steps;
  NamedPlaces named;
  // For other rows with the same code.
  bool (*isOther)(const Form42& form, std::size_t row) = nullptr;
  NamedPlaces namedByOther = {};
};

// The steps of a kind; null for a code that no routine handles.
const RepairKind* repairKind(int code);

// The steps for rows of the current user's class scanner. They have the same code as firewall
// rules, whose routine takes them first.
const RepairKind& userClassKind();

// What row `row` of View2 may name, in order.
NamedPlaces namedPlaces(const Form42& form, std::size_t row, const RepairKind& kind);

// The text for row `row` of View2.
std::string textFor(const Form42& form, std::size_t row, const FieldText& text);

// The root that the row names; Unknown for any other text.
HiveHandle rootOfRow(const Form42& form, std::size_t row);

// The same for the steps of a routine, which know only the computer's root and the current user's,
// or for media types that of the classes. For any other root the result is `before`, that of the
// row before.
HiveHandle rootOfSteps(const Form42& form, std::size_t row, int code, HiveHandle before);

// Whether a row is of this kind: its code is compared as a number.
bool isOfKind(const Form42& form, std::size_t row, int code);

}  // namespace zelvreg

#endif
