#include "json/JsonSource.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "json/JsonPieces.h"
#include "json/JsonText.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

std::string readable(const std::string& json) {
  std::istringstream stream(json);
  JsonSource source(stream);
  std::string text;
  for (; !source.atEnd(); source.advance()) {
    text += source.current();
  }
  return text;
}

TEST(JsonSource, PlainTextStaysAsItIs) {
  for (const std::string text :
       {"", "{}", "\"\\u00e4\\ud83d\\uDE00\\n\\\\u0000\"", "\\", "\"\\ud8"}) {
    EXPECT_EQ(readable(text), text);
  }
  EXPECT_EQ(readable("\xEF\xBB\xBF[1]"), "[1]");
}

TEST(JsonSource, WhatTheLibraryCannotReadIsReplacedWhereverAPartEnds) {
  const std::string half = "\\ud800";
  for (std::size_t before = 65536 - 2 * longestPiece; before < 65536 + 2; ++before) {
    const std::string front(before, 'x');
    ASSERT_EQ(readable(front + half + "\\ud83d\\ude00" + half + "y"),
              front + "\\u0000d800\\ud83d\\ude00\\u0000d800y");
  }
}

TEST(JsonSource, TextsReturnOneValueBehindTheOther) {
  const std::string text = utf8(u"a\xD800z");
  std::istringstream stream(textOfJson({{"text", text}}) + " \n" + lineOfJson({{"text", "b"}}));
  JsonSource source(stream);
  std::vector<std::string> texts;
  while (source.findNext()) {
    nlohmann::json value;
    nlohmann::detail::json_sax_dom_parser<nlohmann::json> builder(value);
    ASSERT_TRUE(nlohmann::json::sax_parse(JsonPlace(source), JsonPlace(), &builder,
                                          nlohmann::json::input_format_t::json, false));
    texts.push_back(textIn(value.at("text")));
  }
  EXPECT_EQ(texts, (std::vector<std::string>{text, "b"}));
}

}  // namespace
}  // namespace zelvreg
