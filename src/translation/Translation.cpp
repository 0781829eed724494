#include "translation/Translation.h"

#include <algorithm>
#include <set>

#include "languages/Charset.h"
#include "runtime/CodePageText.h"
#include "runtime/OwnText.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// What the file becomes, line by line.
class Writer {
 public:
  explicit Writer(const std::vector<Translation::Entry>& entries) : all(entries) {}

  void take(const LanguageLine& line) {
    if (line.isHeader) {
      endSection();
      section = line.section;
    }
    const auto entry = line.isPair ? find(line) : all.end();
    if (entry == all.end() || !written.insert(entry->text).second) {
      add(line.whole);
    } else if (entry->translation == entry->read) {
      add(line.whole);
    } else if (!entry->translation.empty()) {
      addPair(*entry);
    }
  }

  std::string finish() {
    endSection();
    for (const Translation::Entry& entry : all) {
      if (!entry.translation.empty() && !written.contains(entry.text)) {
        if (entry.text->section != section) {
          // Sections are set apart by an empty line.
          content += content.empty() ? "" : lineEnd;
          section = entry.text->section;
          add("[" + section + "]");
        }
        addPair(entry);
      }
    }
    return std::move(content);
  }

 private:
  [[nodiscard]] std::vector<Translation::Entry>::const_iterator find(
      const LanguageLine& line) const {
    const TranslatableText* text = findTranslatable(line.section, line.key);
    return std::ranges::find(all, text, &Translation::Entry::text);
  }

  // Texts that the file lacks come before the empty lines at the end of their section.
  void endSection() {
    std::string blank;
    while (content.ends_with(std::string(lineEnd).append(lineEnd))) {
      content.resize(content.size() - lineEnd.size());
      blank += lineEnd;
    }
    for (const Translation::Entry& entry : all) {
      const bool isHere = lowerCase(entry.text->section) == lowerCase(section);
      if (isHere && !section.empty() && !entry.translation.empty() && entry.read.empty() &&
          written.insert(entry.text).second) {
        addPair(entry);
      }
    }
    content += blank;
  }

  void addPair(const Translation::Entry& entry) {
    written.insert(entry.text);
    add(entry.text->key + "=" + entry.translation);
  }
  void add(std::string_view line) { content.append(line).append(lineEnd); }

  static constexpr std::string_view lineEnd = "\r\n";
  const std::vector<Translation::Entry>& all;
  std::string section;
  std::set<const TranslatableText*> written;
  std::string content;
};

}  // namespace

Translation::Translation(const LanguageFile& english) {
  for (const TranslatableText& text : translatableTexts()) {
    all.push_back({.text = &text,
                   .english = englishOf(text, english),
                   .translation = {},
                   .read = {},
                   .problems = {}});
  }
  findProblems();
}

void Translation::read(std::string_view bytes, int charset) {
  charsetInUse = charset;
  usesUtf8 = bytes.starts_with(utf8Mark);
  differs = false;
  lines = linesOfLanguage(bytes, codePageOfCharset(charset));
  for (Entry& entry : all) {
    entry.translation.clear();
  }
  std::set<const TranslatableText*> known;
  for (const LanguageLine& line : lines) {
    const TranslatableText* text = line.isPair ? findTranslatable(line.section, line.key) : nullptr;
    const auto entry = std::ranges::find(all, text, &Entry::text);
    if (text != nullptr && known.insert(text).second) {
      entry->translation = line.value;
    }
  }
  for (Entry& entry : all) {
    entry.read = entry.translation;
  }
  findProblems();
}

void Translation::translate(std::size_t entry, std::string_view text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  if (entry < all.size() && all[entry].translation != line) {
    all[entry].translation = line;
    differs = true;
    findProblems();
  }
}

// Whether two controls of a page have one access key shows only when all texts are looked at.
void Translation::findProblems() {
  std::vector<TranslatedText> marked;
  for (Entry& entry : all) {
    entry.problems = problemsOfText(*entry.text, entry.translation, codePage());
    if (entry.translation.find('&') != std::string::npos) {
      marked.push_back({entry.text, entry.translation});
    }
  }
  for (LanguageFinding& finding : doubledAccessKeys(marked)) {
    const auto entry = std::ranges::find_if(all, [&finding](const Entry& each) {
      return each.text->section == finding.section && each.text->key == finding.key;
    });
    entry->problems.push_back(std::move(finding));
  }
  for (Entry& entry : all) {
    if (!entry.translation.empty() && entry.translation == entry.english) {
      entry.problems.push_back({.problem = LanguageProblem::SameAsEnglish,
                                .section = entry.text->section,
                                .key = entry.text->key});
    }
  }
}

bool Translation::needsWork(std::size_t entry) const {
  return std::ranges::any_of(
      problemsOf(entry), [](const LanguageFinding& finding) { return !isHint(finding.problem); });
}

std::optional<std::size_t> Translation::nextProblem(std::optional<std::size_t> after) const {
  const std::size_t start = after ? *after + 1 : 0;
  for (std::size_t step = 0; step < all.size(); ++step) {
    const std::size_t entry = (start + step) % all.size();
    if (needsWork(entry)) {
      return entry;
    }
  }
  return std::nullopt;
}

void Translation::setCharset(int charset) {
  differs = differs || charset != charsetInUse;
  charsetInUse = charset;
  findProblems();
}

UINT Translation::codePage() const { return usesUtf8 ? CP_UTF8 : codePageOfCharset(charsetInUse); }

void Translation::setUtf8(bool isWanted) {
  differs = differs || isWanted != usesUtf8;
  usesUtf8 = isWanted;
  findProblems();
}

void Translation::markAsKept() {
  if (const auto kept = bytes()) {
    read(*kept, charsetInUse);
  }
}

std::string Translation::text() const {
  Writer writer(all);
  for (const LanguageLine& line : lines) {
    writer.take(line);
  }
  return writer.finish();
}

std::optional<std::string> Translation::bytes() const {
  const std::string content = text();
  if (usesUtf8) {
    return std::string(utf8Mark) + content;
  }
  auto encoded = exactCodePageBytes(content, codePage());
  // Bytes that look like the mark would be read as UTF-8.
  return encoded && !encoded->starts_with(utf8Mark) ? encoded : std::nullopt;
}

}  // namespace zelvreg
