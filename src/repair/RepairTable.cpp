#include "repair/RepairTable.h"

#include <algorithm>
#include <array>

#include "form/Form42.h"
#include "keys/RootHandles.h"
#include "scan/Findings.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

using namespace rowFields;

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

constexpr std::array kinds{
    RepairKind{1, fonts},
    RepairKind{2, sharedDlls},
    RepairKind{3, applicationPaths},
    RepairKind{4, helpFiles},
    RepairKind{5, htmlHelpFiles},
    RepairKind{6, icons},
    RepairKind{7, fileClasses},
    RepairKind{8, servers},
    RepairKind{9, defaultValues},
    RepairKind{10, defaultValues},
    RepairKind{11, firewallRules},
    RepairKind{12, usersClasses},
    RepairKind{13, machineClasses},
    RepairKind{55, snapIns},
    RepairKind{56, joinedHelpFiles},
    RepairKind{71, helpFolders},
    RepairKind{72, libraryReferences},
    RepairKind{122, extensions},
    RepairKind{133, emptyRecords},
    RepairKind{135, recordValues},
    RepairKind{144, namedValues},
    RepairKind{155, recentValues},
    RepairKind{166, namedValues},
    RepairKind{771, mediaTypes},
};

constexpr RepairKind userClass{11, userClasses};

}  // namespace

const RepairKind* repairKind(int code) {
  const auto* found = std::ranges::find(kinds, code, &RepairKind::code);
  return found == kinds.end() ? nullptr : found;
}

const RepairKind& userClassKind() { return userClass; }

HiveHandle rootOfSteps(const Form42& form, std::size_t row, int code, HiveHandle before) {
  constexpr int mediaType = 771;
  const HiveHandle root = rootOfRow(form, row);
  const bool isKnown = code == mediaType
                           ? root == HiveHandle::ClassesRoot
                           : root == HiveHandle::LocalMachine || root == HiveHandle::CurrentUser;
  return isKnown ? root : before;
}

}  // namespace zelvreg
