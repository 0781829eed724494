#include <windows.h>

#include "support/MachineFixture.h"

namespace zelvreg::fixture {
namespace {

class ApiCaseTest : public MachineFixture {
 protected:
  static std::string lower(std::string text) {
    CharLowerBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
  }
  static std::string upper(std::string text) {
    CharUpperBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
  }
};

TEST_F(ApiCaseTest, ChangesTheLettersOfTheCodePage) {
  start();
  EXPECT_EQ(lower("\xC4"
                  "BC \xDF"),
            "\xE4"
            "bc \xDF");
  EXPECT_EQ(upper("\xE4"
                  "bc \xDF"),
            "\xC4"
            "BC \xDF");
}

TEST_F(ApiCaseTest, ALetterWithoutTheOtherCaseInThePageStays) {
  setting("codepage", "1252");
  start();
  EXPECT_EQ(upper("\xB5"), "\xB5");
  EXPECT_EQ(upper("\xFF"), "\x9F");
}

TEST_F(ApiCaseTest, EachCodePageHasItsOwnLetters) {
  setting("codepage", "1250");
  start();
  EXPECT_EQ(lower("\xA3\xD3"
                  "D\xAC"),
            "\xB3\xF3"
            "d\xAC");
}

TEST_F(ApiCaseTest, TwoByteCharactersKeepTheirBytes) {
  setting("codepage", "932");
  start();
  EXPECT_EQ(lower("\x83\x41"
                  "AB"),
            "\x83\x41"
            "ab");
}

}  // namespace
}  // namespace zelvreg::fixture
