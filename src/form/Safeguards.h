// Where the program departs from what it was made to do, so that nobody is harmed: safe by default,
// each with a switch of its own.
#ifndef ZELVREG_FORM_SAFEGUARDS_H
#define ZELVREG_FORM_SAFEGUARDS_H

namespace zelvreg {

struct Safeguards {
  // A repair spares what its finding does not name and keys that other programs' records lie in.
  bool protects = true;
  // A repair first exports all that it is about to delete or change, and stops when it cannot.
  bool exportsFirst = true;
  // A scan or a search sets access lists and attributes.
  bool touches = false;
  // A scan or a search opens network paths.
  bool asksShares = false;
  // The management service is asked for the names and texts of the 64-bit view.
  bool asksService = false;
  // Undo restores a repair's safety export where there is one, not its journal.
  bool undoesByExport = true;

  bool operator==(const Safeguards&) const = default;
};

// All of them lifted: the program does what it was made to do, to the letter.
constexpr Safeguards asDescribed() {
  return {.protects = false,
          .exportsFirst = false,
          .touches = true,
          .asksShares = true,
          .asksService = true,
          .undoesByExport = false};
}

// What a caller wants of one of them, whatever the computer's settings say.
struct SafeguardChoice {
  bool Safeguards::*safeguard;
  bool value;
  const char* option;  // the words of the command line that said so
};

}  // namespace zelvreg

#endif
