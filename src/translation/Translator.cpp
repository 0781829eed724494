#include "translation/Translator.h"

#include <algorithm>
#include <array>

#include "languages/Charset.h"
#include "runtime/CodePageText.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "shell/Languages.h"
#include "shell/SuiteColor.h"
#include "shell/WindowEvents.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "translation/TranslatorTexts.h"

namespace zelvreg {
namespace {

// Those of the languages that Windows has. The first is that of Western Europe.
constexpr std::array charsets{0, 238, 186, 204, 161, 162, 163, 177, 178, 222, 128, 129, 134, 136};

std::string fileNameOf(std::string_view path) {
  return std::string(path.substr(path.find_last_of("/\\") + 1));
}

std::string besideIt(std::string_view path, std::string_view name) {
  return std::string(path.substr(0, path.find_last_of("/\\") + 1)).append(name);
}

constexpr std::string_view listName = "data.lang";

struct RemarkText {
  LanguageProblem problem;
  const char* key;
};
constexpr std::array remarks{
    RemarkText{LanguageProblem::Missing, "missing"},
    RemarkText{LanguageProblem::TooLong, "too-long"},
    RemarkText{LanguageProblem::Values, "values"},
    RemarkText{LanguageProblem::AccessKey, "access-key"},
    RemarkText{LanguageProblem::Forbidden, "forbidden"},
    RemarkText{LanguageProblem::Unwritable, "unwritable"},
    RemarkText{LanguageProblem::SameAsEnglish, "same"},
};

}  // namespace

TranslatorForm::TranslatorForm(MessageQueue& queue)
    : list(icons, queue, std::vector<ColumnHeader>(4)) {}

Translator::Translator(Form42& programForm)
    : form(programForm.messages),
      program(programForm),
      ownTexts(languageInUse(programForm)),
      english(languagePath(programForm, "zelvreg-english.lang"), 0),
      current(english),
      languages(readLanguageList(languagePath(programForm, std::string(listName)))) {
  giveTexts();
  fillCharsets();
  fillLanguages();
  bindControls();
  showFile();
}

std::string Translator::told(std::string_view key,
                             std::initializer_list<std::string_view> values) const {
  std::string text = ownTexts.value(translatorSection, key);
  if (text.empty()) {
    text = std::ranges::find(translatorTexts, key, &Text::key)->english;
  }
  int number = 0;
  for (const std::string_view value : values) {
    text = replaceAll(text, "%" + std::to_string(++number), value);
  }
  return text;
}

void Translator::giveTexts() {
  const Font font = languageFont(program);
  for (Control* control : std::initializer_list<Control*>{&form.title,
                                                          &form.close,
                                                          &form.languageWord,
                                                          &form.language,
                                                          &form.charsetWord,
                                                          &form.charset,
                                                          &form.nameWord,
                                                          &form.name,
                                                          &form.open,
                                                          &form.create,
                                                          &form.fileInfo,
                                                          &form.onlyWork,
                                                          &form.count,
                                                          &form.list,
                                                          &form.englishWord,
                                                          &form.englishText,
                                                          &form.translationWord,
                                                          &form.translation,
                                                          &form.remark,
                                                          &form.next,
                                                          &form.utf8,
                                                          &form.save,
                                                          &form.saveAs}) {
    control->font = font;
  }
  struct LabelText {
    Label* label;
    const char* key;
  };
  for (const LabelText& each :
       {LabelText{&form.title, "title"}, LabelText{&form.languageWord, "language"},
        LabelText{&form.charsetWord, "charset"}, LabelText{&form.nameWord, "name"},
        LabelText{&form.englishWord, "english"}, LabelText{&form.translationWord, "translation"}}) {
    each.label->caption = told(each.key);
  }
  struct ButtonText {
    Button* button;
    const char* key;
  };
  for (const ButtonText& each : {ButtonText{&form.open, "open"}, ButtonText{&form.create, "new"},
                                 ButtonText{&form.next, "next"}, ButtonText{&form.save, "save"},
                                 ButtonText{&form.saveAs, "save-as"}}) {
    each.button->caption = told(each.key);
  }
  form.onlyWork.caption = told("only-work");
  form.utf8.caption = told("utf8");
  std::size_t column = 0;
  for (const char* key : {"key", "english", "translation", "remark"}) {
    form.list.setColumnHeader(++column, told(key));
  }
  form.close.toolTip = textOf(program, "close");
  giveColor(form.close, suiteColor(program));
}

void Translator::fillCharsets() {
  for (const int charset : charsets) {
    form.charset.add(std::to_string(charset) + " (" + std::to_string(codePageOfCharset(charset)) +
                     ")");
  }
}

void Translator::fillLanguages() {
  for (const LanguageFields& fields : languages) {
    form.language.add(fields.empty() ? std::string() : fields.front());
  }
}

void Translator::bindControls() {
  form.close.bind([this] { close(); });
  form.open.bind([this] {
    const std::string chosen = askForFile ? askForFile(false, "") : std::string();
    if (!chosen.empty()) {
      open(chosen);
    }
  });
  form.create.bind([this] { begin(); });
  form.save.bind([this] { save(); });
  form.saveAs.bind([this] { saveAs(); });
  form.next.bind([this] { next(); });
  form.onlyWork.bind([this] { filter(); });
  form.utf8.bind([this] {
    current.setUtf8(form.utf8.value);
    showFile();
  });
  form.language.onChange = [this] { chooseLanguage(); };
  form.charset.onChange = [this] { chooseCharset(); };
  form.translation.onChange = [this] { typed(); };
}

bool Translator::mayDiscard() {
  return !current.isChanged() || program.dialogs.ask({.text = told("ask-discard"),
                                                      .icon = MessageIcon::Question,
                                                      .isQuestion = true,
                                                      .title = told("title")}) == Answer::Yes;
}

void Translator::open(const std::string& wanted) {
  if (!mayDiscard()) {
    return;
  }
  const auto bytes = readFileText(wanted);
  if (!bytes) {
    program.dialogs.tell(told("not-read", {wanted}), MessageIcon::Exclamation);
    return;
  }
  const std::string list = readFileText(besideIt(wanted, listName)).value_or("");
  path = wanted;
  current.read(*bytes, charsetInList(list, tagOfFile(path)).value_or(0));
  showFile();
  next();
}

void Translator::begin() {
  if (!mayDiscard()) {
    return;
  }
  path.clear();
  current = Translation(english);
  showFile();
  next();
}

// The list of languages and the file are in one folder, so a name of the list is a file there.
void Translator::chooseLanguage() {
  const auto chosen = static_cast<std::size_t>(form.language.listIndex());
  if (isShowing || chosen >= languages.size() || languages[chosen].size() < 3) {
    return;
  }
  open(languagePath(program, "zelvreg-" + languages[chosen][2] + ".lang"));
  // If the user keeps the other file, or this one cannot be read.
  showFile();
}

void Translator::chooseCharset() {
  const auto chosen = static_cast<std::size_t>(form.charset.listIndex());
  if (!isShowing && chosen < charsets.size() && charsets.at(chosen) != current.charset()) {
    current.setCharset(charsets.at(chosen));
    showFile();
  }
}

void Translator::typed() {
  const std::size_t row = form.list.selectedRow();
  if (isShowing || row == 0) {
    return;
  }
  current.translate(row - 1, form.translation.text());
  showRow(row);
  form.remark.caption = form.list.text(row, remarkColumn);
  showCount();
}

void Translator::showFile() {
  isShowing = true;
  const std::size_t selected = std::max<std::size_t>(1, form.list.selectedRow());
  if (form.list.count() == 0) {
    for (const Translation::Entry& entry : current.entries()) {
      const std::size_t row = form.list.add(entry.text->section + " / " + entry.text->key);
      form.list.setText(row, englishColumn, entry.english);
    }
  }
  for (std::size_t row = 1; row <= form.list.count(); ++row) {
    showRow(row);
  }
  const bool isNew = path.empty();
  const std::string tag = tagOfFile(path);
  const auto listed = std::ranges::find_if(languages, [&](const LanguageFields& fields) {
    return fields.size() > 2 && !tag.empty() && lowerCase(fields[2]) == tag;
  });
  const bool isListed = listed != languages.end();
  if (isListed) {
    form.language.setListIndex(static_cast<int>(listed - languages.begin()));
    form.name.setText(listed->front());
  }
  form.name.enabled = !isListed;
  form.charset.enabled = !isListed;
  const auto* charset = std::ranges::find(charsets, current.charset());
  form.charset.setListIndex(static_cast<int>(charset - charsets.begin()));
  form.utf8.value = current.isUtf8();
  form.fileInfo.caption = isNew ? told("new-file") : path;
  form.list.select(selected);
  isShowing = false;
  filter();
  showSelected();
}

std::string Translator::remarkOf(std::size_t entry) const {
  std::string remark;
  for (const LanguageFinding& finding : current.problemsOf(entry)) {
    const auto* words = std::ranges::find(remarks, finding.problem, &RemarkText::problem);
    if (words != remarks.end()) {
      remark += (remark.empty() ? "" : "; ") + told(words->key);
    }
  }
  return remark;
}

void Translator::showRow(std::size_t row) {
  form.list.setText(row, translationColumn, current.entries().at(row - 1).translation);
  form.list.setText(row, remarkColumn, remarkOf(row - 1));
}

void Translator::showSelected() {
  const std::size_t row = form.list.selectedRow();
  const bool isAny = row > 0;
  isShowing = true;
  form.englishText.caption = isAny ? current.entries().at(row - 1).english : std::string();
  form.translation.setText(isAny ? current.entries().at(row - 1).translation : std::string());
  form.remark.caption = isAny ? form.list.text(row, remarkColumn) : std::string();
  form.translation.enabled = isAny;
  isShowing = false;
}

void Translator::showCount() {
  std::size_t count = 0;
  for (std::size_t row = 1; row <= form.list.count(); ++row) {
    count += markOf(row).empty() ? 0U : 1U;
  }
  form.count.caption = told("count", {std::to_string(count), std::to_string(form.list.count())});
}

void Translator::filter() {
  for (std::size_t row = 1; row <= form.list.count(); ++row) {
    form.list.setHidden(row, form.onlyWork.value && markOf(row).empty());
  }
  showCount();
}

void Translator::select(std::size_t row) {
  form.list.select(row);
  form.list.ensureVisible(row);
  showSelected();
}

void Translator::next() {
  const std::size_t row = form.list.selectedRow();
  const auto found = current.nextProblem(row == 0 ? std::nullopt : std::optional(row - 1));
  if (found) {
    // One that has come since the filter was set.
    form.list.setHidden(*found + 1, false);
    select(*found + 1);
  }
}

std::string Translator::markOf(std::size_t row) const {
  if (row == 0 || row > current.entries().size() || !current.needsWork(row - 1)) {
    return {};
  }
  return current.entries()[row - 1].translation.empty() ? "unsure" : "likely";
}

void Translator::save() {
  if (path.empty()) {
    saveAs();
  } else {
    write(path);
  }
}

std::string Translator::suggestedName() const {
  return path.empty() ? "zelvreg-.lang" : fileNameOf(path);
}

void Translator::saveAs() {
  const std::string chosen = askForFile ? askForFile(true, suggestedName()) : std::string();
  if (!chosen.empty() && write(chosen)) {
    path = chosen;
    addToList();
    showFile();
  }
}

bool Translator::write(const std::string& wanted) {
  auto bytes = current.bytes();
  if (!bytes) {
    if (program.dialogs.ask({.text = told("ask-utf8"),
                             .icon = MessageIcon::Question,
                             .isQuestion = true,
                             .title = told("title")}) != Answer::Yes) {
      return false;
    }
    current.setUtf8(true);
    bytes = current.bytes();
  }
  if (!bytes || !replaceFileText(wanted, *bytes)) {
    program.dialogs.tell(told("not-written", {wanted}), MessageIcon::Exclamation);
    return false;
  }
  current.markAsKept();
  showFile();
  return true;
}

// Beside a list of languages a new one is offered only if the list has it.
void Translator::addToList() {
  const std::string list = besideIt(path, listName);
  const std::string tag = tagOfFile(path);
  const auto bytes = readFileText(list);
  if (!bytes || tag.empty() || trim(form.name.text()).empty() || charsetInList(*bytes, tag)) {
    return;
  }
  const bool isUtf8 = bytes->starts_with(utf8Mark);
  const std::string entry = "|" + std::string(trim(form.name.text())) + "," +
                            std::to_string(current.charset()) + "," + tag;
  const auto encoded = isUtf8 ? std::optional(entry)
                              : exactCodePageBytes(entry, codePageOfCharset(current.charset()));
  // The list is one line.
  const std::size_t end =
      std::min(bytes->find_first_of("\r\n", bytes->find("zelvreg=")), bytes->size());
  const bool isWritten =
      encoded && replaceFileText(list, std::string(*bytes).insert(end, *encoded));
  if (!isWritten) {
    program.dialogs.tell(told("not-listed", {list}), MessageIcon::Exclamation);
  } else if (list == languagePath(program, std::string(listName))) {
    languages = readLanguageList(list);
    form.language.add(trim(form.name.text()));
  }
}

void Translator::close() {
  if (mayDiscard()) {
    form.isOpen = false;
  }
}

}  // namespace zelvreg
