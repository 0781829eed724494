#include "fleet/Pseudonyms.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "fleet/Merging.h"
#include "runtime/Sha256.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::fleet {
namespace {

using Characters = std::u32string;
using CharactersView = std::u32string_view;

// Accounts that every computer has tell nobody's name.
constexpr std::array<std::string_view, 9> everywhere{
    "public",       "default",        "default user",  "all users", "defaultuser0",
    "localservice", "networkservice", "systemprofile", "system"};

// Nor does a variable.
bool isSomebody(const std::string& low) {
  return !low.empty() && !low.starts_with('%') &&
         std::ranges::find(everywhere, low) == everywhere.end();
}

// The folders of profiles lie in one of these.
constexpr std::array<CharactersView, 2> profileFolders{U"users", U"documents and settings"};

// SIDs of accounts that somebody made: of a computer or a domain, and of a directory in a cloud.
constexpr std::array<CharactersView, 2> sidStarts{U"s-1-5-21-", U"s-1-12-1-"};

bool isOfWord(char32_t code) {
  return code >= 0x80 || (code >= U'0' && code <= U'9') || (code >= U'a' && code <= U'z');
}

bool isSeparator(char32_t code) { return code == U'\\' || code == U'/'; }

Characters lowCharacters(const std::string& text) { return charactersOf(lowerCase(text)); }

std::string textOf(CharactersView characters) {
  std::string text;
  for (const char32_t code : characters) {
    appendCharacter(text, code);
  }
  return text;
}

// What stands before a character that is none of a word begins one.
bool beginsWord(CharactersView low, std::size_t at) {
  return at == 0 || !isOfWord(low[at - 1]) || !isOfWord(low[at]);
}

// From its start on, the letters and digits, or one other character.
CharactersView wordAt(CharactersView low, std::size_t at) {
  std::size_t end = at;
  while (end < low.size() && isOfWord(low[end])) {
    ++end;
  }
  return low.substr(at, std::max<std::size_t>(end - at, 1));
}

// How many characters a SID takes that begins here; 0 if none does.
std::size_t sizeOfSid(CharactersView low, std::size_t at) {
  const bool isSid = std::ranges::any_of(
      sidStarts, [&](CharactersView start) { return low.substr(at).starts_with(start); });
  if (!isSid) {
    return 0;
  }
  const std::size_t end = std::min(low.find_first_not_of(U"0123456789-", at + 1), low.size());
  return low.substr(0, end).find_last_not_of(U'-') + 1 - at;
}

std::string stemOf(const std::string& file) { return file.substr(0, file.find_last_of('.')); }
std::string endingOf(const std::string& file) { return file.substr(stemOf(file).size()); }

}  // namespace

void Pseudonyms::addUser(const std::string& name, const std::string& sid) {
  const std::string low = lowerCase(name);
  if (isSomebody(low)) {
    users[low];
  }
  const Characters lowSid = lowCharacters(sid);
  if (sizeOfSid(lowSid, 0) == lowSid.size() && !lowSid.empty()) {
    std::string& owner = nameOfSid[textOf(lowSid)];
    // The first in the alphabet, whichever result is read first.
    owner = isSomebody(low) && (owner.empty() || low < owner) ? low : owner;
  }
}

// Users may have profiles or SIDs that no result lists.
void Pseudonyms::gatherFrom(const std::string& text) {
  const Characters characters = lowCharacters(text);
  const CharactersView low = characters;
  for (std::size_t at = 0; at < low.size(); ++at) {
    if (!beginsWord(low, at)) {
      continue;
    }
    if (const std::size_t size = sizeOfSid(low, at); size > 0) {
      nameOfSid[textOf(low.substr(at, size))];
    }
    for (const CharactersView parent : profileFolders) {
      const std::size_t start = at + parent.size() + 1;
      if (low.substr(at).starts_with(parent) && start < low.size() && isSeparator(low[start - 1]) &&
          (at == 0 || isSeparator(low[at - 1]))) {
        const std::string folder = textOf(
            low.substr(start, std::min(low.find_first_of(U"\\/\"", start), low.size()) - start));
        if (isSomebody(folder)) {
          folders.insert(folder);
        }
      }
    }
  }
}

void Pseudonyms::gather(const Merged& merged) {
  const auto addFile = [this](const std::string& file, const std::string& computer) {
    const std::string stem = lowerCase(stemOf(file));
    const std::string name = computer.empty() ? stem : lowerCase(computer);
    computers[name];
    files.try_emplace(stem, name);
  };
  for (const ComputerSummary& computer : merged.computers) {
    addFile(computer.file, computer.name);
    std::ranges::for_each(computer.warnings, [this](const auto& line) { gatherFrom(line); });
    std::ranges::for_each(computer.implausible, [this](const auto& line) { gatherFrom(line); });
  }
  for (const Superseded& one : merged.superseded) {
    addFile(one.file, one.name);
    addFile(one.newerFile, one.name);
  }
  for (const Failure& failure : merged.failures) {
    addFile(failure.file, "");
    gatherFrom(failure.why);
  }
  for (const ReferenceSummary& reference : merged.references) {
    gatherFrom(reference.badValue);
    gatherFrom(reference.place);
  }
}

