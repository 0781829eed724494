#include "evidence/NamedPlaces.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "scan/Findings.h"
#include "scan/ScannedKeys.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

using namespace rowFields;

constexpr NamedPlace value(HiveHandle root, FieldText key, FieldText name,
                           Doubt doubt = Doubt::None) {
  return {
      .names = Names::Value, .root = root, .key = key, .below = {}, .value = name, .doubt = doubt};
}
// The scan judges the first of two values that is not blank.
constexpr NamedPlace textualValue(FieldText key, FieldText name, Doubt doubt = Doubt::None) {
  NamedPlace place = value(HiveHandle::LocalMachine, key, name, doubt);
  place.isBlankPassedOver = true;
  return place;
}
constexpr NamedPlace wholeKey(Names names, HiveHandle root, FieldText key) {
  return {.names = names,
          .root = root,
          .key = key,
          .below = {},
          .value = {},
          .doubt = names == Names::KeyOfDeadText ? Doubt::ThereByNow : Doubt::None};
}

constexpr NamedPlace namedFont[] = {
    value(HiveHandle::LocalMachine, fixed("Software\\Microsoft\\windows nt\\currentversion\\fonts"),
          locationAsItIs),
};
// A row of one list may have the key of the other one, which the scan walks after it.
constexpr NamedPlace namedSharedDll[] = {
    value(HiveHandle::LocalMachine, subKeyAsItIs, locationAsItIs),
    value(HiveHandle::LocalMachine, fixed(scannedKeys::sharedDlls), locationAsItIs),
    value(HiveHandle::LocalMachine, fixed(scannedKeys::sharedDlls32), locationAsItIs),
};
constexpr NamedPlace namedValue[] = {value(rowsRoot, subKeyAsItIs, badValueAsItIs)};
// A value whose own text was judged.
constexpr NamedPlace namedReference[] = {
    value(rowsRoot, subKeyAsItIs, badValueAsItIs, Doubt::ThereByNow),
};
constexpr NamedPlace namedProgram[] = {{.names = Names::Value,
                                        .root = rowsRoot,
                                        .key = subKeyAsItIs,
                                        .below = badValueAsItIs,
                                        .value = defaultValue}};
constexpr NamedPlace namedHelpFile[] = {
    textualValue(fixed(scannedKeys::help), badValueAsItIs),
    textualValue(fixed(scannedKeys::helpNt), badValueAsItIs),
};
constexpr NamedPlace namedSnapIn[] = {
    textualValue(subKeyAsItIs, fixed("HelpTopic"), Doubt::ThereByNow),
    textualValue(subKeyAsItIs, fixed("LinkedHelpTopics"), Doubt::ThereByNow),
};
constexpr NamedPlace namedIcon[] = {
    wholeKey(Names::KeyOfDeadText, HiveHandle::ClassesRoot,
             {.field = Field::Location, .isTrimmed = false, .after = "\\defaulticon"}),
};
constexpr NamedPlace namedClassKey[] = {
    wholeKey(Names::KeyOfDeadText, rowsRoot, subKeyAsItIs),
};
constexpr NamedPlace namedEmptyKey[] = {wholeKey(Names::EmptyKey, rowsRoot, subKeyAsItIs)};
constexpr NamedPlace namedDefault[] = {
    value(HiveHandle::ClassesRoot, locationAsItIs, defaultValue)};
constexpr NamedPlace namedRule[] = {
    value(rowsRoot, subKeyAsItIs, badValueAsItIs, Doubt::RuleBefore),
};
constexpr NamedPlace namedValueOfUsers[] = {
    value(rowsRoot, subKeyAsItIs, badValueAsItIs, Doubt::OthersVariables),
};
constexpr NamedPlace namedHelpFolder[] = {
    wholeKey(Names::KeyOfDeadText, rowsRoot, helpFolder),
};
constexpr NamedPlace namedExtension[] = {
    wholeKey(Names::EmptyKey, HiveHandle::CurrentUser,
             {.before = fileExtensions, .field = Field::BadValue, .isTrimmed = false}),
    wholeKey(Names::EmptyKey, HiveHandle::CurrentUser,
             {.before = fileExtensionsNt, .field = Field::BadValue, .isTrimmed = false}),
};

// The row names the list of application paths, and its bad value the key of the program.
bool isApplicationPath(const Form42& form, std::size_t row) {
  return lowerCase(form.View2.text(row, subKeyColumn)).ends_with("\\currentversion\\app paths");
}

// The key of a command with neither a text nor a value.
bool isEmptyCommand(const Form42& form, std::size_t row) {
  return form.View2.text(row, badValueColumn).empty();
}

// What the findings of one kind name; another list for other rows with the same code.
struct NamedKind {
  int code;
  NamedPlaces named;
  bool (*isOther)(const Form42& form, std::size_t row) = nullptr;
  NamedPlaces namedByOther = {};
};
constexpr std::array kinds{
    NamedKind{1, namedFont},
    NamedKind{2, namedSharedDll},
    NamedKind{3, namedReference, isApplicationPath, namedProgram},
    NamedKind{4, namedHelpFile},
    NamedKind{5, namedValue},
    NamedKind{6, namedIcon},
    NamedKind{7, namedClassKey},
    NamedKind{8, namedClassKey},
    NamedKind{9, namedDefault},
    NamedKind{10, namedDefault},
    NamedKind{11, namedRule},
    NamedKind{12, namedValueOfUsers},
    NamedKind{13, namedReference},
    NamedKind{55, namedSnapIn},
    NamedKind{56, namedValue},
    NamedKind{71, namedHelpFolder},
    NamedKind{72, namedClassKey},
    NamedKind{122, namedExtension},
    NamedKind{133, namedEmptyKey},
    NamedKind{135, namedReference},
    NamedKind{144, namedReference},
    NamedKind{155, namedValue},
    NamedKind{166, namedValue},
    NamedKind{771, namedValue, isEmptyCommand, namedEmptyKey},
};

std::size_t columnOf(Field field) {
  switch (field) {
    case Field::BadValue:
      return badValueColumn;
    case Field::SubKey:
      return subKeyColumn;
    default:
      return locationColumn;
  }
}

}  // namespace

NamedPlaces namedPlaces(const Form42& form, std::size_t row, int code) {
  const auto* kind = std::ranges::find(kinds, code, &NamedKind::code);
  if (kind == kinds.end()) {
    return {};
  }
  const bool isOther = kind->isOther != nullptr && kind->isOther(form, row);
  return isOther ? kind->namedByOther : kind->named;
}

std::string textFor(const Form42& form, std::size_t row, const FieldText& text) {
  std::string result = text.before;
  if (text.field != Field::None) {
    const std::string_view cell = form.View2.text(row, columnOf(text.field));
    result += text.isTrimmed ? trim(cell) : cell;
  }
  result += text.after;
  return result;
}

HiveHandle rootOfRow(const Form42& form, std::size_t row) {
  return GetHiveHandle(form.View2.text(row, rootNameColumn));
}

bool isOfKind(const Form42& form, std::size_t row, int code) {
  return leadingNumber(form.View2.text(row, kindCodeColumn)) == code;
}

}  // namespace zelvreg
