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
           Case{"a:b c.exe x", "a:b c.exe", "x"},
           Case{"a.b c.exe x", "a.b c.exe", "x"},
           Case{"a/b c.exe x", "a/b c.exe", "x"},
           Case{"a.js x", "a.js", "x"},
           Case{"a.exe:x", "a.exe", ":x"},
           Case{"a.exe\tx", "a.exe", "\tx"},
           Case{"a.exe*", "a.exe", "*"},
           Case{"a.exe-x b.dll", "a.exe-x b.dll", ""},
           Case{"\"", "", ""},
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
           Case{"\\??\\unc\\server\\a", "\\\\server\\a"},
           Case{"\\\\.\\C:\\a", "C:\\a"},
           Case{"//?/C:/a", "C:\\a"},
           Case{"\\\\?\\C:\\..\\a", "\\\\?\\C:\\..\\a"},
           Case{"systemrootx\\a", "systemrootx\\a"},
           Case{"FILE://C:/%61%6A%6f%5a%5F%30%39", "C:\\ajoZ_09"},
           Case{"file:///C:/%5G%5g%@1%x1%2", "C:\\%5G%5g%@1%x1%2"},
           Case{"file:///C:/a%2", "C:\\a%2"},
           Case{"file:///C:/%41", "C:\\A"},
           Case{"file://", "\\\\"},
           Case{"@", ""},
       }) {
    EXPECT_EQ(plainPath(text, "W:\\Win"), path) << text;
  }
}

TEST(CommandText, APathOnADriveHasOneSpelling) {
  for (const auto& [text, path] : std::vector<std::pair<std::string, std::string>>{
           {"C:/a/b", "C:\\a\\b"},        {"C:/", "C:\\"},
           {"C:\\a\\.\\b", "C:\\a\\b"},   {"C:\\.\\a", "C:\\a"},
           {"C:\\a\\..\\b", "C:\\b"},     {"C:\\a\\b\\..\\..\\c", "C:\\c"},
           {"C:\\..\\a", "C:\\a"},        {"C:\\a\\..", "C:\\"},
           {"C:\\ab\\cd\\..", "C:\\ab"},  {"C:\\ab\\cd\\..\\", "C:\\ab\\"},
           {"C:\\a.\\b", "C:\\a\\b"},     {"C:\\a \\b", "C:\\a\\b"},
           {"C:\\a\\\\b", "C:\\a\\b"},    {"C:\\\\a", "C:\\a"},
           {"C:\\a\\...\\b", "C:\\a\\b"}, {"C:\\a\\", "C:\\a\\"},
           {"C:\\a.b", "C:\\a.b"},        {"C:\\a\\.b", "C:\\a\\.b"},
           {"a/b\\..\\c", "a/b\\..\\c"},  {"C:\\a.", "C:\\a."},
       }) {
    EXPECT_EQ(plainPath(text, "W:\\Win"), path) << text;
  }
}

TEST(CommandText, ADriveIsALetterAColonAndASeparator) {
  for (const char* path : {"C:\\", "z:/x", "A:\\b"}) {
    EXPECT_TRUE(isDrivePath(path)) << path;
  }
  for (const char* path : {"", "C:", "C:a", "1:\\", "C\\:", "[:\\"}) {
    EXPECT_FALSE(isDrivePath(path)) << path;
  }
}

TEST(CommandText, NamesStandBetweenSeparatorsOfBothKinds) {
  EXPECT_EQ(fileNameIn("a\\b/c"), "c");
  EXPECT_EQ(fileNameIn("a/b\\"), "");
  EXPECT_EQ(fileNameIn("\\a"), "a");
  EXPECT_EQ(fileNameIn("a"), "a");
  EXPECT_EQ(nextSeparator("a\\b/c"), 1U);
  EXPECT_EQ(nextSeparator("a\\b/c", 1), 1U);
  EXPECT_EQ(nextSeparator("a\\b/c", 2), 3U);
  EXPECT_EQ(nextSeparator("a\\b/c", 4), std::string_view::npos);
  EXPECT_EQ(nextSeparator("", 0), std::string_view::npos);
}

TEST(CommandText, AFileShowsWhereItEnds) {
  for (const char* path : {"C:\\a.EXE", "a.js", "a.b.dll", ".ico"}) {
    EXPECT_TRUE(hasFileEnding(path)) << path;
    EXPECT_TRUE(showsFileEnd(path)) << path;
  }
  for (const char* path : {"a", "a.exe\\b", "a.jsx", "a.exee", "a.", "a.e", ""}) {
    EXPECT_FALSE(hasFileEnding(path)) << path;
    EXPECT_FALSE(showsFileEnd(path)) << path;
  }
  EXPECT_FALSE(hasFileEnding("a.exe,1"));
  EXPECT_TRUE(showsFileEnd("a.exe,1"));
}

TEST(CommandText, ACodeIsFoundWhereverItStands) {
  const std::string code = "{01234567-89ab-CDEF-0123-456789abcdef}";
  EXPECT_EQ(guidIn("x {y} " + code + " z"), code);
  EXPECT_EQ(guidIn("{01234567-89ab-CDEF-0123-456789abcdeg}"), "");
  EXPECT_EQ(guidIn("{x" + code), code);
  EXPECT_EQ(guidIn("{01234567-89ab-CDEF-0123-456789abcde:}"), "");
  EXPECT_EQ(guidIn("{01234567-89ab-CDEF-0123-456789abcde@}"), "");
  EXPECT_EQ(guidIn("{01234567x89ab-CDEF-0123-456789abcdef}"), "");
  EXPECT_EQ(guidIn(code.substr(0, 37)), "");
  EXPECT_EQ(guidIn("{"), "");
}

}  // namespace
}  // namespace zelvreg