// A second profile of a user has the name of the domain behind the user's.
std::string Pseudonyms::userOf(const std::string& folder) const {
  const std::string front = folder.substr(0, folder.find('.'));
  return !users.contains(folder) && users.contains(front) ? front : folder;
}

void Pseudonyms::numberAll() {
  for (auto& [sid, owner] : nameOfSid) {
    owner = owner.empty() ? sid : owner;
    users[owner];
  }
  for (const std::string& folder : folders) {
    users[userOf(folder)];
  }
  const auto number = [this](std::map<std::string, std::string>& names, const std::string& word) {
    std::map<std::pair<Digest, std::string>, std::string*> order;
    for (auto& [name, pseudonym] : names) {
      order[{sha256(key + word + name), name}] = &pseudonym;
    }
    std::size_t count = 0;
    for (const auto& entry : order) {
      *entry.second = word + std::to_string(++count);
    }
  };
  number(computers, "computer-");
  number(users, "user-");
  for (const auto& [name, pseudonym] : users) {
    know(name, pseudonym);
  }
  for (const std::string& folder : folders) {
    know(folder, users.at(userOf(folder)));
  }
  for (const auto& [name, pseudonym] : computers) {
    know(name, pseudonym);
  }
  for (const auto& [file, computer] : files) {
    know(file, computers.at(computer));
  }
}

void Pseudonyms::know(const std::string& name, const std::string& pseudonym) {
  const Characters low = charactersOf(name);
  if (low.empty()) {
    return;
  }
  std::vector<Pseudonym>& names = known[Characters(wordAt(low, 0))];
  const auto isLonger = [&low](const Pseudonym& one) { return one.first.size() >= low.size(); };
  const auto place = std::ranges::find_if_not(names, isLonger);
  const bool isKnown = std::ranges::find(names, low, &Pseudonym::first) != names.end();
  if (!isKnown) {
    names.insert(place, {low, pseudonym});
  }
}

std::string Pseudonyms::replaced(const std::string& text) const {
  const Characters characters = lowCharacters(text);
  const CharactersView low = characters;
  Characters exact = charactersOf(text);
  // Halves of pairs that meet become one character.
  exact = exact.size() == low.size() ? exact : characters;
  std::string result;
  for (std::size_t at = 0; at < low.size();) {
    std::size_t size = 0;
    std::string pseudonym;
    if (beginsWord(low, at)) {
      size = sizeOfSid(low, at);
      if (size > 0) {
        pseudonym = users.at(nameOfSid.at(textOf(low.substr(at, size))));
      } else if (const auto names = known.find(Characters(wordAt(low, at))); names != known.end()) {
        const auto fits = [&](const Pseudonym& name) {
          const std::size_t end = at + name.first.size();
          return low.substr(at).starts_with(name.first) &&
                 (end == low.size() || beginsWord(low, end));
        };
        const auto name = std::ranges::find_if(names->second, fits);
        if (name != names->second.end()) {
          size = name->first.size();
          pseudonym = name->second;
        }
      }
    }
    if (size == 0) {
      appendCharacter(result, exact[at]);
      ++at;
    } else {
      result += pseudonym;
      at += size;
    }
  }
  return result;
}

std::string Pseudonyms::ofComputer(const std::string& name, const std::string& file) const {
  return computers.at(name.empty() ? files.at(lowerCase(stemOf(file))) : lowerCase(name));
}

void Pseudonyms::replaceIn(ComputerSummary& computer) const {
  const auto replace = [this](std::string& text) { text = replaced(text); };
  computer.name = ofComputer(computer.name, computer.file);
  computer.file = computer.name + endingOf(computer.file);
  computer.identity.clear();
  std::ranges::for_each(computer.warnings, replace);
  std::ranges::for_each(computer.implausible, replace);
}

void Pseudonyms::applyTo(Merged& merged) {
  gather(merged);
  numberAll();
  for (ComputerSummary& computer : merged.computers) {
    replaceIn(computer);
  }
  for (ReferenceSummary& reference : merged.references) {
    reference.badValue = replaced(reference.badValue);
    reference.place = replaced(reference.place);
  }
  for (Failure& failure : merged.failures) {
    failure.file = ofComputer("", failure.file) + endingOf(failure.file);
    failure.why = replaced(failure.why);
  }
  for (Superseded& one : merged.superseded) {
    one.name = ofComputer(one.name, one.file);
    one.file = one.name + endingOf(one.file);
    one.newerFile = one.name + endingOf(one.newerFile);
  }
  merged.isAnonymous = true;
  sortLists(merged);
}

}  // namespace zelvreg::fleet
