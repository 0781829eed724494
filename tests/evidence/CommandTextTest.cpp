#include "evidence/CommandText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zelvreg {
namespace {

using Texts = std::vector<std::string>;

TEST(CommandText, TheProgramEndsAtItsQuoteItsExtensionOrItsFirstWord) {
  struct Case {
    const char* text;
    const char* program;
    const char* arguments;
  };
  for (const auto& [text, program, arguments] : {
           Case{"", "", ""},
           Case{"\"C:\\a b\\c.exe\" /x", "C:\\a b\\c.exe", "/x"},
           Case{"\"C:\\a b\\c.exe\"/x", "C:\\a b\\c.exe", "/x"},
           Case{"\"C:\\a b\\c.exe", "C:\\a b\\c.exe", ""},
           Case{"C:\\a b\\c.exe /x y.exe", "C:\\a b\\c.exe", "/x y.exe"},
           Case{"C:\\a.exe.old\\c.EXE,3", "C:\\a.exe.old\\c.EXE", ",3"},
           Case{"cmd /c C:\\a.exe", "cmd", "/c C:\\a.exe"},
           Case{"notepad", "notepad", ""},
       }) {
    const CommandParts parts = commandParts(text);
    EXPECT_EQ(parts.program, program) << text;
    EXPECT_EQ(parts.arguments, arguments) << text;
  }
}

TEST(CommandText, ACommandIsReadUpToEachBlankAsTheSystemTriesIt) {
  EXPECT_EQ(fileReadings("C:\\a b\\c d /x", TextIs::Command),
            (Texts{"C:\\a b\\c d /x", "C:\\a", "C:\\a b\\c", "C:\\a b\\c d"}));
  EXPECT_EQ(fileReadings("C:\\a b\\c.exe /x", TextIs::Command).front(), "C:\\a b\\c.exe");
}

TEST(CommandText, APathIsNotReadUpToItsBlanks) {
  EXPECT_EQ(fileReadings("C:\\a b\\c.dll,-3", TextIs::Path),
            (Texts{"C:\\a b\\c.dll", "C:\\a b\\c.dll,-3"}));
}

TEST(CommandText, QuotesMayStandAroundAPartOnly) {
  const Texts readings = fileReadings("C:\\\"a b\"\\c.exe /x", TextIs::Command);
  EXPECT_NE(std::ranges::find(readings, "C:\\a b\\c.exe"), readings.end());
}

TEST(CommandText, ALongTextHasAnEndOfReadings) {
  std::string text = "C:\\";
  for (int word = 0; word < 10'000; ++word) {
    text += "x ";
  }
  EXPECT_EQ(fileReadings(text, TextIs::Command).size(), mostReadings);
}

TEST(CommandText, PrefixesOfTheKernelAndOfUrlsAreTakenOff) {
  struct Case {
    const char* text;
    const char* path;
  };
  for (const auto& [text, path] : {
           Case{" C:\\a ", "C:\\a"},
           Case{"\\??\\C:\\a", "C:\\a"},
           Case{"\\\\?\\C:\\a", "C:\\a"},
           Case{"\\\\?\\UNC\\server\\a", "\\\\server\\a"},
           Case{"\\SystemRoot\\a", "W:\\Win\\a"},
           Case{"SYSTEMROOT\\a", "W:\\Win\\a"},
           Case{"file:///C:/a%20b/c", "C:\\a b\\c"},
           Case{"file://server/a", "\\\\server\\a"},
           Case{"@C:\\a.dll", "C:\\a.dll"},
           Case{"a.exe", "a.exe"},
       }) {
    EXPECT_EQ(plainPath(text, "W:\\Win"), path) << text;
  }
}

TEST(CommandText, ACodeIsFoundWhereverItStands) {
  const std::string code = "{01234567-89ab-CDEF-0123-456789abcdef}";
  EXPECT_EQ(guidIn("x {y} " + code + " z"), code);
  EXPECT_EQ(guidIn("{01234567-89ab-CDEF-0123-456789abcdeg}"), "");
  EXPECT_EQ(guidIn("{"), "");
}

}  // namespace
}  // namespace zelvreg
