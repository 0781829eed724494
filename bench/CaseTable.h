// References that are hard to judge: how they are written, and what is true of them.
//
// A text has gaps in braces:
//   {P}              the program folder of the view that the reference belongs to
//   {live}           a file below it that is there
//   {gone}, {lost}   one that is not, in a folder that is there and in one that is not
//   {tool}, {notool} the name of a file that is in every folder of `toolFolders`, and one that is
//                    in none
//   {noext}          {live} without its extension
//   {deep}           folders that make a path of more than 260 characters
#ifndef ZELVREG_BENCH_CASE_TABLE_H
#define ZELVREG_BENCH_CASE_TABLE_H

#include <cstdint>
#include <span>

#include "Labels.h"

namespace zelvreg::bench {

// Where a case can stand.
enum class Fits : std::uint8_t {
  Anywhere,
  Bits64,  // in the 64-bit view
  Bits32,  // in the 32-bit view
  OfUser,  // in the user's own registry
  OfMachine,
  Names,  // as the name of a value
};

enum class Shape : std::uint8_t {
  AsWritten,
  Slashes,  // every backslash becomes a slash
  Url,      // so it does, and a blank becomes "%20"
};

struct Case {
  const char* family;
  Truth truth;
  const char* text;
  Fits fits = Fits::Anywhere;
  Shape shape = Shape::AsWritten;
};

// Paths of files, for every kind of reference.
std::span<const Case> pathCases();
// Texts that have paths in them, for values that may hold anything.
std::span<const Case> textCases();
// Whole commands, for what starts at log-on.
std::span<const Case> commandCases();

}  // namespace zelvreg::bench

#endif
