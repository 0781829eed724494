#include "repair/RepairTable.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
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
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows nt\\currentversion\\fonts"),
     location},
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows\\currentversion\\fonts"),
     location},
};
constexpr RepairStep sharedDlls[] = {
    {Step::DeleteValue, "HKLM",
     fixed("Software\\Microsoft\\windows nt\\currentversion\\shareddlls"), location},
    {Step::DeleteValue, "HKLM", subKey, location},
};
// The key of an application path stays: what else its routine asks for converts a root's name to a
// number, which fails before anything is called.
constexpr RepairStep applicationPaths[] = {
    {Step::DeleteValue, nullptr, subKey, badValue},
};
constexpr RepairStep helpFiles[] = {
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows nt\\help"), badValue},
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows\\help"), badValue},
};
constexpr RepairStep htmlHelpFiles[] = {
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows nt\\HTML Help"), badValue},
    {Step::DeleteValue, "HKLM", fixed("Software\\Microsoft\\windows\\HTML Help"), badValue},
};
constexpr FieldText defaultIcon{.field = Field::Location, .after = "\\defaulticon"};
constexpr RepairStep icons[] = {
    {Step::Grant, "HKCR", defaultIcon, {}},
    {Step::DeleteSubkey, "HKCR", location, fixed("defaulticon")},
    {Step::DeleteTree, "HKCR", defaultIcon, {}},
};
constexpr RepairStep fileClasses[] = {
    {Step::Grant, "HKCR", locationAsItIs, {}}, {Step::DeleteKey, "HKCR", subKey, {}},
    {Step::DeleteTree, "HKCR", subKey, {}},    {Step::DeleteByProvider, "HKCR", subKey, {}},
    {Step::DeleteIfKept, "HKCR", subKey, {}},
};
constexpr RepairStep mediaTypes[] = {
    {Step::Grant, "HKCR", locationAsItIs, {}},
    {Step::DeleteValue, nullptr, subKeyAsItIs, badValue},
};
constexpr RepairStep servers[] = {
    {Step::Grant, "HKCR", location, {}},
    {Step::DeleteKey, "HKCR", subKeyAsItIs, {}},
    {Step::DeleteValue, "HKCR", location, defaultValue},
    {Step::EmptyDefault, "HKCR", location, defaultValue},
    {Step::DeleteTree, "HKCR", location, {}},
};
// Of type libraries and of toolbox bitmaps.
constexpr RepairStep defaultValues[] = {
    {Step::DeleteValue, "HKCR", location, defaultValue},
};
constexpr RepairStep firewallRules[] = {
    {Step::DeleteValue, "HKLM",
     fixed("SYSTEM\\CurrentControlSet\\services\\SharedAccess\\Parameters\\FirewallPolicy\\"
           "FirewallRules"),
     badValue},
};
constexpr RepairStep userClasses[] = {
    {Step::DeleteValue, "HKCU", subKey, badValue},
};
constexpr RepairStep usersClasses[] = {
    {Step::DeleteValue, "HKU", subKey, badValue},
};
constexpr RepairStep machineClasses[] = {
    {Step::DeleteValue, "HKLM", subKey, badValue},
};
constexpr RepairStep snapIns[] = {
    {Step::DeleteValue, "HKLM", subKeyAsItIs, fixed("HelpTopic")},
    {Step::DeleteValue, "HKLM", subKeyAsItIs, fixed("LinkedHelpTopics")},
};
constexpr RepairStep joinedHelpFiles[] = {
    {Step::DeleteValue, "HKLM", subKeyAsItIs, badValueAsItIs},
};
constexpr FieldText helpFolder{.field = Field::SubKey, .isTrimmed = false, .after = "\\HELPDIR"};
// The tree is named by the location, which is a path: it is hardly ever a key.
constexpr RepairStep helpFolders[] = {
    {Step::Grant, "HKCR", helpFolder, {}},
    {Step::DeleteKey, "HKCR", helpFolder, {}},
    {Step::DeleteTree, "HKCR", {.field = Field::Location, .after = "\\HELPDIR"}, {}},
};
constexpr RepairStep libraryReferences[] = {
    {Step::Grant, "HKCR", subKeyAsItIs, {}},
    {Step::DeleteKey, "HKCR", subKeyAsItIs, {}},
    {Step::DeleteTree, "HKCR", subKey, {}},
};
constexpr RepairStep extensions[] = {
    {Step::Grant, "HKCU", extension, {}},      {Step::Grant, "HKCU", extension, {}},
    {Step::DeleteKey, "HKCU", extension, {}},  {Step::DeleteKey, "HKCU", extensionNt, {}},
    {Step::DeleteTree, "HKCU", extension, {}}, {Step::DeleteTree, "HKCU", extension, {}},
};
constexpr RepairStep emptyRecords[] = {
    {Step::Grant, "HKLM", subKey, {}},
    {Step::DeleteKey, "HKLM", subKey, {}},
    {Step::DeleteTree, "HKLM", subKey, {}},
};
constexpr RepairStep recordValues[] = {
    {Step::Grant, "HKLM", subKey, {}},
    {Step::DeleteValue, nullptr, subKeyAsItIs, badValue},
};
// Of startup programs and of the MUI cache.
constexpr RepairStep namedValues[] = {
    {Step::DeleteValue, nullptr, subKeyAsItIs, badValue},
};
constexpr RepairStep recentValues[] = {
    {Step::DeleteValue, "HKCU", subKeyAsItIs, badValue},
};

