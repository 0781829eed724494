// Only the emulated computer can have each code page.
#include "runtime/CodePageText.h"
#include "runtime/OwnText.h"
#include "support/MachineFixture.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

const std::string mark = "\xEF\xBB\xBF";

// A text that the page has, and its bytes there.
struct Page {
  const char* number;
  const char* text;
  const char* bytes;
};

constexpr Page pages[] = {
    {"932", "ソ表ポ予", "\x83\x5C\x95\x5C\x83\x7C\x97\x5C"},
    {"936", "會服务器", "\x95\xFE\xB7\xFE\xCE\xF1\xC6\xF7"},
    {"949", "서버", "\xBC\xAD\xB9\xF6"},
    {"950", "育服務", "\xA8\x7C\xAA\x41\xB0\xC8"},
    {"1251", "Иван", "\xC8\xE2\xE0\xED"},
    {"1252", "Füße", "F\xFC\xDF\x65"},
    {"1255", "שלום", "\xF9\xEC\xE5\xED"},
    {"65001", "Füße サーバー \U0001F600", "Füße サーバー \U0001F600"},
};

class OwnTextOfPage : public fixture::MachineFixture, public ::testing::WithParamInterface<Page> {
 protected:
  OwnTextOfPage() {
    setting("codepage", GetParam().number);
    start();
  }
};

TEST_P(OwnTextOfPage, WhatThePageHasIsWrittenInIt) {
  EXPECT_EQ(ownBytes(GetParam().text), GetParam().bytes);
  EXPECT_EQ(ownText(GetParam().bytes), GetParam().text);
  EXPECT_EQ(codePageBytes(GetParam().text), GetParam().bytes);
}

TEST_P(OwnTextOfPage, OneCharacterThatItLacksMakesAllOfItUtf8) {
  const std::string text = std::string(GetParam().text) + "\xED\xA0\x80";
  EXPECT_EQ(ownBytes(text), mark + text);
  EXPECT_EQ(ownText(mark + text), text);
  EXPECT_EQ(exactCodePageBytes(text), std::nullopt);
}

TEST_P(OwnTextOfPage, AnAppendedTextThatItHasLeavesTheBytesBeforeIt) {
  EXPECT_EQ(appendedOwnBytes("first\r\n", GetParam().text),
            std::string("first\r\n") + GetParam().bytes);
}

TEST_P(OwnTextOfPage, AnAppendedTextThatItLacksMakesTheWholeFileUtf8) {
  EXPECT_EQ(appendedOwnBytes(std::string(GetParam().bytes) + "\r\n", "\xED\xA0\x80"),
            mark + GetParam().text + "\r\n\xED\xA0\x80");
}

TEST_P(OwnTextOfPage, HalfACharacterTakesNothingOfTheNextLineAlong) {
  EXPECT_TRUE(ownText("one\x81\ntwo").ends_with("\ntwo"));
  EXPECT_TRUE(contains(ownText("one\x81\r\ntwo\x81"), "\ntwo"));
}

INSTANTIATE_TEST_SUITE_P(Pages, OwnTextOfPage, ::testing::ValuesIn(pages),
                         [](const auto& page) { return std::string(page.param.number); });

class OwnTextNative : public fixture::MachineFixture {};

TEST_F(OwnTextNative, WhatBeginsLikeTheMarkIsMarked) {
  setting("codepage", "1252");
  start();
  EXPECT_EQ(ownBytes("ï»¿x"), mark + "ï»¿x");
  EXPECT_EQ(appendedOwnBytes("\xEF\xBB", "¿x"), mark + "ï»¿x");
  EXPECT_EQ(ownBytes("x ï»¿"), "x \xEF\xBB\xBF");
}

TEST_F(OwnTextNative, WhatOnlyLooksAlikeIsNotTakenForTheSame) {
  setting("codepage", "1252");
  start();
  for (const char* text : {"Ａ", "a\u0301", "∞", "?\u0100"}) {
    EXPECT_EQ(ownBytes(text), mark + text);
  }
  EXPECT_EQ(codePageBytes("Ā ?"), "? ?");
}

}  // namespace
}  // namespace zelvreg
