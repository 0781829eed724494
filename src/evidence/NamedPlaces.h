// What the finding of each kind names in the registry, as data: the second look reads it there, and
// a repair takes no more than that.
#ifndef ZELVREG_EVIDENCE_NAMED_PLACES_H
#define ZELVREG_EVIDENCE_NAMED_PLACES_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// A text with a field of the row in it.
enum class Field : std::uint8_t { None, Location, BadValue, SubKey };
struct FieldText {
  const char* before = "";
  Field field = Field::None;
  bool isTrimmed = true;
  const char* after = "";
};

// The fields of a row, trimmed or as they are, and a text without any.
namespace rowFields {
inline constexpr FieldText location{.field = Field::Location};
inline constexpr FieldText badValue{.field = Field::BadValue};
inline constexpr FieldText subKey{.field = Field::SubKey};
inline constexpr FieldText subKeyAsItIs{.field = Field::SubKey, .isTrimmed = false};
inline constexpr FieldText badValueAsItIs{.field = Field::BadValue, .isTrimmed = false};
inline constexpr FieldText locationAsItIs{.field = Field::Location, .isTrimmed = false};
inline constexpr FieldText defaultValue{};
// The key of a type library's help folder.
inline constexpr FieldText helpFolder{
    .field = Field::SubKey, .isTrimmed = false, .after = "\\HELPDIR"};
constexpr FieldText fixed(const char* text) { return {.before = text}; }

// Above the name of an extension, in both spellings of the list.
inline constexpr const char* fileExtensions =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\";
inline constexpr const char* fileExtensionsNt =
    "Software\\Microsoft\\Windows nt\\CurrentVersion\\Explorer\\FileExts\\";
}  // namespace rowFields

// Instead of a root: the one that the row names.
inline constexpr HiveHandle rowsRoot = HiveHandle::Unknown;

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

// What row `row` of View2 may name, in order; none for a code without a repair.
NamedPlaces namedPlaces(const Form42& form, std::size_t row, int code);

// The text for row `row` of View2.
std::string textFor(const Form42& form, std::size_t row, const FieldText& text);

// The root that the row names; Unknown for any other text.
HiveHandle rootOfRow(const Form42& form, std::size_t row);

// Whether a row is of this kind: its code is compared as a number.
bool isOfKind(const Form42& form, std::size_t row, int code);

}  // namespace zelvreg

#endif
