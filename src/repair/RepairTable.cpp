#include "repair/RepairTable.h"

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

constexpr FieldText location{.field = Field::Location};
constexpr FieldText badValue{.field = Field::BadValue};
constexpr FieldText subKey{.field = Field::SubKey};
constexpr FieldText subKeyAsItIs{.field = Field::SubKey, .isTrimmed = false};
constexpr FieldText badValueAsItIs{.field = Field::BadValue, .isTrimmed = false};
constexpr FieldText locationAsItIs{.field = Field::Location, .isTrimmed = false};
constexpr FieldText defaultValue{};

constexpr FieldText fixed(const char* text) { return {.before = text}; }

constexpr const char* fileExtensions =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\";
constexpr const char* fileExtensionsNt =
    "Software\\Microsoft\\Windows nt\\CurrentVersion\\Explorer\\FileExts\\";
constexpr FieldText extension{.before = fileExtensions, .field = Field::BadValue};
constexpr FieldText extensionNt{.before = fileExtensionsNt, .field = Field::BadValue};

constexpr RepairStep fonts[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine,
     fixed("Software\\Microsoft\\windows nt\\currentversion\\fonts"), location},
    {Step::DeleteValue, HiveHandle::LocalMachine,
     fixed("Software\\Microsoft\\windows\\currentversion\\fonts"), location},
};
constexpr RepairStep sharedDlls[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine,
     fixed("Software\\Microsoft\\windows nt\\currentversion\\shareddlls"), location},
    {Step::DeleteValue, HiveHandle::LocalMachine, subKey, location},
};
// The key of an application path stays: the other steps of its routine convert the name of a root
// to a number, which fails before any call.
constexpr RepairStep applicationPaths[] = {
    {Step::DeleteValue, rowsRoot, subKey, badValue},
};
constexpr RepairStep helpFiles[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine, fixed("Software\\Microsoft\\windows nt\\help"),
     badValue},
    {Step::DeleteValue, HiveHandle::LocalMachine, fixed("Software\\Microsoft\\windows\\help"),
     badValue},
};
constexpr RepairStep htmlHelpFiles[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine,
     fixed("Software\\Microsoft\\windows nt\\HTML Help"), badValue},
    {Step::DeleteValue, HiveHandle::LocalMachine, fixed("Software\\Microsoft\\windows\\HTML Help"),
     badValue},
};
constexpr FieldText defaultIcon{.field = Field::Location, .after = "\\defaulticon"};
constexpr RepairStep icons[] = {
    {Step::Grant, HiveHandle::ClassesRoot, defaultIcon, {}},
    {Step::DeleteSubkey, HiveHandle::ClassesRoot, location, fixed("defaulticon")},
    {Step::DeleteTree, HiveHandle::ClassesRoot, defaultIcon, {}},
};
constexpr RepairStep fileClasses[] = {
    {Step::Grant, HiveHandle::ClassesRoot, locationAsItIs, {}},
    {Step::DeleteKey, HiveHandle::ClassesRoot, subKey, {}},
    {Step::DeleteTree, HiveHandle::ClassesRoot, subKey, {}},
    {Step::DeleteByProvider, HiveHandle::ClassesRoot, subKey, {}},
    {Step::DeleteIfKept, HiveHandle::ClassesRoot, subKey, {}},
};
constexpr RepairStep mediaTypes[] = {
    {Step::Grant, HiveHandle::ClassesRoot, locationAsItIs, {}},
    {Step::DeleteValue, rowsRoot, subKeyAsItIs, badValue},
};
constexpr RepairStep servers[] = {
    {Step::Grant, HiveHandle::ClassesRoot, location, {}},
    {Step::DeleteKey, HiveHandle::ClassesRoot, subKeyAsItIs, {}},
    {Step::DeleteValue, HiveHandle::ClassesRoot, location, defaultValue},
    {Step::EmptyDefault, HiveHandle::ClassesRoot, location, defaultValue},
    {Step::DeleteTree, HiveHandle::ClassesRoot, location, {}},
};
// For type libraries and toolbox bitmaps.
constexpr RepairStep defaultValues[] = {
    {Step::DeleteValue, HiveHandle::ClassesRoot, location, defaultValue},
};
constexpr RepairStep firewallRules[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine,
     fixed("SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\"
           "FirewallRules"),
     badValue},
};
constexpr RepairStep userClasses[] = {
    {Step::DeleteValue, HiveHandle::CurrentUser, subKey, badValue},
};
constexpr RepairStep usersClasses[] = {
    {Step::DeleteValue, HiveHandle::Users, subKey, badValue},
};
constexpr RepairStep machineClasses[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine, subKey, badValue},
};
constexpr RepairStep snapIns[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine, subKeyAsItIs, fixed("HelpTopic")},
    {Step::DeleteValue, HiveHandle::LocalMachine, subKeyAsItIs, fixed("LinkedHelpTopics")},
};
constexpr RepairStep joinedHelpFiles[] = {
    {Step::DeleteValue, HiveHandle::LocalMachine, subKeyAsItIs, badValueAsItIs},
};
constexpr FieldText helpFolder{.field = Field::SubKey, .isTrimmed = false, .after = "\\HELPDIR"};
// The tree is named by the location, which is a path of a file and rarely that of a key.
constexpr RepairStep helpFolders[] = {
    {Step::Grant, HiveHandle::ClassesRoot, helpFolder, {}},
    {Step::DeleteKey, HiveHandle::ClassesRoot, helpFolder, {}},
    {Step::DeleteTree,
     HiveHandle::ClassesRoot,
     {.field = Field::Location, .after = "\\HELPDIR"},
     {}},
};
constexpr RepairStep libraryReferences[] = {
    {Step::Grant, HiveHandle::ClassesRoot, subKeyAsItIs, {}},
    {Step::DeleteKey, HiveHandle::ClassesRoot, subKeyAsItIs, {}},
    {Step::DeleteTree, HiveHandle::ClassesRoot, subKey, {}},
};
constexpr RepairStep extensions[] = {
    {Step::Grant, HiveHandle::CurrentUser, extension, {}},
    {Step::Grant, HiveHandle::CurrentUser, extension, {}},
    {Step::DeleteKey, HiveHandle::CurrentUser, extension, {}},
    {Step::DeleteKey, HiveHandle::CurrentUser, extensionNt, {}},
    {Step::DeleteTree, HiveHandle::CurrentUser, extension, {}},
    {Step::DeleteTree, HiveHandle::CurrentUser, extension, {}},
};
constexpr RepairStep emptyRecords[] = {
    {Step::Grant, HiveHandle::LocalMachine, subKey, {}},
    {Step::DeleteKey, HiveHandle::LocalMachine, subKey, {}},
    {Step::DeleteTree, HiveHandle::LocalMachine, subKey, {}},
};
constexpr RepairStep recordValues[] = {
    {Step::Grant, HiveHandle::LocalMachine, subKey, {}},
    {Step::DeleteValue, rowsRoot, subKeyAsItIs, badValue},
};
// For startup programs and the MUI cache.
constexpr RepairStep namedValues[] = {
    {Step::DeleteValue, rowsRoot, subKeyAsItIs, badValue},
};
constexpr RepairStep recentValues[] = {
    {Step::DeleteValue, HiveHandle::CurrentUser, subKeyAsItIs, badValue},
};

