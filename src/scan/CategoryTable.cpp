#include "scan/CategoryTable.h"

#include "form/Form42.h"

namespace zelvreg {
namespace {

template <auto member>
const EntryPoint& entryPoint(const Form42& form) {
  return form.*member;
}

constexpr std::array<Category, 16> table{{
    {"a1", "b1", "a", "font", "fonts", "c1", {entryPoint<&Form42::Command1>}},
    {"a2", "b2", "b", "dll", "dlls", "c2", {entryPoint<&Form42::Command2>}},
    {"a3", "b3", "c", "app", "app-paths", "c3", {entryPoint<&Form42::Command5>}},
    {"a4", "b4", "d", "help", "help-files", "c4", {entryPoint<&Form42::Command7>}},
    {"a5", "b5", "e", "icons", "icons", "c5", {entryPoint<&Form42::Command10>}},
    {"a6", "b6", "f", "file", "file-classes", "c6", {entryPoint<&Form42::Command12>}},
    {"a7",
     "b7",
     "g",
     "class",
     "com-classes",
     "c7",
     {entryPoint<&Form42::cln71>, entryPoint<&Form42::cln7>, entryPoint<&Form42::cln72>}},
    {"a8", "b8", "h", "8", "user-classes", "c8", {entryPoint<&Form42::cln8>}},
    {"a9", "b9", "i", "9", "global-classes", "c9", {entryPoint<&Form42::cln9>}},
    {"a10", "b10", "j", "10", "machine-classes", "c10", {entryPoint<&Form42::cln10>}},
    {"a11", "b11", "l", "11", "firewall", "c11", {entryPoint<&Form42::Command32>}},
    {"a12", "b12", "m", "12", "file-extensions", "c12", {entryPoint<&Form42::fileext>}},
    {"a13",
     "b13",
     "re",
     "13",
     "uninstall",
     "c13",
     {entryPoint<&Form42::uninstall>, entryPoint<&Form42::uninstall32>}},
    {"a14", "b14", "ru", "14", "startup", "c14", {entryPoint<&Form42::runMRU>}},
    {"a15", "b15", "mr", "15", "recent-lists", "c15", {entryPoint<&Form42::MRUhist>}},
    {"a16", "b16", "mui", "16", "mui-cache", "c16", {entryPoint<&Form42::MuiCache>}},
}};

}  // namespace

std::span<const Category, 16> categories() { return table; }

const Category& categoryAt(std::size_t row) { return table[row - 1]; }

}  // namespace zelvreg
