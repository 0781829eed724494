#include "translation/LanguageCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "languages/Charset.h"
#include "languages/readlangfile.h"
#include "runtime/CodePageText.h"
#include "runtime/OwnText.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "translation/LanguageLines.h"
#include "translation/TextRooms.h"

namespace zelvreg {
namespace {

struct ProblemWords {
  LanguageProblem problem;
  const char* code;
  const char* sentence;
};

constexpr std::array words{
    ProblemWords{LanguageProblem::LineEnd, "line-end",
                 "the line does not end with CR LF; save the file with line ends of Windows"},
    ProblemWords{LanguageProblem::BadBytes, "bad-bytes",
                 "has bytes that are no text in the file's code page; save the file in that code "
                 "page, or in UTF-8 with a byte order mark"},
    ProblemWords{LanguageProblem::NoSection, "no-section",
                 "the section is missing, so none of its texts is found"},
    ProblemWords{LanguageProblem::NoPair, "no-pair", "the line is neither [section] nor key=text"},
    ProblemWords{LanguageProblem::UnknownKey, "unknown-key",
                 "the program has no such text in this section"},
    ProblemWords{LanguageProblem::Twice, "twice", "stands there twice; the first one counts"},
    ProblemWords{LanguageProblem::Forbidden, "forbidden",
                 "holds an equal sign or a quotation mark, which is lost"},
    ProblemWords{LanguageProblem::Missing, "missing", "has no text"},
    ProblemWords{LanguageProblem::Unwritable, "unwritable",
                 "has a character that the file's code page does not have; save the file in UTF-8"},
    ProblemWords{LanguageProblem::Values, "values",
                 "its places for values are not those of English"},
    ProblemWords{LanguageProblem::AccessKey, "access-key",
                 "its access key is that of another control of the same page"},
    ProblemWords{LanguageProblem::TooLong, "too-long", "is too long for its place in the window"},
    ProblemWords{LanguageProblem::SameAsEnglish, "same-as-english", "is the same as in English"},
};

const ProblemWords& wordsOf(LanguageProblem problem) {
  return words.at(static_cast<std::size_t>(problem));
}

// "%1" to "%9", as often as a text has them.
std::multiset<std::string> placesIn(std::string_view text) {
  std::multiset<std::string> places;
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    if (text[at] == '%' && text[at + 1] >= '1' && text[at + 1] <= '9') {
      places.emplace(text.substr(at, 2));
    }
  }
  return places;
}

// What has to be put in or left out.
std::string differenceOfPlaces(std::string_view english, std::string_view translation) {
  const std::multiset<std::string> wanted = placesIn(english);
  const std::multiset<std::string> present = placesIn(translation);
  std::vector<std::string> lost;
  std::vector<std::string> extra;
  std::ranges::set_difference(wanted, present, std::back_inserter(lost));
  std::ranges::set_difference(present, wanted, std::back_inserter(extra));
  std::string difference;
  for (const std::string& place : lost) {
    difference += (difference.empty() ? "" : ", ") + place + " is missing";
  }
  for (const std::string& place : extra) {
    difference += (difference.empty() ? "" : ", ") + place + " is too much";
  }
  return difference;
}

// The letter after the "&" of a text, in lower case; empty if it has none.
std::string accessKeyOf(const std::string& text) {
  const std::size_t mark = text.find('&');
  const bool isMark = mark != std::string::npos && mark + 1 < text.size() &&
                      text[mark + 1] != ' ' && text[mark + 1] != '&';
  return isMark ? lowerCase(firstCharacters(std::string_view(text).substr(mark + 1), 1))
                : std::string();
}

using Name = std::pair<std::string, std::string>;  // section and key, in lower case

Name nameOf(std::string_view section, std::string_view key) {
  return {lowerCase(section), lowerCase(key)};
}

class FileCheck {
 public:
  FileCheck(std::string_view bytes, int charset, const LanguageFile* englishFile)
      : lines(linesOfLanguage(bytes, codePageOfCharset(charset))),
        codePage(bytes.starts_with(utf8Mark) ? CP_UTF8 : codePageOfCharset(charset)),
        english(englishFile) {}

  std::vector<LanguageFinding> run() {
    checkLineEnds();
    for (const LanguageLine& line : lines) {
      checkLine(line);
    }
    const auto doubled = doubledAccessKeys(seenTexts);
    findings.insert(findings.end(), doubled.begin(), doubled.end());
    std::ranges::stable_sort(findings, {}, &LanguageFinding::line);
    findWhatIsMissing();
    return std::move(findings);
  }

 private:
  void checkLineEnds() {
    const auto found = std::ranges::find(lines, false, &LanguageLine::endsAsWindows);
    if (found != lines.end()) {
      findings.push_back({.problem = LanguageProblem::LineEnd, .line = found->number});
    }
  }

  void checkLine(const LanguageLine& line) {
    const auto tell = [&](LanguageProblem problem) {
      findings.push_back({.problem = problem,
                          .section = line.section,
                          .key = line.isPair ? line.key : line.text,
                          .line = line.number});
    };
    if (!line.isExact) {
      tell(LanguageProblem::BadBytes);
    }
    if (line.isHeader) {
      sections.insert(lowerCase(line.section));
    } else if (line.isPair) {
      checkPair(line, tell);
    } else if (!line.text.empty()) {
      tell(LanguageProblem::NoPair);
    }
  }

