#include "desktop/AccessKeys.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

using Captions = std::vector<std::string>;

TEST(AccessKeys, AreTheFirstLettersAsLongAsTheyAreFree) {
  EXPECT_EQ(withAccessKeys({"Start", "Exclusions", "Cancel"}),
            (Captions{"&Start", "&Exclusions", "&Cancel"}));
}

TEST(AccessKeys, ABeginningOfAnotherWordIsBetterThanALetterInTheMiddle) {
  EXPECT_EQ(withAccessKeys({"Select All", "Select None", "Select"}),
            (Captions{"&Select All", "Select &None", "S&elect"}));
}

TEST(AccessKeys, UpperAndLowerCaseAreOneKey) {
  EXPECT_EQ(withAccessKeys({"Über", "über"}), (Captions{"&Über", "ü&ber"}));
  EXPECT_EQ(withAccessKeys({"Пуск", "пуск"}), (Captions{"&Пуск", "п&уск"}));
}

TEST(AccessKeys, WhereAllLettersAreTakenThereIsNone) {
  EXPECT_EQ(withAccessKeys({"ab", "ab", "ab", "...", ""}),
            (Captions{"&ab", "a&b", "ab", "...", ""}));
}

TEST(AccessKeys, AMarkThatACaptionBringsStaysAndIsNotGivenTwice) {
  EXPECT_EQ(withAccessKeys({"Yonder", "&Yes", "&No"}), (Captions{"Y&onder", "&Yes", "&No"}));
}

TEST(AccessKeys, AScriptOfManyCharactersGetsALetterBehind) {
  EXPECT_EQ(withAccessKeys({"開始", "終了", "Abc"}), (Captions{"開始(&A)", "終了(&B)", "Ab&c"}));
}

TEST(AccessKeys, AfterTheLettersBehindComeDigits) {
  const std::vector<std::string> marked = withAccessKeys(Captions(28, "開始"));
  EXPECT_EQ(marked[25], "開始(&Z)");
  EXPECT_EQ(marked[26], "開始(&1)");
  EXPECT_EQ(marked[27], "開始(&2)");
}

TEST(AccessKeys, AnAndSignStaysText) {
  EXPECT_EQ(withAccessKeys({"Cut & paste", "A&&B"}), (Captions{"&Cut && paste", "&A&&B"}));
}

}  // namespace
}  // namespace zelvreg::desktop
