// What a repair does for one row of each kind, as data: the repair routines carry it out, and the
// safety export reads from it what will go.
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

// A text made from a field of the row.
enum class Field : std::uint8_t { None, Location, BadValue, SubKey };
struct FieldText {
  const char* before = "";
  Field field = Field::None;
  bool isTrimmed = true;
  const char* after = "";
};

// In the place of a root: the one that the row bears.
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

// What else must hold for a finding to be believed.
enum class Doubt : std::uint8_t {
  None,
  ThereByNow,       // what the text refers to has come back since, or was there all the time
  OthersVariables,  // besides, a text of another user's was judged by the variables of this one
  RuleBefore,       // a firewall rule without a path was judged by that of the rule before it
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

// The first of several places is named that is there; where a blank one is passed over, the first
// with a text that is not.
using NamedPlaces = std::span<const NamedPlace>;

struct RepairKind {
  int code;
  std::span<const RepairStep> steps;
  NamedPlaces named;
  // For rows of another make that share the code.
  bool (*isOther)(const Form42& form, std::size_t row) = nullptr;
  NamedPlaces namedByOther = {};
};

// The actions of a kind, or none for a code that no routine handles.
const RepairKind* repairKind(int code);

// What the class scanner of the current user would have its rows repaired by. They share their code
// with firewall rules, whose routine takes them first.
const RepairKind& userClassKind();

// What row `row` of View2 may name, in order.
NamedPlaces namedPlaces(const Form42& form, std::size_t row, const RepairKind& kind);

// The text for row `row` of View2.
std::string textFor(const Form42& form, std::size_t row, const FieldText& text);

// The root whose long name the row bears; Unknown for any other text.
HiveHandle rootOfRow(const Form42& form, std::size_t row);

// The same for the steps of a routine, which know only the computer's root and the current user's,
// or that of the classes for media types. A row of another root is taken for one of `before`, which
// is that of the row before.
HiveHandle rootOfSteps(const Form42& form, std::size_t row, int code, HiveHandle before);

// Whether a row is of this kind: its code is compared as a number.
bool isOfKind(const Form42& form, std::size_t row, int code);

}  // namespace zelvreg

#endif
