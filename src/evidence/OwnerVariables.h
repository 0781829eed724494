// Environment variables as those see them whom an entry of the registry is for: the user that it
// belongs to, and programs of its view.
#ifndef ZELVREG_EVIDENCE_OWNER_VARIABLES_H
#define ZELVREG_EVIDENCE_OWNER_VARIABLES_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "evidence/TruePlaces.h"

namespace zelvreg {

// The longest text that the system's calls expand, in characters.
inline constexpr std::size_t longestText = 32767;

// The computer's own variables, below HKEY_LOCAL_MACHINE.
inline constexpr const char16_t* computersVariables =
    u"SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";

enum class ProgramView : std::uint8_t { Bits64, Bits32 };

// Whether a variable has the same value for every user of a computer; by its name in any case.
bool isCommonVariable(std::string_view name);

struct ExpandedText {
  std::string text;
  bool isComplete = true;         // every variable in it was known
  bool hasUsersVariable = false;  // one of them may have another value for another user
};

class OwnerVariables {
 public:
  // The key below HKEY_USERS of the user that a key belongs to; empty for the current user. What is
  // the computer's is used by the current user as well.
  std::u16string ownerOf(const TruePlace& key);

  // A text with its variables expanded, as Windows does it: a name that is not known stays as it
  // is. The values of variables are expanded too, some levels deep.
  ExpandedText expand(std::string_view text, const std::u16string& owner, ProgramView view);

  // One variable; std::nullopt if it is not known.
  std::optional<std::string> value(std::string_view name, const std::u16string& owner,
                                   ProgramView view);

  // Whether the owner has given a drive's letter to a share, which others need not have there.
  bool mapsDrive(char letter, const std::u16string& owner);

 private:
  using Values = std::map<std::string, std::string, std::less<>>;  // by name in lower case

  const Values& valuesOf(HiveHandle root, const std::u16string& key);
  bool isUsers(std::string_view name);
  const Values& profileOf(const std::u16string& owner);
  std::optional<std::string> ownValue(const std::string& lowerName, const std::u16string& owner);
  // Values may name each other, also in a circle, so there is an end to what is expanded.
  struct Expansion {
    ExpandedText result;
    int variablesLeft;
  };
  void expandInto(Expansion& expansion, std::string_view text, const std::u16string& owner,
                  ProgramView view, int depth);

  std::optional<std::u16string> currentUser;             // looked up when first asked for
  std::map<std::u16string, Values, NameOrder> keys;      // by the full path of the key
  std::map<std::u16string, Values, NameOrder> profiles;  // by owner
  std::map<std::u16string, std::string> mapped;          // letters in lower case, by owner
};

}  // namespace zelvreg

#endif
