#include "support/OtherScript.h"

#include <algorithm>
#include <array>
#include <set>

#include "scan/ScannedKeys.h"
#include "text/Text.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {
namespace {

bool isSmall(char letter) { return letter >= 'a' && letter <= 'z'; }
bool isCapital(char letter) { return letter >= 'A' && letter <= 'Z'; }
bool isLetter(char letter) { return isSmall(letter) || isCapital(letter); }
bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

// Names of fixed keys, values and variables, endings of files, and what stands in a command or a
// firewall rule as a word.
constexpr std::string_view otherWords =
    "hkey classes root current user users local machine config "
    "zelvane zelvreg tuner deluxe regscan statics saveundo count "
    "apppath path defaulticon shell open edit command helpdir shellex interface "
    "inprocserver inprochandler localserver toolboxbitmap typelib progid threadingmodel "
    "win application applications extension content type database mime "
    "openwithlist openwithprogids userchoice helptopic linkedhelptopics namestring below "
    "displayname displayicon displayversion publisher uninstallstring installlocation "
    "quietuninstallstring modifypath installsource "
    "systemroot windir programfiles programw commonprogramfiles commonprogramw programdata "
    "allusersprofile userprofile appdata localappdata temp tmp username systemdrive remote "
    "system syswow sysnative program files common windows users downloads fonts help "
    "fx default html app apps action allow dir in out active true name desc protocol profile "
    "exe dll ovl ocx com bat cmd scr pif cpl sys drv msc msi vbs js wsf hta ps hlp chm cnt tlb olb "
    "cur ani ttf ttc fon otf ico url "
    "rundll http https file mailto explorer notepad server share "
    "friendlyappname applicationcompany select clsid appid wow node "
    "nt policies controlset value";

const std::set<std::string, std::less<>>& wordsThatStay() {
  static const auto* const words = [] {
    auto* all = new std::set<std::string, std::less<>>;
    const auto addWords = [all](std::string_view text) {
      std::string word;
      for (const char letter : std::string(text) + " ") {
        if (isLetter(letter)) {
          word += letter;
        } else if (!word.empty()) {
          all->insert(lowerCase(word));
          word.clear();
        }
      }
    };
    addWords(otherWords);
    for (const auto& scanned : scannedKeys::all) {
      addWords(scanned.key);
    }
    for (const char* key : scannedKeys::recentLists) {
      addWords(key);
    }
    return all;
  }();
  return *words;
}

// A letter of a drive, of a version ("v2.30"), of "(x86)" or of "S-1-5-…".
bool isMark(std::string_view word, std::string_view after) {
  if (word.size() != 1 || after.empty()) {
    return false;
  }
  return after.front() == ':' || after.starts_with("86") || after.starts_with("-1-") ||
         (word == "v" && isDigit(after.front()));
}

// "{…}" of a class identifier, with what is between its brackets.
std::size_t identifierLength(std::string_view text) {
  constexpr std::size_t size = 38;
  return text.size() >= size && text.front() == '{' && text[size - 1] == '}' ? size : 0;
}

std::vector<std::string> lettersOf(std::u32string_view characters) {
  std::vector<std::string> letters;
  for (const char32_t character : characters) {
    appendCharacter(letters.emplace_back(), character);
  }
  return letters;
}

std::u32string following(char32_t first) {
  std::u32string letters;
  for (char32_t at = 0; at < 26; ++at) {
    letters += first + at;
  }
  return letters;
}

}  // namespace

OtherScript::OtherScript(std::string scriptName, std::u32string_view smallLetters,
                         std::u32string_view capitalLetters)
    : ownName(std::move(scriptName)),
      small(lettersOf(smallLetters)),
      capital(lettersOf(capitalLetters)) {}

std::string OtherScript::letterFor(char letter) const {
  return isSmall(letter) ? small.at(static_cast<std::size_t>(letter - 'a'))
                         : capital.at(static_cast<std::size_t>(letter - 'A'));
}

std::string OtherScript::write(std::string_view text) const {
  std::string written;
  while (!text.empty()) {
    std::size_t length = identifierLength(text);
    const auto* const end = std::ranges::find_if_not(text, isLetter);
    const auto word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    if (length == 0 && !word.empty()) {
      length = word.size();
      const bool stays =
          wordsThatStay().contains(lowerCase(word)) || isMark(word, text.substr(length));
      for (const char letter : word) {
        written += stays ? std::string(1, letter) : letterFor(letter);
      }
    } else {
      length = std::max<std::size_t>(length, 1);
      written += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return written;
}

std::string OtherScript::writeCell(const std::string& text) const {
  constexpr std::array<std::string_view, 5> ownWords{"Add/Remove programs", "Bad File Reference",
                                                     "Users MRU lists", "Startup programs",
                                                     "Missing Mui cache reference"};
  return std::ranges::find(ownWords, text) == ownWords.end() ? write(text) : text;
}

const OtherScript& latinScript() {
  static const OtherScript script("Latin", following(U'a'), following(U'A'));
  return script;
}

const std::vector<OtherScript>& otherScripts() {
  constexpr std::u32string_view japanese = U"ソポー予栲欺殉深濕濬炮烟珪甜申畚畜畩疹痞痣真硤秧能表";
  constexpr std::u32string_view simplified =
      U"亅耓耚耛耝肹肻胅胇脅脇脈腫腬腯腲膡膢膤臶臷臸臹舺舼舽";
  constexpr std::u32string_view traditional =
      U"功會烻焎燡燨燱牪牻牼牾狋狖狘矄矱矹矻矼砝破砸礝育蓋許";
  constexpr std::u32string_view korean = U"갂긥낽늭땉랣릒밲븋쁢쌗쓕쟞쥱쩳쭺챩춃캝쾛킰톟튳폜퓈헯";
  const std::u32string hebrew = following(U'\u05D0');
  const std::u32string beyond = following(U'\U00020000');
  const std::u32string marks = following(U'\u0300');
  static const std::vector<OtherScript> scripts{
      {"Japanese", japanese, japanese},
      {"SimplifiedChinese", simplified, simplified},
      {"TraditionalChinese", traditional, traditional},
      {"Korean", korean, korean},
      {"Cyrillic", following(U'а'), following(U'А')},
      {"Hebrew", hebrew, hebrew},
      {"BeyondTheFirstPlane", beyond, beyond},
      {"CombiningMarks", marks, marks},
  };
  return scripts;
}

}  // namespace zelvreg::fixture
