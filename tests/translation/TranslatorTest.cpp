#include "translation/Translator.h"

#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "support/ComputerFixture.h"
#include "support/ShippedLanguages.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

const std::string folder = "C:\\TranslatorTest";

class TranslatorTest : public fixture::ComputerFixture {
 protected:
  TranslatorTest() {
    makeFile(folder + "\\lang\\data.lang", fixture::languageAsset("data.lang"));
    for (const fixture::ShippedLanguage& language : fixture::shippedLanguages) {
      const std::string name = fixture::fileOfLanguage(language);
      makeFile(pathOf(name), fixture::languageAsset(name));
    }
    form.programFolder = folder;
    form.dialogs.show = [this](const UserMessage& message) {
      asked.push_back(message.text);
      return message.isQuestion ? answer : Answer::Ok;
    };
  }

  static std::string pathOf(const std::string& name) { return folder + "\\lang\\" + name; }
  static std::string without(const std::string& name, std::string_view line) {
    return replaceAll(fixture::languageAsset(name), line, "");
  }
  static std::size_t rowOf(const Translator& translator, std::string_view key) {
    for (std::size_t row = 1; row <= translator.form.list.count(); ++row) {
      if (translator.form.list.text(row, keyColumn) == "Form42 / " + std::string(key)) {
        return row;
      }
    }
    return 0;
  }

  std::vector<std::string> asked;
  Answer answer = Answer::Yes;
};

TEST_F(TranslatorTest, ShowsEachTextBesideEnglish) {
  Translator translator(form);
  translator.open(pathOf("zelvreg-polish.lang"));
  const ListView& list = translator.form.list;
  const std::size_t row = rowOf(translator, "a1");
  EXPECT_EQ(list.text(row, englishColumn), "Fonts");
  EXPECT_EQ(list.text(row, translationColumn), "Czcionki");
  EXPECT_EQ(list.text(row, remarkColumn), "");
  EXPECT_EQ(translator.form.charset.text(), "238 (1250)");
  EXPECT_EQ(translator.form.language.text(), "Polski");
  EXPECT_FALSE(translator.form.utf8.value);
  EXPECT_EQ(translator.form.count.caption.get(),
            "0 of " + std::to_string(list.count()) + " texts need work");
}

TEST_F(TranslatorTest, AMissingTextIsFoundTranslatedSavedAndShownByTheProgram) {
  makeFile(pathOf("zelvreg-german.lang"),
           without("zelvreg-german.lang", "cmd_fix=Auswahl reparieren\r\n"));
  Translator translator(form);
  translator.form.language.setListIndex(1);
  const std::size_t row = rowOf(translator, "cmd_fix");
  EXPECT_EQ(translator.form.list.selectedRow(), row);
  EXPECT_EQ(translator.form.remark.caption.get(), "Missing");
  EXPECT_EQ(translator.markOf(row), "unsure");
  translator.form.translation.setText("Jetzt reparieren");
  EXPECT_EQ(translator.form.list.text(row, translationColumn), "Jetzt reparieren");
  EXPECT_EQ(translator.markOf(row), "");
  translator.form.save.click();
  EXPECT_TRUE(asked.empty());
  bindClicks(form);
  loadavlang(form);
  lbllanguage_Click(form, 1);
  EXPECT_EQ(form.cmd_fix.caption.get(), "Jetzt reparieren");
  EXPECT_EQ(form.cmd_start.caption.get(), "Start");
}

TEST_F(TranslatorTest, TheFilterShowsOnlyWhatNeedsWork) {
  Translator translator(form);
  translator.open(pathOf("zelvreg-german.lang"));
  const std::size_t row = rowOf(translator, "a1");
  translator.select(row);
  translator.form.translation.setText("Schriftarten und alles, was ihnen irgendwie gleicht");
  EXPECT_EQ(translator.form.remark.caption.get(), "Too long for its place");
  EXPECT_EQ(translator.markOf(row), "likely");
  translator.form.onlyWork.value = true;
  translator.form.onlyWork.click();
  EXPECT_FALSE(translator.form.list.isHidden(row));
  EXPECT_EQ(translator.form.list.hiddenCount(), translator.form.list.count() - 1);
  translator.form.onlyWork.value = false;
  translator.form.onlyWork.click();
  EXPECT_EQ(translator.form.list.hiddenCount(), 0U);
}