// --- What the findings name. ---

constexpr NamedPlace value(const char* hive, FieldText key, FieldText name,
                           Doubt doubt = Doubt::None) {
  return {
      .names = Names::Value, .hive = hive, .key = key, .below = {}, .value = name, .doubt = doubt};
}
// Of two values the scan judges the first that is not blank.
constexpr NamedPlace textualValue(FieldText key, FieldText name, Doubt doubt = Doubt::None) {
  NamedPlace place = value("HKLM", key, name, doubt);
  place.isBlankPassedOver = true;
  return place;
}
constexpr NamedPlace wholeKey(Names names, const char* hive, FieldText key) {
  return {.names = names,
          .hive = hive,
          .key = key,
          .below = {},
          .value = {},
          .doubt = names == Names::KeyOfDeadText ? Doubt::ThereByNow : Doubt::None};
}

constexpr NamedPlace namedFont[] = {
    value("HKLM", fixed("Software\\Microsoft\\windows nt\\currentversion\\fonts"), locationAsItIs),
};
// A list's row may bear the key of the other list, which the scan walks behind it.
constexpr NamedPlace namedSharedDll[] = {
    value("HKLM", subKeyAsItIs, locationAsItIs),
    value("HKLM", fixed(scannedKeys::sharedDlls), locationAsItIs),
    value("HKLM", fixed(scannedKeys::sharedDlls32), locationAsItIs),
};
constexpr NamedPlace namedValue[] = {value(nullptr, subKeyAsItIs, badValueAsItIs)};
// A value whose own text was judged.
constexpr NamedPlace namedReference[] = {
    value(nullptr, subKeyAsItIs, badValueAsItIs, Doubt::ThereByNow),
};
constexpr NamedPlace namedProgram[] = {{.names = Names::Value,
                                        .hive = nullptr,
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
    wholeKey(Names::KeyOfDeadText, "HKCR",
             {.field = Field::Location, .isTrimmed = false, .after = "\\defaulticon"}),
};
constexpr NamedPlace namedClassKey[] = {
    wholeKey(Names::KeyOfDeadText, nullptr, subKeyAsItIs),
};
constexpr NamedPlace namedEmptyKey[] = {wholeKey(Names::EmptyKey, nullptr, subKeyAsItIs)};
constexpr NamedPlace namedDefault[] = {value("HKCR", locationAsItIs, defaultValue)};
constexpr NamedPlace namedRule[] = {
    value(nullptr, subKeyAsItIs, badValueAsItIs, Doubt::RuleBefore),
};
constexpr NamedPlace namedValueOfUsers[] = {
    value(nullptr, subKeyAsItIs, badValueAsItIs, Doubt::OthersVariables),
};
constexpr NamedPlace namedHelpFolder[] = {
    wholeKey(Names::KeyOfDeadText, nullptr, helpFolder),
};
constexpr NamedPlace namedExtension[] = {
    wholeKey(Names::EmptyKey, "HKCU",
             {.before = fileExtensions, .field = Field::BadValue, .isTrimmed = false}),
    wholeKey(Names::EmptyKey, "HKCU",
             {.before = fileExtensionsNt, .field = Field::BadValue, .isTrimmed = false}),
};

// A list of application paths is named by its row, and the program's key by the bad value.
bool isApplicationPath(const Form42& form, std::size_t row) {
  return lowerCase(form.View2.text(row, subKeyColumn)).ends_with("\\currentversion\\app paths");
}

// A command's key with neither a text nor a value.
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

std::string shortRootName(const Form42& form, std::size_t row, int code,
                          const std::string& before) {
  const std::string& root = form.View2.text(row, rootNameColumn);
  constexpr int mediaType = 771;
  if (code == mediaType) {
    return root == "HKEY_CLASSES_ROOT" ? "HKCR" : before;
  }
  return root == "HKEY_LOCAL_MACHINE" ? "HKLM" : root == "HKEY_CURRENT_USER" ? "HKCU" : before;
}

bool isOfKind(const Form42& form, std::size_t row, int code) {
  return leadingNumber(form.View2.text(row, kindCodeColumn)) == code;
}

}  // namespace zelvreg