  template <class Tell>
  void checkPair(const LanguageLine& line, const Tell& tell) {
    const TranslatableText* text = findTranslatable(line.section, line.key);
    if (text == nullptr) {
      tell(LanguageProblem::UnknownKey);
      return;
    }
    if (!names.insert(nameOf(line.section, line.key)).second) {
      tell(LanguageProblem::Twice);
      return;
    }
    if (line.losesText) {
      tell(LanguageProblem::Forbidden);
    }
    seenTexts.push_back({text, line.value, line.number});
    for (LanguageFinding& finding : problemsOfText(*text, line.value, codePage)) {
      finding.line = line.number;
      findings.push_back(std::move(finding));
    }
    if (english != nullptr && !line.value.empty() && line.value == englishOf(*text, *english)) {
      tell(LanguageProblem::SameAsEnglish);
    }
  }

  // Of a section that is missing, only the section is told.
  void findWhatIsMissing() {
    std::set<std::string> told;
    for (const TranslatableText& text : translatableTexts()) {
      const bool hasSection = sections.contains(lowerCase(text.section));
      if (!hasSection && told.insert(text.section).second) {
        findings.push_back({.problem = LanguageProblem::NoSection, .section = text.section});
      }
      const bool isNeeded = english != nullptr || canBeHeld(text.english);
      if (hasSection && isNeeded && !names.contains(nameOf(text.section, text.key))) {
        findings.push_back(
            {.problem = LanguageProblem::Missing, .section = text.section, .key = text.key});
      }
    }
  }

  std::vector<LanguageLine> lines;
  UINT codePage;
  const LanguageFile* english;
  std::vector<LanguageFinding> findings;
  std::set<std::string> sections;
  std::set<Name> names;
  std::vector<TranslatedText> seenTexts;
};

}  // namespace

const char* codeOf(LanguageProblem problem) { return wordsOf(problem).code; }

std::string sentenceOf(const LanguageFinding& finding) {
  std::string place = finding.section.empty() ? std::string() : "[" + finding.section + "]";
  if (!finding.key.empty()) {
    place += (place.empty() ? "" : " ") + finding.key;
  }
  const std::string sentence =
      (place.empty() ? "" : place + ": ") + std::string(wordsOf(finding.problem).sentence);
  return finding.detail.empty() ? sentence : sentence + ": " + finding.detail;
}

std::vector<LanguageFinding> problemsOfText(const TranslatableText& text,
                                            std::string_view translation, UINT codePage) {
  std::vector<LanguageFinding> found;
  const auto tell = [&](LanguageProblem problem, std::string detail) {
    found.push_back({.problem = problem,
                     .section = text.section,
                     .key = text.key,
                     .line = 0,
                     .detail = std::move(detail)});
  };
  if (translation.empty()) {
    tell(LanguageProblem::Missing, {});
    return found;
  }
  if (translation.find_first_of("=\"\r\n") != std::string_view::npos) {
    tell(LanguageProblem::Forbidden, {});
  }
  if (codePage != CP_UTF8 && !exactCodePageBytes(translation, codePage)) {
    tell(LanguageProblem::Unwritable, {});
  }
  if (std::string difference = differenceOfPlaces(text.english, translation); !difference.empty()) {
    tell(LanguageProblem::Values, std::move(difference));
  }
  const auto room = roomOfText(text.section, text.key);
  if (room && isTooLong(translation, *room)) {
    tell(LanguageProblem::TooLong, {});
  }
  return found;
}

std::vector<LanguageFinding> doubledAccessKeys(const std::vector<TranslatedText>& texts) {
  std::vector<LanguageFinding> found;
  std::vector<std::pair<std::string, const TranslatedText*>> taken;
  for (const TranslatedText& each : texts) {
    const std::string letter = accessKeyOf(each.translation);
    const auto page = pageOfText(each.text->section, each.text->key);
    if (letter.empty() || !page) {
      continue;
    }
    const auto other = std::ranges::find_if(taken, [&](const auto& before) {
      const auto otherPage = pageOfText(before.second->text->section, before.second->text->key);
      return before.first == letter && otherPage && areTogether(*page, *otherPage);
    });
    if (other == taken.end()) {
      taken.emplace_back(letter, &each);
    } else {
      found.push_back({.problem = LanguageProblem::AccessKey,
                       .section = each.text->section,
                       .key = each.text->key,
                       .line = each.line,
                       .detail = other->second->text->key});
    }
  }
  return found;
}

std::vector<LanguageFinding> checkLanguageFile(std::string_view bytes, int charset,
                                               const LanguageFile* english) {
  return FileCheck(bytes, charset, english).run();
}

std::optional<int> charsetInList(std::string_view list, std::string_view tag) {
  for (const LanguageFields& fields : languageListOf(list)) {
    if (fields.size() > 2 && lowerCase(trim(fields[2])) == lowerCase(tag)) {
      return leadingInteger(fields[1]);
    }
  }
  return std::nullopt;
}

std::string tagOfFile(std::string_view path) {
  constexpr std::string_view before = "zelvreg-";
  constexpr std::string_view after = ".lang";
  const std::string name = lowerCase(path.substr(path.find_last_of("/\\") + 1));
  const bool isLanguage = name.starts_with(before) && name.ends_with(after) &&
                          name.size() > before.size() + after.size();
  return isLanguage ? name.substr(before.size(), name.size() - before.size() - after.size())
                    : std::string();
}

}  // namespace zelvreg
