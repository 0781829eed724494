#include "scan/CategoryTable.h"

#include <algorithm>

#include "form/Form42.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

template <auto member>
const EntryPoint& entryPoint(const Form42& form) {
  return form.*member;
}

constexpr std::array<Category, 16> table{{
    {"a1", "Fonts", "b1", "a", "font", "fonts", "c1", {entryPoint<&Form42::Command1>}},
    {"a2", "Shared DLLs", "b2", "b", "dll", "dlls", "c2", {entryPoint<&Form42::Command2>}},
    {"a3",
     "Application paths",
     "b3",
     "c",
     "app",
     "app-paths",
     "c3",
     {entryPoint<&Form42::Command5>}},
    {"a4", "Help files", "b4", "d", "help", "help-files", "c4", {entryPoint<&Form42::Command7>}},
    {"a5", "Icons", "b5", "e", "icons", "icons", "c5", {entryPoint<&Form42::Command10>}},
    {"a6",
     "File classes",
     "b6",
     "f",
     "file",
     "file-classes",
     "c6",
     {entryPoint<&Form42::Command12>}},
    {"a7",
     "COM classes",
     "b7",
     "g",
     "class",
     "com-classes",
     "c7",
     {entryPoint<&Form42::cln71>, entryPoint<&Form42::cln7>, entryPoint<&Form42::cln72>}},
    {"a8",
     "Classes of the current user",
     "b8",
     "h",
     "8",
     "user-classes",
     "c8",
     {entryPoint<&Form42::cln8>}},
    {"a9",
     "Classes of all users",
     "b9",
     "i",
     "9",
     "global-classes",
     "c9",
     {entryPoint<&Form42::cln9>}},
    {"a10",
     "Classes of the computer",
     "b10",
     "j",
     "10",
     "machine-classes",
     "c10",
     {entryPoint<&Form42::cln10>}},
    {"a11",
     "Firewall rules",
     "b11",
     "l",
     "11",
     "firewall",
     "c11",
     {entryPoint<&Form42::Command32>}},
    {"a12",
     "File extensions",
     "b12",
     "m",
     "12",
     "file-extensions",
     "c12",
     {entryPoint<&Form42::fileext>}},
    {"a13",
     "Installed programs",
     "b13",
     "re",
     "13",
     "uninstall",
     "c13",
     {entryPoint<&Form42::uninstall>, entryPoint<&Form42::uninstall32>}},
    {"a14", "Startup programs", "b14", "ru", "14", "startup", "c14", {entryPoint<&Form42::runMRU>}},
    {"a15",
     "Recent-use lists",
     "b15",
     "mr",
     "15",
     "recent-lists",
     "c15",
     {entryPoint<&Form42::MRUhist>}},
    {"a16", "MUI cache", "b16", "mui", "16", "mui-cache", "c16", {entryPoint<&Form42::MuiCache>}},
}};

}  // namespace

std::span<const Category, 16> categories() { return table; }

const Category& categoryAt(std::size_t row) { return table[row - 1]; }

std::optional<std::size_t> categoryNamed(std::string_view name) {
  const std::string wanted = lowerCase(trim(name));
  const auto* found = std::ranges::find_if(table, [&wanted](const Category& category) {
    return wanted == category.valueName || wanted == category.optionName;
  });
  return found == table.end() ? std::nullopt
                              : std::optional<std::size_t>(found - table.begin() + 1);
}

}  // namespace zelvreg
