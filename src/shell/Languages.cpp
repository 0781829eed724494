#include "shell/Languages.h"

#include <windows.h>

#include <initializer_list>

#include "form/Form42.h"
#include "languages/Charset.h"
#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "runtime/FileSystemObject.h"
#include "scan/CategoryTable.h"
#include "scan/OutcomeLine.h"
#include "scan/ScanDriver.h"
#include "scan/Settings.h"
#include "shell/Captions.h"
#include "shell/ResultsFilter.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

constexpr int pickerGap = 100;  // twips
constexpr std::uint32_t pickerHoverColor = 15126960;
constexpr const char* listFile = "data.lang";

std::string settingOr(const char* key, const char* valueName, const char* fallback) {
  std::string text = readSetting(key, valueName);
  return trim(text).empty() ? fallback : text;
}

int bottomOf(const Control& control) { return control.top + control.height; }

// A field that is missing leaves the entry as it was.
void fillEntry(Form42& form, std::size_t number, const LanguageFields& fields) {
  if (number == form.lbllanguage.size()) {
    form.lbllanguage.push_back(std::make_unique<Label>());
    form.lbllanguage[number]->height = form.lbllanguage.front()->height;
  }
  Label& label = *form.lbllanguage[number];
  label.visible = true;
  if (number > 0) {
    label.top = bottomOf(*form.lbllanguage[number - 1]) + pickerGap;
  }
  Font font{.name = "Arial Unicode MS", .size = 10};
  if (fields.size() > 1) {
    font.charset = leadingInteger(fields[1]);
  }
  label.font = font;
  if (!fields.empty()) {
    label.caption = fields[0];
  }
  if (fields.size() > 2) {
    label.tag = fields[2];
  }
}

}  // namespace

void readLanguageChoice(Form42& form) {
  form.langCode = leadingInteger(readSetting(settings::language, "langcode"));
  form.langTag = readSetting(settings::language, "lang");
  form.langIndex = leadingInteger(readSetting(settings::language, "langindex"));
  form.langFileName = "zelvreg-" + form.langTag + ".lang";
}

Font languageFont(const Form42& form) {
  return {.name = settingOr(settings::suite, "font name", "Segoe UI"),
          .size = leadingNumber(settingOr(settings::suite, "font size", "9")),
          .charset = form.langCode};
}

namespace {

// Every control of the form that shows a text, but the entries of the picker, each of which has the
// charset of its own language.
void giveFont(Form42& form, const Font& font) {
  const auto give = [&font](std::initializer_list<Control*> controls) {
    for (Control* control : controls) {
      control->font = font;
    }
  };
  const auto giveEach = [&font](auto& controls) {
    for (Control& control : controls) {
      control.font = font;
    }
  };
  give({&form.View1, &form.View2, &form.View3, &form.View4, &form.cboFind, &form.cboRoot,
        &form.cboTheme});
  give({&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4, &form.Frame5, &form.Frame7,
        &form.Frame8, &form.Picture1, &form.pictrlang});
  give({&form.Label1, &form.Label3, &form.Label4, &form.Label5, &form.Label6, &form.Label7,
        &form.Label10, &form.ProgressText, &form.EvidenceText, &form.OutcomeText, &form.UndoRepair,
        &form.FilterBox, &form.FilterText});
  give({&form.cmd_search, &form.cmd_exclud, &form.cmd_start, &form.cmd_fix, &form.cmd_cancel,
        &form.cmd_all, &form.cmd_non, &form.cmd_report, &form.cmdFind});
  give({&form.orubutton1, &form.orubutton2, &form.orubutton3, &form.orubutton4, &form.Command21,
        &form.Command28});
  give({&form.chameleonButton1,  &form.chameleonButton2,  &form.chameleonButton3,
        &form.chameleonButton4,  &form.chameleonButton5,  &form.chameleonButton6,
        &form.chameleonButton7,  &form.chameleonButton8,  &form.chameleonButton9,
        &form.chameleonButton10, &form.chameleonButton11, &form.chameleonButton12,
        &form.chameleonButton13, &form.chameleonButton14, &form.chameleonButton15,
        &form.chameleonButton16, &form.chameleonButton17, &form.chameleonButton18,
        &form.chameleonButton21, &form.chameleonButton22, &form.chameleonButton23});
  give({&form.Check1, &form.ToolbarBox, &form.CarefulBox, &form.ChKeys, &form.ChValues,
        &form.ChData, &form.ChCase, &form.Option1, &form.Option2, &form.Option3, &form.Option4});
  giveEach(form.SafeguardBoxes);
  giveEach(form.CategoryBars);
  giveEach(form.Label2);
  giveEach(form.Label8);
  giveEach(form.Label12);
}

std::string numberAtEnd(const std::string& text) {
  return text.substr(text.find_last_not_of("0123456789") + 1);
}

// What the results say of themselves since the last scan or repair, in the words of the language.
void retellResults(Form42& form, const std::string& number) {
  if (!number.empty()) {
    form.Label10.caption = form.Label10.caption.get() + " " + number;
  }
  retellOutcome(form);
  followResults(form);
}

void changeFurtherCaptions(Form42& form, const LanguageFile& language) {
  const Form42 asMade;
  for (const Caption& caption : furtherCaptions()) {
    const std::string text = language.value("Form42", caption.key);
    caption.set(form, text.empty() ? caption.get(asMade) : text);
  }
  form.repeatCaptions();
}

}  // namespace

