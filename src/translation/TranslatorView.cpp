// What the window of the program for translators shows.
#include <algorithm>
#include <array>

#include "languages/Charset.h"
#include "shell/Languages.h"
#include "shell/SuiteColor.h"
#include "text/Text.h"
#include "translation/Translator.h"
#include "translation/TranslatorTexts.h"

namespace zelvreg {
namespace {

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

void Translator::giveFont() {
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
}

void Translator::giveTexts() {
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
  for (const int charset : translatorCharsets) {
    form.charset.add(std::to_string(charset) + " (" + std::to_string(codePageOfCharset(charset)) +
                     ")");
  }
}

void Translator::fillLanguages() {
  for (const LanguageFields& fields : languages) {
    form.language.add(fields.empty() ? std::string() : fields.front());
  }
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
  const auto* charset = std::ranges::find(translatorCharsets, current.charset());
  form.charset.setListIndex(static_cast<int>(charset - translatorCharsets.begin()));
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

std::string Translator::markOf(std::size_t row) const {
  if (row == 0 || row > current.entries().size() || !current.needsWork(row - 1)) {
    return {};
  }
  return current.entries()[row - 1].translation.empty() ? "unsure" : "likely";
}

}  // namespace zelvreg
