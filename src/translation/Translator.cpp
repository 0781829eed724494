#include "translation/Translator.h"

#include <algorithm>

#include "languages/Charset.h"
#include "runtime/CodePageText.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "shell/Languages.h"
#include "shell/WindowEvents.h"
#include "text/Numbers.h"
#include "text/Text.h"
#include "translation/TranslatorTexts.h"

namespace zelvreg {
namespace {

std::string fileNameOf(std::string_view path) {
  return std::string(path.substr(path.find_last_of("/\\") + 1));
}

std::string besideIt(std::string_view path, std::string_view name) {
  return std::string(path.substr(0, path.find_last_of("/\\") + 1)).append(name);
}

constexpr std::string_view listName = "data.lang";

}  // namespace

Translator::Translator(Form42& programForm)
    : form(programForm.messages),
      program(programForm),
      ownTexts(languageInUse(programForm)),
      english(languagePath(programForm, "zelvreg-english.lang"), 0),
      current(english),
      languages(readLanguageList(languagePath(programForm, std::string(listName)))) {
  giveFont();
  giveTexts();
  fillCharsets();
  fillLanguages();
  bindControls();
  showFile();
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
  if (!isShowing && chosen < translatorCharsets.size() &&
      translatorCharsets.at(chosen) != current.charset()) {
    current.setCharset(translatorCharsets.at(chosen));
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

void Translator::next() {
  const std::size_t row = form.list.selectedRow();
  const auto found = current.nextProblem(row == 0 ? std::nullopt : std::optional(row - 1));
  if (found) {
    // One that has come since the filter was set.
    form.list.setHidden(*found + 1, false);
    select(*found + 1);
  }
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
