// Who decides which safeguards are in force: a policy of the computer, then the caller's choice,
// then the settings. Otherwise they all are.
#ifndef ZELVREG_SCAN_SAFEGUARD_SOURCES_H
#define ZELVREG_SCAN_SAFEGUARD_SOURCES_H

#include <array>
#include <string>
#include <vector>

#include "form/Safeguards.h"

namespace zelvreg {

struct Form42;

// How one safeguard is lifted.
struct SafeguardRule {
  bool Safeguards::*safeguard;
  const char* setting;      // a value of the policy's key and of the settings' key
  const char* liftingText;  // any other text keeps it
  const char* keepingText;  // the one that the window writes
  const char* option;       // of the command line
  const char* effect;       // what that option does, for its help
};

inline constexpr std::array<SafeguardRule, 7> safeguardRules{{
    {&Safeguards::protects, "protect", "0", "1", "--no-protect",
     "delete keys, too, that other programs' records lie in"},
    {&Safeguards::exportsFirst, "safetyexport", "0", "1", "--no-backup",
     "repair without a safety export in the program's folder"},
    {&Safeguards::touches, "touch", "1", "0", "--touch",
     "set access lists and attributes while scanning, as a repair would need them"},
    {&Safeguards::asksShares, "shares", "1", "0", "--ask-shares",
     "ask servers for files on network paths, with the user's credentials"},
    {&Safeguards::asksService, "provider", "service", "direct", "--provider service",
     "ask the management service for the 64-bit view"},
    {&Safeguards::undoesByExport, "undo", "journal", "export", "--journal",
     "restore by the journal, as far as its five texts go, not by the safety export"},
    {&Safeguards::careful, "careful", "0", "1", "--all",
     "tick every finding, also those that cannot be decided or may be in use"},
}};
const SafeguardRule& safeguardRule(bool Safeguards::*safeguard);

// The page of the undo options has a box for each but the last two.
inline constexpr std::size_t safeguardBoxCount = safeguardRules.size() - 2;

// The setting that lifts all of them, the text that does, and its option.
inline constexpr const char* letterSetting = "letter";
inline constexpr const char* letterText = "1";
inline constexpr const char* letterOption = "--as-described";

// The value of a safeguard that is lifted.
constexpr bool liftedValue(const SafeguardRule& rule) { return asDescribed().*rule.safeguard; }

// Choices that lift one, or all.
SafeguardChoice liftingChoice(const SafeguardRule& rule);
std::vector<SafeguardChoice> choicesAsDescribed();

// Those in force now. If there are several choices for one safeguard, the first counts.
Safeguards safeguardsNow(const Form42& form);
// Puts them into force.
void decideSafeguards(Form42& form);

// One line about the first choice that contradicts a policy; empty if none does.
std::string contradictionOf(const Form42& form);

// Whether a policy has decided a safeguard, so that nobody else can; "letter" as for all.
bool isSetByPolicy(const Form42& form, const SafeguardRule& rule);
// Whether a policy keeps a safeguard, also where a suite drives the program.
bool isKeptByPolicy(const Form42& form, bool Safeguards::*safeguard);
bool isLetterSetByPolicy(const Form42& form);
// Whether a policy or a setting lifts all.
bool isLetterInForce(const Form42& form);

}  // namespace zelvreg

#endif
