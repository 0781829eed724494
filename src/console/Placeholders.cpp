#include "console/Placeholders.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "console/Completions.h"
#include "console/Installation.h"
#include "scan/CategoryTable.h"
#include "text/Text.h"

namespace zelvreg::console {
namespace {

std::vector<std::string> categoryWords() {
  std::vector<std::string> words;
  for (const Category& category : categories()) {
    words.emplace_back(category.optionName);
  }
  return words;
}

std::vector<std::string> languageWords() { return languageTags(filesIn(languageFolder())); }

std::vector<std::string> noWords() { return {}; }

struct Placeholder {
  std::string_view name;
  Offered kind;
  std::vector<std::string> (*words)() = noWords;
};

constexpr std::array placeholders{
    Placeholder{"CODES", Offered::Nothing},
    Placeholder{"COMMAND", Offered::Nothing},
    Placeholder{"DIR", Offered::Folders},
    Placeholder{"FILE", Offered::Files},
    Placeholder{"KEY", Offered::Nothing},
    Placeholder{"LETTER=DIR", Offered::Drive},
    Placeholder{"LIST", Offered::Files},
    Placeholder{"N", Offered::Nothing},
    Placeholder{"NAME", Offered::Nothing},
    Placeholder{"NAMES", Offered::List, categoryWords},
    Placeholder{"NEW.qcow2", Offered::Files},
    Placeholder{"RESULT", Offered::Files},
    Placeholder{"RESULT.json", Offered::Files},
    Placeholder{"ROOT", Offered::Folders},
    Placeholder{"SECONDS", Offered::Nothing},
    Placeholder{"SHELL", Offered::Words, completedShells},
    Placeholder{"TAG", Offered::Words, languageWords},
    Placeholder{"TEXT", Offered::Nothing},
    Placeholder{"TIME", Offered::Nothing},
};

}  // namespace

std::optional<Offer> offerFor(const std::string& placeholder) {
  const auto parts = split(placeholder, "|");
  Offer offer;
  for (const std::string_view part : parts) {
    const auto* const known = std::ranges::find(placeholders, part, &Placeholder::name);
    if (known == placeholders.end()) {
      if (parts.size() == 1 && part != lowerCase(part)) {
        return std::nullopt;
      }
      offer.kind = Offered::Words;
      offer.words.emplace_back(part);
    } else if (parts.size() == 1) {
      return Offer{.kind = known->kind, .words = known->words()};
    }
  }
  return parts.empty() ? std::nullopt : std::optional(offer);
}

}  // namespace zelvreg::console
