#include "scan/CategoryTable.h"

#include "form/Form42.h"

namespace zelvreg {
namespace {

template <auto member>
const EntryPoint& entryPoint(const Form42& form) {
  return form.*member;
}

// Rows 14 and 15 share one caption.
constexpr std::array<Category, 16> table{{
    {"a1", "b1", "a", "font", "fonts", "Invalid Font Reference", {entryPoint<&Form42::Command1>}},
    {"a2", "b2", "b", "dll", "dlls", "Invalid Shared Dll's", {entryPoint<&Form42::Command2>}},
    {"a3",
     "b3",
     "c",
     "app",
     "app-paths",
     "Invalid Application path",
     {entryPoint<&Form42::Command5>}},
    {"a4", "b4", "d", "help", "help-files", "Invalid Help files", {entryPoint<&Form42::Command7>}},
    {"a5", "b5", "e", "icons", "icons", "Invalid Icon Reference", {entryPoint<&Form42::Command10>}},
    {"a6",
     "b6",
     "f",
     "file",
     "file-classes",
     "Invalid Files extintion",
     {entryPoint<&Form42::Command12>}},
    {"a7",
     "b7",
     "g",
     "class",
     "com-classes",
     "Invalid ClassId Configuration",
     {entryPoint<&Form42::cln71>, entryPoint<&Form42::cln7>, entryPoint<&Form42::cln72>}},
    {"a8", "b8", "h", "8", "user-classes", "Current user settings", {entryPoint<&Form42::cln8>}},
    {"a9", "b9", "i", "9", "global-classes", "Global user settings", {entryPoint<&Form42::cln9>}},
    {"a10", "b10", "j", "10", "machine-classes", "Computer settings", {entryPoint<&Form42::cln10>}},
    {"a11",
     "b11",
     "l",
     "11",
     "firewall",
     "Invalid Firewall settings",
     {entryPoint<&Form42::Command32>}},
    {"a12",
     "b12",
     "m",
     "12",
     "file-extensions",
     "Invalid File Extensions",
     {entryPoint<&Form42::fileext>}},
    {"a13",
     "b13",
     "re",
     "13",
     "uninstall",
     "Add/Remove programs",
     {entryPoint<&Form42::uninstall>, entryPoint<&Form42::uninstall32>}},
    {"a14", "b14", "ru", "14", "startup", "Startup programs", {entryPoint<&Form42::runMRU>}},
    {"a15", "b15", "mr", "15", "recent-lists", "Startup programs", {entryPoint<&Form42::MRUhist>}},
    {"a16",
     "b16",
     "mui",
     "16",
     "mui-cache",
     "Missing Mui cache reference",
     {entryPoint<&Form42::MuiCache>}},
}};

}  // namespace

std::span<const Category, 16> categories() { return table; }

const Category& categoryAt(std::size_t row) { return table[row - 1]; }

}  // namespace zelvreg
