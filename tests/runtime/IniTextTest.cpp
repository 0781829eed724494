#include "runtime/IniText.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

TEST(IniText, ReadsWhatStandsUnderItsSectionAndName) {
  const IniText ini("outside=0\r\n[One]\r\na=1\r\n; a=2\r\na=3\r\nno setting\n[two]\nA = x=y \n");
  EXPECT_EQ(ini.value("one", "A"), "1");
  EXPECT_EQ(ini.value("Two", "a"), "x=y");
  EXPECT_EQ(ini.value("two", "b"), "");
  EXPECT_EQ(ini.value("three", "a"), "");
  EXPECT_EQ(ini.names("one"), (std::vector<std::string>{"a", "a"}));
}

TEST(IniText, AChangeLeavesAllOtherLines) {
  IniText ini("; made by hand\r\n\r\n[one]\r\na=1\r\n\r\n[two]\r\nb=2\r\n");
  ini.set("ONE", "A", "7");
  ini.set("one", "c", "8");
  ini.set("three", "d", "9");
  ini.remove("two", "B");
  ini.remove("four", "d");
  EXPECT_EQ(ini.text(),
            "; made by hand\r\n\r\n[one]\r\nA=7\r\nc=8\r\n\r\n[two]\r\n[three]\r\nd=9\r\n");
}

TEST(IniText, ATextThatIsReadAndWrittenStaysAsItIs) {
  for (const char* text : {"", "[one]\r\n", "a=1\r\n", "[one]\r\na=1\r\n\r\n[two]\r\n"}) {
    EXPECT_EQ(IniText(text).text(), text);
  }
}

TEST(IniText, EveryTextComesBack) {
  for (const char* text :
       {"", " ", " both ends ", "a\r\nb=1\r\n[c]", "=", "[x]", "; no comment", "100%", "%41",
        "\xE6\x97\xA5\xE6\x9C\xAC", "\xED\xA0\x80", "\"quoted\"", "\t", "a\\b"}) {
    IniText ini("");
    ini.set("one", text, text);
    ini.set("one", "last", "still there");
    const IniText again(ini.text());
    EXPECT_EQ(again.value("one", text), text);
    EXPECT_EQ(again.names("one"), (std::vector<std::string>{text, "last"}));
    EXPECT_EQ(again.value("one", "last"), "still there");
  }
}

TEST(IniText, WhatIsNoEscapeStandsForItself) {
  const IniText ini("[a]\nx=50% of %zz and %4\n");
  EXPECT_EQ(ini.value("a", "x"), "50% of %zz and %4");
}

}  // namespace
}  // namespace zelvreg