void loadavlang(Form42& form) {
  const std::string file = languagePath(form, listFile);
  if (!fileSystemObject::fileExists(file, Shares::Asked)) {
    return;
  }
  std::size_t number = 0;
  for (const LanguageFields& fields : readLanguageList(file)) {
    fillEntry(form, number++, fields);
  }
  form.pictrlang.height = bottomOf(*form.lbllanguage.back()) + pickerGap;
}

void changelangoru(Form42& form) {
  readLanguageChoice(form);
  if (!fileSystemObject::fileExists(languagePath(form, form.langFileName), Shares::Asked)) {
    return;
  }
  giveFont(form, languageFont(form));
  form.readsFromRight = charsetReadsFromRight(form.langCode);
  const LanguageFile language = languageInUse(form);
  loadTexts(form, language);
  const std::string number = numberAtEnd(form.Label10.caption);
  for (const Caption& caption : captions()) {
    caption.set(form, language.value("Form42", caption.key));
  }
  changeFurtherCaptions(form, language);
  retellResults(form, number);
  // Label7, of which it is a part, asks for a row again.
  form.EvidenceText.caption = "";
  if (form.onLanguage) {
    form.onLanguage();
  }
}

void createCategoryRows(Form42& form) {
  const LanguageFile language = languageInUse(form);
  const bool isToTheLetter = form.safeguards == asDescribed();
  for (const Category& category : categories()) {
    const std::string name = language.value("Form42", category.nameKey);
    form.View1.add(name.empty() && !isToTheLetter ? std::string(category.english) : name);
  }
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setSmallIcon(row, categoryAt(row).icon);
  }
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setText(row, descriptionColumn, language.value("Form42", categoryAt(row).textKey));
  }
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    form.View1.setText(row, problemsColumn, "0");
    form.View1.setText(row, statusColumn, "");
  }
}

void changeviewlang(Form42& form) {
  form.View1.clear();
  createCategoryRows(form);
  restoreSelection(form);
}

void compareWithSystem(Form42& form) {
  form.languageMatchesSystem = charsetMatchesCodePage(form.langCode, GetACP());
  form.menus.drawing =
      form.languageMatchesSystem ? MenuDrawing::InSystemCharset : MenuDrawing::InOwnCharset;
}

void lbllanguage_Click(Form42& form, std::size_t entry) {
  if (entry >= form.lbllanguage.size()) {
    return;
  }
  const Label& label = *form.lbllanguage[entry];
  keepSetting(settings::language, "langcode", decimal(label.font.get().charset));
  keepSetting(settings::language, "lang", label.tag);
  keepSetting(settings::language, "langindex", decimal(static_cast<std::int64_t>(entry)));
  form.pictrlang.visible = false;
  changelangoru(form);
  form.imglangselect.top = label.top;
  compareWithSystem(form);
  changeviewlang(form);
}

void lbllanguage_MouseMove(Form42& form, std::size_t entry) {
  if (entry < form.lbllanguage.size()) {
    form.lbllanguage[entry]->backColor = pickerHoverColor;
  }
}

void pictrlang_MouseMove(Form42& form) {
  for (const auto& label : form.lbllanguage) {
    label->backColor = windowColor;
  }
}

void chameleonButton13_Click(Form42& form) { form.pictrlang.visible = !form.pictrlang.visible; }

}  // namespace zelvreg
