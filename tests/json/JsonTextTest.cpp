#include "json/JsonText.h"

#include <gtest/gtest.h>

#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

std::string returned(const std::string& text) {
  return textIn(jsonOfText(textOfJson({{"text", text}})).at("text"));
}

TEST(JsonText, TextOfEveryScriptReturns) {
  for (const std::string text : {"Füße", "сервер", "サーバー表", "מחשב", "\U0001F600",
                                 "C:\\u0000d800\\\"x\"", "\n\t\x1b\x7f", "\uFEFF\uFFFD\uFFFF"}) {
    EXPECT_EQ(returned(text), text);
  }
}

TEST(JsonText, HalfOfAPairIsAnEscapeAndReturns) {
  const std::string text = utf8(u"a\xD800z\xDC00\xDBFF");
  EXPECT_NE(textOfJson({{"text", text}}).find(R"("a\ud800z\udc00\udbff")"), std::string::npos);
  EXPECT_EQ(returned(text), text);
  const std::string digits = utf8(
      u"\xD800"
      u"1234\\\xD800\\u0000");
  EXPECT_EQ(returned(digits), digits);
}

TEST(JsonText, ANulAndWhatLooksLikeAnEscapeReturn) {
  const std::string text("\0\\u0000d800\0d800\0", 17);
  EXPECT_NE(textOfJson({{"text", text}}).find(R"("\u0000\\u0000d800\u0000d800\u0000")"),
            std::string::npos);
  EXPECT_EQ(returned(text), text);
}

TEST(JsonText, NamesAndListsAreReachedToo) {
  const std::string half = "\xED\xA0\x80";
  const std::string text = textOfJson({{"list", {half, {{"inner", half}}}}, {"number", 7}});
  EXPECT_TRUE(isPlainUtf8(text));
  const auto object = jsonOfText(text);
  EXPECT_EQ(textIn(object.at("list").at(0)), half);
  EXPECT_EQ(textIn(object.at("list").at(1).at("inner")), half);
  EXPECT_EQ(object.at("number"), 7);
}

TEST(JsonText, WhatOtherProgramsHaveWrittenIsRead) {
  const auto object = jsonOfText(
      R"({"a": "\u00E4\ud83d\uDE00", "b": "\uD83D\u0041", "c": "\u0000", "d": "\ud83d\ud83d\ude00"})");
  EXPECT_EQ(textIn(object.at("a")), "ä\U0001F600");
  EXPECT_EQ(textIn(object.at("b")),
            "\xED\xA0\xBD"
            "A");
  EXPECT_EQ(textIn(object.at("c")), std::string(1, '\0'));
  EXPECT_EQ(textIn(object.at("d")), "\xED\xA0\xBD\U0001F600");
}

TEST(JsonText, WhatIsNoJsonIsRefused) {
  for (const char* text : {"", "\\", "\"\\u\"", "\"\\ud8\"", "\"\\ud800", "{\"a\": \\ud800}",
                           "\"\xED\xA0\x80\"", "\"\\uzzzz\""}) {
    EXPECT_THROW(jsonOfText(text), nlohmann::json::exception) << text;
  }
  EXPECT_THROW(textIn(jsonOfText("7")), nlohmann::json::exception);
}

TEST(JsonText, BytesThatAreNoCharacterAreReplaced) {
  EXPECT_NE(textOfJson({{"text", "a\xFF"}}).find("a\uFFFD"), std::string::npos);
}

}  // namespace
}  // namespace zelvreg
