#include "languages/Texts.h"

#include <gtest/gtest.h>

#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class TextsTest : public fixture::ComputerFixture {
 protected:
  void speak(const std::string& lines) {
    makeFile("C:\\TextsTest\\own.lang", "[Form42]\n" + lines);
    loadTexts(form, LanguageFile("C:\\TextsTest\\own.lang", 0));
  }
};

TEST_F(TextsTest, WithoutALanguageTheyAreEnglish) {
  EXPECT_EQ(textOf(form, "total-found"), "Total Problems Found");
  EXPECT_EQ(textOf(form, "problems-found", {"7"}), "7 Problem(s) Found ");
}

TEST_F(TextsTest, APathKeepsItsOrderInALanguageThatIsReadFromTheRight) {
  form.readsFromRight = true;
  EXPECT_EQ(textOf(form, "implausible", {"C:\\a"}),
            "This is implausible: \xE2\x80\xAA"
            "C:\\a\xE2\x80\xAC.");
}

TEST_F(TextsTest, AreTheLanguagesWhereItHasThemAndElseEnglish) {
  speak("total-found=Alle Probleme\nnone=\n");
  EXPECT_EQ(textOf(form, "total-found"), "Alle Probleme");
  EXPECT_EQ(textOf(form, "none"), "none");
  EXPECT_EQ(textOf(form, "undo-finished"), "Finished Retriving undo data");
  EXPECT_EQ(englishOf("total-found"), "Total Problems Found");
}

TEST_F(TextsTest, ALanguagePutsValuesInItsOwnOrder) {
  speak("fix-outcome=%3, %1, %2 und 100%, %9 %\n");
  EXPECT_EQ(textOf(form, "fix-outcome", {"a", "b", "c"}), "c, a, b und 100%, %9 %");
}

TEST_F(TextsTest, WhatAValueHoldsIsNoPattern) {
  EXPECT_EQ(textOf(form, "entry-details", {"%2", "%3%1", "C:\\%1"}),
            "The registration key \"%2\\%3%1\" contains the application path to \"%3%1\". The path "
            "points to the missing target \"C:\\%1\" and can therefore be deleted.");
}

TEST_F(TextsTest, TheNextLanguageTakesAllOfThem) {
  speak("total-found=Alle Probleme\n");
  speak("none=keine\n");
  EXPECT_EQ(textOf(form, "total-found"), "Total Problems Found");
  EXPECT_EQ(textOf(form, "none"), "keine");
}

}  // namespace
}  // namespace zelvreg