// --- What the findings name. ---

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

constexpr std::array kinds{
    RepairKind{1, fonts, namedFont},
    RepairKind{2, sharedDlls, namedSharedDll},
    RepairKind{3, applicationPaths, namedReference, isApplicationPath, namedProgram},
    RepairKind{4, helpFiles, namedHelpFile},
    RepairKind{5, htmlHelpFiles, namedValue},
    RepairKind{6, icons, namedIcon},
    RepairKind{7, fileClasses, namedClassKey},
    RepairKind{8, servers, namedClassKey},
    RepairKind{9, defaultValues, namedDefault},
    RepairKind{10, defaultValues, namedDefault},
    RepairKind{11, firewallRules, namedRule},
    RepairKind{12, usersClasses, namedValueOfUsers},
    RepairKind{13, machineClasses, namedReference},
    RepairKind{55, snapIns, namedSnapIn},
    RepairKind{56, joinedHelpFiles, namedValue},
    RepairKind{71, helpFolders, namedHelpFolder},
    RepairKind{72, libraryReferences, namedClassKey},
    RepairKind{122, extensions, namedExtension},
    RepairKind{133, emptyRecords, namedEmptyKey},
    RepairKind{135, recordValues, namedReference},
    RepairKind{144, namedValues, namedReference},
    RepairKind{155, recentValues, namedValue},
    RepairKind{166, namedValues, namedValue},
    RepairKind{771, mediaTypes, namedValue, isEmptyCommand, namedEmptyKey},
};

constexpr RepairKind userClass{11, userClasses, namedReference};

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

const RepairKind* repairKind(int code) {
  const auto* found = std::ranges::find(kinds, code, &RepairKind::code);
  return found == kinds.end() ? nullptr : found;
}

const RepairKind& userClassKind() { return userClass; }

NamedPlaces namedPlaces(const Form42& form, std::size_t row, const RepairKind& kind) {
  const bool isOther = kind.isOther != nullptr && kind.isOther(form, row);
  return isOther ? kind.namedByOther : kind.named;
}

std::string textFor(const Form42& form, std::size_t row, const FieldText& text) {
  std::string result = text.before;
  if (text.field != Field::None) {
    const std::string_view cell = form.View2.text(row, columnOf(text.field));
    result += text.isTrimmed ? trim(cell) : cell;
  }
  return result + text.after;
}

HiveHandle rootOfRow(const Form42& form, std::size_t row) {
  return GetHiveHandle(form.View2.text(row, rootNameColumn));
}

HiveHandle rootOfSteps(const Form42& form, std::size_t row, int code, HiveHandle before) {
  constexpr int mediaType = 771;
  const HiveHandle root = rootOfRow(form, row);
  const bool isKnown = code == mediaType
                           ? root == HiveHandle::ClassesRoot
                           : root == HiveHandle::LocalMachine || root == HiveHandle::CurrentUser;
  return isKnown ? root : before;
}

bool isOfKind(const Form42& form, std::size_t row, int code) {
  return leadingNumber(form.View2.text(row, kindCodeColumn)) == code;
}

}  // namespace zelvreg
