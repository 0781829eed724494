#include "shell/Languages.h"

#include <iterator>

#include "evidence/Reasons.h"
#include "languages/Texts.h"
#include "languages/readlangfile.h"
#include "scan/CategoryTable.h"
#include "scan/OutcomeLine.h"
#include "scan/SafeguardSources.h"
#include "shell/Captions.h"
#include "shell/ResultsFilter.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"

namespace zelvreg {
namespace {

using fixture::shippedLanguages;

const std::string choiceKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\zelvane tuner\\zelvreg";
const std::string suiteSettings =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\zelvane tuner";
const std::string ticksKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
const std::string folder = "C:\\LanguagesTest";

constexpr Confidence allConfidences[] = {Confidence::Unsure, Confidence::Likely, Confidence::Sure};

class LanguagesTest : public fixture::ComputerFixture {
 protected:
  LanguagesTest() {
    emptyKey(suiteSettings);
    emptyKey(choiceKey);
    emptyKey(ticksKey);
    form.programFolder = folder;
    copyAsset("data.lang");
    for (const fixture::ShippedLanguage& language : shippedLanguages) {
      copyAsset(fixture::fileOfLanguage(language));
    }
  }

  static void copyAsset(const std::string& name) {
    makeFile(folder + "\\lang\\" + name, fixture::languageAsset(name));
  }