TEST_F(TranslatorTest, WhatTheCodePageLacksIsSavedInUtf8IfTheUserWantsIt) {
  Translator translator(form);
  translator.open(pathOf("zelvreg-german.lang"));
  translator.select(rowOf(translator, "a1"));
  translator.form.translation.setText("Шрифты");
  answer = Answer::No;
  translator.form.save.click();
  EXPECT_EQ(asked.size(), 1U);
  EXPECT_EQ(LanguageFile(pathOf("zelvreg-german.lang"), 0).value("Form42", "a1"), "Schriftarten");
  answer = Answer::Yes;
  translator.form.save.click();
  EXPECT_EQ(LanguageFile(pathOf("zelvreg-german.lang"), 0).value("Form42", "a1"), "Шрифты");
  EXPECT_TRUE(translator.form.utf8.value);
}

TEST_F(TranslatorTest, UnsavedChangesAreNotLostWithoutAQuestion) {
  Translator translator(form);
  translator.form.isOpen = true;
  translator.open(pathOf("zelvreg-german.lang"));
  translator.select(1);
  translator.form.translation.setText("Neu");
  answer = Answer::No;
  translator.form.close.click();
  EXPECT_TRUE(translator.form.isOpen);
  translator.form.language.setListIndex(5);
  EXPECT_EQ(translator.form.language.text(), "Deutsch");
  EXPECT_EQ(translator.form.list.text(1, translationColumn), "Neu");
  EXPECT_EQ(asked.size(), 2U);
  answer = Answer::Yes;
  translator.form.close.click();
  EXPECT_FALSE(translator.form.isOpen);
}

TEST_F(TranslatorTest, ANewLanguageIsPutIntoTheListBesideItsFile) {
  Translator translator(form);
  translator.form.create.click();
  translator.select(rowOf(translator, "cmd_start"));
  translator.form.translation.setText("Zahájit");
  translator.form.name.setText("Čeština");
  translator.form.charset.setText("238 (1250)");
  translator.askForFile = [](bool isToSave, const std::string&) {
    return isToSave ? pathOf("zelvreg-czech.lang") : std::string();
  };
  translator.form.save.click();
  EXPECT_TRUE(asked.empty());
  const auto list = readLanguageList(pathOf("data.lang"));
  EXPECT_EQ(list.back(), (LanguageFields{"Čeština", "238", "czech"}));
  EXPECT_EQ(list.front(), (LanguageFields{"English", "0", "english"}));
  bindClicks(form);
  loadavlang(form);
  lbllanguage_Click(form, list.size() - 1);
  EXPECT_EQ(form.cmd_start.caption.get(), "Zahájit");
}

TEST_F(TranslatorTest, AFileThatCannotBeReadOrWrittenIsTold) {
  Translator translator(form);
  translator.open(pathOf("zelvreg-none.lang"));
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_TRUE(contains(asked.front(), "zelvreg-none.lang"));
  translator.open(pathOf("zelvreg-german.lang"));
  translator.askForFile = [](bool, const std::string&) {
    return std::string("C:\\no such folder\\zelvreg-german.lang");
  };
  translator.form.saveAs.click();
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_TRUE(contains(asked.back(), "no such folder"));
  EXPECT_TRUE(contains(translator.form.fileInfo.caption.get(), pathOf("zelvreg-german.lang")));
}

TEST_F(TranslatorTest, SpeaksTheLanguageOfTheProgram) {
  bindClicks(form);
  loadavlang(form);
  lbllanguage_Click(form, 1);
  Translator translator(form);
  EXPECT_EQ(translator.form.title.caption.get(), "Das Programm übersetzen");
  EXPECT_EQ(translator.told("not-read", {"x"}), "Die Datei x konnte nicht gelesen werden.");
}

}  // namespace
}  // namespace zelvreg
