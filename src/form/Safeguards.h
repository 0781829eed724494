// Where the program does something safer than it was made to do. All are on by default, each with a
// switch of its own.
#ifndef ZELVREG_FORM_SAFEGUARDS_H
#define ZELVREG_FORM_SAFEGUARDS_H

namespace zelvreg {

struct Safeguards {
  // A repair leaves alone what its finding does not name, and keys that hold other programs'
  // records.
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
  // After a scan only those rows are ticked whose target is surely or likely gone.
  bool careful = true;

  bool operator==(const Safeguards&) const = default;
};

// With all of them lifted the program does exactly what it was made to do.
constexpr Safeguards asDescribed() {
  return {.protects = false,
          .exportsFirst = false,
          .touches = true,
          .asksShares = true,
          .asksService = true,
          .undoesByExport = false,
          .careful = false};
}

// What a caller wants of one of them, whatever the computer's settings say.
struct SafeguardChoice {
  bool Safeguards::*safeguard;
  bool value;
  const char* option;  // the words of the command line that said so
};

}  // namespace zelvreg

#endif
