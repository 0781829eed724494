#include "machine/files/PathName.h"

#include <gtest/gtest.h>

#include "machine/files/NamePattern.h"

namespace zelvreg::machine {
namespace {

const PathName& programFolder() {
  static const PathName folder = parseFullPath(u"C:\\Program Files\\zelvreg");
  return folder;
}

// "C:\a\b", or the error's number.
std::u16string read(std::u16string_view text) {
  const PathName path = parsePath(text, programFolder());
  if (path.error == ERROR_INVALID_NAME) return u"invalid";
  if (path.error == ERROR_PATH_NOT_FOUND) return u"no path";
  return static_cast<char16_t>(path.drive) + path.names;
}

TEST(PathName, BothSlashesSeparateAndSeveralCountAsOne) {
  EXPECT_EQ(read(u"c:\\a/b"), u"C\\a\\b");
  EXPECT_EQ(read(u"C:\\a\\\\b\\"), u"C\\a\\b");
  EXPECT_TRUE(parsePath(u"C:\\a\\", programFolder()).endsInSeparator);
  EXPECT_FALSE(parsePath(u"C:\\a", programFolder()).endsInSeparator);
}

TEST(PathName, DropsBlanksAndDotsAtTheEndOfNames) {
  EXPECT_EQ(read(u"C:\\a. .\\b.txt  "), u"C\\a\\b.txt");
  EXPECT_EQ(read(u"C:\\ a"), u"C\\ a");
  EXPECT_EQ(read(u"C:\\.a"), u"C\\.a");
}

TEST(PathName, WhatFollowsPlainNamesIsReadAsAnywhere) {
  EXPECT_EQ(read(u"C:\\one\\two.x/three four\\..\\five. \\\\six."), u"C\\one\\two.x\\five\\six");
  EXPECT_EQ(read(u"C:\\one\\..\\ two\\.\\three/"), u"C\\ two\\three");
  EXPECT_EQ(read(u"C:\\one\\two\\. ."), u"C\\one\\two");
  EXPECT_EQ(read(u"C:\\one\\two .x\\\x00E4\x4E2D"), u"C\\one\\two .x\\\x00E4\x4E2D");
  EXPECT_EQ(read(u"C:\\one\\two.\\three|"), u"invalid");
}

TEST(PathName, ResolvesDots) {
  EXPECT_EQ(read(u"C:\\a\\.\\b\\..\\c"), u"C\\a\\c");
  EXPECT_EQ(read(u"C:\\..\\..\\a"), u"C\\a");
}

TEST(PathName, IsTakenFromTheProgramsFolderWithoutADrive) {
  EXPECT_EQ(read(u"x.txt"), u"C\\Program Files\\zelvreg\\x.txt");
  EXPECT_EQ(read(u"..\\x.txt"), u"C\\Program Files\\x.txt");
  EXPECT_EQ(read(u"\\x.txt"), u"C\\x.txt");
  EXPECT_EQ(read(u"C:x.txt"), u"C\\Program Files\\zelvreg\\x.txt");
  EXPECT_EQ(read(u"D:x.txt"), u"D\\x.txt");
}

TEST(PathName, EndsAtItsFirstNul) {
  EXPECT_EQ(read(std::u16string_view(u"C:\\a\0b", 6)), u"C\\a");
  EXPECT_EQ(read(std::u16string_view(u"\0C:\\a", 5)), u"no path");
}

TEST(PathName, HasNoWildcardsAndNoOtherForbiddenCharacters) {
  for (const char16_t* text : {u"C:\\a*", u"C:\\a?\\b", u"C:\\\"a\"", u"C:\\<a", u"C:\\a>",
                               u"C:\\a|b", u"C:\\a\tb", u"C:\\a:b", u"CC:\\a", u" C:\\a"}) {
    EXPECT_EQ(read(text), u"invalid");
  }
}

TEST(PathName, ThereIsNoNetworkAndNoPathInNothing) {
  EXPECT_EQ(read(u""), u"no path");
  EXPECT_EQ(read(u"\\\\server\\share\\x"), u"no path");
  EXPECT_EQ(read(u"//server/share"), u"no path");
  EXPECT_EQ(read(u"\\\\?\\UNC\\server\\share"), u"no path");
}

TEST(PathName, PassesOverTheMarkOfALongPath) { EXPECT_EQ(read(u"\\\\?\\C:\\a"), u"C\\a"); }

TEST(NamePattern, StarStandsForAnyText) {
  EXPECT_TRUE(fitsPattern(u"A.TXT", u"*"));
  EXPECT_TRUE(fitsPattern(u"A.TXT", u"*.TXT"));
  EXPECT_TRUE(fitsPattern(u"A.B.TXT", u"A*.TXT"));
  EXPECT_TRUE(fitsPattern(u"AAB", u"*AB"));
  EXPECT_FALSE(fitsPattern(u"A.TXTX", u"*.TXT"));
  EXPECT_FALSE(fitsPattern(u"", u"A*"));
}

TEST(NamePattern, StarDotStarFitsNamesWithoutADot) {
  EXPECT_TRUE(fitsPattern(u"README", u"*.*"));
  EXPECT_FALSE(fitsPattern(u"README", u"R*.*"));
}

TEST(NamePattern, QuestionMarkStandsForOneCharacterOrForNoneAtAnEnd) {
  EXPECT_TRUE(fitsPattern(u"A1", u"A?"));
  EXPECT_TRUE(fitsPattern(u"A", u"A?"));
  EXPECT_TRUE(fitsPattern(u"A.TXT", u"A??.TXT"));
  EXPECT_FALSE(fitsPattern(u"A12", u"A?"));
  EXPECT_FALSE(fitsPattern(u"12A", u"?A"));
}

}  // namespace
}  // namespace zelvreg::machine