  void choose(const std::string& tag, int charset = 0) {
    setText(choiceKey, "lang", tag);
    setText(choiceKey, "langcode", std::to_string(charset));
    changelangoru(form);
  }
};

TEST_F(LanguagesTest, ThePickerHoldsEachLanguageOfTheList) {
  loadavlang(form);
  ASSERT_EQ(form.lbllanguage.size(), std::size(shippedLanguages));
  for (std::size_t entry = 0; entry < std::size(shippedLanguages); ++entry) {
    const Label& label = *form.lbllanguage[entry];
    EXPECT_EQ(label.caption.get(), shippedLanguages[entry].name);
    EXPECT_EQ(label.tag.get(), shippedLanguages[entry].tag);
    EXPECT_EQ(label.font.get().charset, shippedLanguages[entry].charset);
    EXPECT_EQ(label.font.get().name, "Arial Unicode MS");
    EXPECT_EQ(label.font.get().size, 10);
  }
}

TEST_F(LanguagesTest, EntriesAreBelowEachOtherInsideThePanel) {
  form.lbllanguage[0]->top = 50;
  form.lbllanguage[0]->height = 300;
  loadavlang(form);
  EXPECT_EQ(form.lbllanguage[1]->top, 450);
  const int last = static_cast<int>(std::size(shippedLanguages)) - 1;
  EXPECT_EQ(form.lbllanguage.back()->top, 50 + last * 400);
  EXPECT_EQ(form.pictrlang.height, 50 + last * 400 + 300 + 100);
}

TEST_F(LanguagesTest, WithoutTheListThePickerKeepsItsOneEntry) {
  form.programFolder = "C:\\NoLanguages";
  loadavlang(form);
  ASSERT_EQ(form.lbllanguage.size(), 1U);
  EXPECT_EQ(form.lbllanguage[0]->caption.get(), "English");
}

TEST_F(LanguagesTest, AnEntryWithMissingFieldsKeepsWhatItHas) {
  makeFile(folder + "\\lang\\data.lang", "[lang]\nzelvreg=Solo|Two,238\n");
  loadavlang(form);
  ASSERT_EQ(form.lbllanguage.size(), 2U);
  EXPECT_EQ(form.lbllanguage[0]->caption.get(), "Solo");
  EXPECT_EQ(form.lbllanguage[0]->tag.get(), "");
  EXPECT_EQ(form.lbllanguage[1]->font.get().charset, 238);
}

TEST_F(LanguagesTest, ReadingAnEndlessListEnds) {
  constexpr int charset = 2147483647;
  makeFile(folder + "\\lang\\data.lang",
           "[lang]\nzelvreg=One,1e300|" + std::string(100000, '|') + "\n");
  loadavlang(form);
  EXPECT_EQ(form.lbllanguage.size(), 1000U);
  EXPECT_EQ(form.lbllanguage[0]->font.get().charset, charset);
}

TEST_F(LanguagesTest, EnglishTextsAreTheCaptionsThatTheFormIsMadeWith) {
  const Form42 asMade;
  const std::string file = folder + "\\lang\\zelvreg-english.lang";
  for (const Caption& caption : captions()) {
    std::string made = caption.get(asMade);
    // Texts of a file are trimmed; the two buttons without a caption get theirs from the file.
    made.erase(made.find_last_not_of(' ') + 1);
    if (!made.empty()) {
      EXPECT_EQ(ReadLangValue(file, "Form42", caption.key, 0), made) << caption.key;
    }
  }
}

// A file cannot hold quotation marks, nor blanks at the end of a text.
TEST_F(LanguagesTest, TheEnglishFileHasTheTextsThatStandWithoutIt) {
  const std::string file = folder + "\\lang\\zelvreg-english.lang";
  const Form42 asMade;
  for (const Caption& caption : furtherCaptions()) {
    EXPECT_EQ(ReadLangValue(file, "Form42", caption.key, 0), caption.get(asMade)) << caption.key;
  }
  for (const Text& text : texts) {
    const bool canBeHeld =
        text.english.find('"') == std::string_view::npos && !text.english.ends_with(' ');
    EXPECT_EQ(ReadLangValue(file, "Form42", text.key, 0), canBeHeld ? text.english : "")
        << text.key;
  }
}

TEST_F(LanguagesTest, AnotherLanguageSaysAgainWhatTheResultsSay) {
  choose("english");
  form.Label10.caption = "Number of invalid entries is 17";
  choose("german");
  EXPECT_EQ(form.Label10.caption.get(), "Ungültige Einträge: 17");
  choose("german");
  EXPECT_EQ(form.Label10.caption.get(), "Ungültige Einträge: 17");
  form.safeguards = {};
  form.repairOutcome.gone = 42;
  showOutcome(form);
  choose("english");
  EXPECT_EQ(form.OutcomeText.caption.get(), "42 repaired, 0 left, 0 spared");
  form.View2.add("one");
  form.View2.add("two");
  form.FilterBox.setText("one");
  filterResults(form);
  EXPECT_EQ(form.FilterText.caption.get(), "1 of 2 shown");
  choose("german");
  EXPECT_EQ(form.FilterText.caption.get(), "1 von 2 gezeigt");
}

TEST_F(LanguagesTest, AFileWithoutTheFurtherTextsLeavesThemEnglish) {
  makeFile(folder + "\\lang\\zelvreg-full.lang",
           "[Form42]\norubutton1=Los\nchameleonButton4.ToolTipText=Ende\nnone=keine\n");
  makeFile(folder + "\\lang\\zelvreg-older.lang", "[Form42]\ncmd_start=Los\n");
  choose("full");
  EXPECT_EQ(form.orubutton1.caption.get(), "Los");
  EXPECT_EQ(form.orubutton1.toolTip.get(), "Los");
  EXPECT_EQ(form.chameleonButton4.toolTip.get(), "Ende");
  EXPECT_EQ(textOf(form, "none"), "keine");
  choose("older");
  EXPECT_EQ(form.orubutton1.caption.get(), "Start Scanning your registry");
  EXPECT_EQ(form.chameleonButton4.toolTip.get(), "Exit");
  EXPECT_EQ(textOf(form, "none"), "none");
  EXPECT_EQ(form.cmd_start.caption.get(), "Los");
}

TEST_F(LanguagesTest, EnglishTextsOfTheEvidenceAreThoseWithoutALanguageFile) {
  Form42 withoutFile;
  choose("english");
  for (const ReasonRule& rule : reasonRules()) {
    const Evidence evidence{
        .confidence = Confidence::Unsure, .reasons = {rule.reason}, .tested = {}};
    EXPECT_EQ(sentenceOf(form, evidence), rule.sentence);
  }
  for (const Confidence confidence : allConfidences) {
    EXPECT_EQ(wordOf(form, confidence), wordOf(withoutFile, confidence));
  }
}

TEST_F(LanguagesTest, ADescribedRowIsForgottenWithItsLanguage) {
  form.EvidenceText.caption = "Sure. What it names does not exist.";
  choose("german");
  EXPECT_EQ(form.Label7.caption.get(), readLanguageText(form, "Form42", "Label7"));
  EXPECT_EQ(form.EvidenceText.caption.get(), "");
}

TEST_F(LanguagesTest, EachCaptionGoesOnlyToItsControl) {
  std::vector<Caption> all(captions().begin(), captions().end());
  all.insert(all.end(), furtherCaptions().begin(), furtherCaptions().end());
  std::string content = "[Form42]\n";
  for (const Caption& caption : all) {
    content += std::string(caption.key) + "=text of " + std::string(caption.key) + "\n";
  }
  makeFile(folder + "\\lang\\zelvreg-marked.lang", content);
  choose("marked");
  for (const Caption& caption : all) {
    EXPECT_EQ(caption.get(form), "text of " + std::string(caption.key));
  }
}

TEST_F(LanguagesTest, TheFormKnowsFromWhichSideItsLanguageIsRead) {
  int changes = 0;
  form.onLanguage = [&changes] { ++changes; };
  for (const fixture::ShippedLanguage& language : shippedLanguages) {
    choose(language.tag, language.charset);
    EXPECT_EQ(form.readsFromRight, language.tag == std::string_view("arabic")) << language.tag;
  }
  EXPECT_EQ(changes, static_cast<int>(std::size(shippedLanguages)));
  constexpr int hebrew = 177;
  makeFile(folder + "\\lang\\zelvreg-hebrew.lang", "[Form42]\ncmd_start=x\n");
  choose("hebrew", hebrew);
  EXPECT_TRUE(form.readsFromRight);
}

TEST_F(LanguagesTest, CaptionsAreReadInTheStoredCharset) {
  makeFile(folder + "\\lang\\zelvreg-japanese.lang", "[Form42]\ncmd_start=\x83\x5C\x81\x5B\n");
  choose("japanese", 128);
  EXPECT_EQ(form.cmd_start.caption.get(), "ソー");
  choose("polish", 238);
  EXPECT_EQ(form.Label10.caption.get(), "Nieprawidłowe wpisy:");
}

TEST_F(LanguagesTest, TheSuitesFontIsGivenToTheControlsInTheLanguagesCharset) {
  setText(suiteSettings, "font name", "Tahoma");
  setText(suiteSettings, "font size", "11");
  choose("polish", 238);
  const Font expected{.name = "Tahoma", .size = 11, .charset = 238};
  EXPECT_EQ(form.View2.font.get(), expected);
  EXPECT_EQ(form.chameleonButton16.font.get(), expected);
  EXPECT_EQ(form.Label2[4].font.get(), expected);
}

TEST_F(LanguagesTest, AnEmptyFontSettingTakesItsDefault) {
  setText(suiteSettings, "font name", " ");
  setText(suiteSettings, "font size", "");
  choose("english");
  EXPECT_EQ(form.View1.font.get(), (Font{.name = "Segoe UI", .size = 9, .charset = 0}));
}

TEST_F(LanguagesTest, WithoutTheLanguagesFileTheFormKeepsItsCaptions) {
  choose("klingon");
  EXPECT_EQ(form.cmd_start.caption.get(), "Start");
  EXPECT_EQ(form.langFileName, "zelvreg-klingon.lang");
}

TEST_F(LanguagesTest, ChoosingAnEntryStoresItAndShowsItsTexts) {
  Form_Load(form);
  form.pictrlang.visible = true;
  form.lbllanguage[1]->top = 777;
  lbllanguage_Click(form, 1);
  EXPECT_EQ(storedText(choiceKey, "lang"), "german");
  EXPECT_EQ(storedText(choiceKey, "langcode"), "0");
  EXPECT_EQ(storedText(choiceKey, "langindex"), "1");
  EXPECT_FALSE(form.pictrlang.visible);
  EXPECT_EQ(form.imglangselect.top, 777);
  EXPECT_EQ(form.cmd_cancel.caption.get(), "Abbrechen");
  EXPECT_EQ(form.View1.text(1, 0), "Schriftarten");
  EXPECT_EQ(form.View1.count(), 16U);
}

TEST_F(LanguagesTest, ALanguageIsComparedWithTheSystemsCodePageWhenItIsChosen) {
  Form_Load(form);
  lbllanguage_Click(form, 0);
  EXPECT_EQ(form.languageMatchesSystem, GetACP() == 1252);
  lbllanguage_Click(form, 5);
  EXPECT_EQ(form.languageMatchesSystem, GetACP() == 1257);
}

TEST_F(LanguagesTest, AChangeOfLanguageRestoresTheStoredTicksAndLosesTheStatus) {
  setText(ticksKey, "dll", "1");
  Form_Load(form);
  form.View1.setChecked(1, true);
  form.View1.addSubItem(1, statusColumn, "Testing", "ex");
  lbllanguage_Click(form, 2);
  EXPECT_FALSE(form.View1.isChecked(1));
  EXPECT_TRUE(form.View1.isChecked(2));
  EXPECT_EQ(form.View1.text(1, statusColumn), "");
}

TEST_F(LanguagesTest, ThePickerTogglesAndColorsWhatTheMouseIsOver) {
  Form_Load(form);
  EXPECT_FALSE(form.pictrlang.visible);
  form.chameleonButton13.click();
  EXPECT_TRUE(form.pictrlang.visible);
  lbllanguage_MouseMove(form, 3);
  EXPECT_EQ(form.lbllanguage[3]->backColor, 15126960U);
  pictrlang_MouseMove(form);
  EXPECT_EQ(form.lbllanguage[3]->backColor, 0x80000005U);
  form.chameleonButton13.click();
  EXPECT_FALSE(form.pictrlang.visible);
}

TEST_F(LanguagesTest, LoadingFallsBackToEnglishAndCreatesTheRows) {
  setText(ticksKey, "font", "1");
  Form_Load(form);
  EXPECT_EQ(form.langFileName, "zelvreg-english.lang");
  ASSERT_EQ(form.View1.count(), 16U);
  EXPECT_EQ(form.View1.text(1, 0), "Fonts");
  EXPECT_EQ(form.View1.text(16, descriptionColumn),
            "Remembered names of programs that no longer exist");
  EXPECT_EQ(form.View1.text(1, problemsColumn), "0");
  EXPECT_EQ(form.View1.smallIcon(13), "re");
  EXPECT_TRUE(form.View1.isChecked(1));
  EXPECT_FALSE(form.View1.isChecked(2));
}

// Results of many computers are compared by these names, too, also where a file is missing.
TEST_F(LanguagesTest, WithoutAnyLanguageFileTheRowNamesAreEnglish) {
  form.programFolder = "C:\\NoLanguages";
  Form_Load(form);
  ASSERT_EQ(form.View1.count(), 16U);
  const std::string file = folder + "\\lang\\zelvreg-english.lang";
  for (std::size_t row = 1; row <= form.View1.count(); ++row) {
    EXPECT_EQ(form.View1.text(row, 0), ReadLangValue(file, "Form42", categoryAt(row).nameKey, 0));
  }
  EXPECT_EQ(form.cmd_start.caption.get(), "Start");
}

TEST_F(LanguagesTest, ToTheLetterTheRowNamesAreEmptyWithoutAnyLanguageFile) {
  form.programFolder = "C:\\NoLanguages";
  form.safeguardChoices = choicesAsDescribed();
  Form_Load(form);
  EXPECT_EQ(form.View1.text(1, 0), "");
}

TEST_F(LanguagesTest, TheStoredLanguageIsMarkedInThePicker) {
  setText(choiceKey, "lang", "french");
  setText(choiceKey, "langindex", "2");
  form.lbllanguage[0]->height = 200;
  Form_Load(form);
  EXPECT_EQ(form.imglangselect.top, form.lbllanguage[2]->top);
  EXPECT_EQ(form.cmd_cancel.caption.get(), "Annuler");
}

TEST_F(LanguagesTest, TheSmallFormsSpeakTheLanguageThatWasChosen) {
  bindClicks(form);
  choose("german");
  form.chameleonButton5.click();
  form.chameleonButton18.click();
  EXPECT_EQ(form.Form1.Label222[1].caption.get(), readLanguageText(form, "Form1", "Label222(1)"));
  EXPECT_EQ(form.Form1.orubutton1.caption.get(), readLanguageText(form, "Form1", "orubutton1"));
  EXPECT_NE(form.Form1.orubutton1.caption.get(), "Add Key");
  EXPECT_NE(form.frmabout.Label222[1].caption.get(), "About");
  EXPECT_NE(form.frmabout.Label2[0].caption.get(), form.frmabout.Label2[3].caption.get());
}

TEST_F(LanguagesTest, ASmallFormLeavesTheMainFormItsEnglishTexts) {
  Form_Load(form);
  form.safeguards = asDescribed();
  form.chameleonButton5.click();
  EXPECT_EQ(form.langFileName, "zelvreg-.lang");
  form.safeguards = Safeguards();
  form.langFileName = "zelvreg-english.lang";
  form.chameleonButton5.click();
  EXPECT_EQ(form.langFileName, "zelvreg-english.lang");
}

TEST_F(LanguagesTest, TheMenusAreDrawnAsTheLanguageMatchesTheSystem) {
  // No code page matches 255.
  form.langCode = 255;
  compareWithSystem(form);
  EXPECT_EQ(form.menus.drawing, MenuDrawing::InOwnCharset);
  form.langCode = 0;
  compareWithSystem(form);
  EXPECT_EQ(form.menus.drawing,
            form.languageMatchesSystem ? MenuDrawing::InSystemCharset : MenuDrawing::InOwnCharset);
}

}  // namespace
}  // namespace zelvreg
