#include "machine/computer/ProfileFile.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

using Names = std::vector<std::u16string>;

constexpr std::string_view text =
    "; first\r\n[One]\r\n a = 1 \r\nB=\"x\"\r\n; inside\r\n\r\n[two]\r\nc=\r\nflag\r\n";

ProfileFile profile(std::string_view content) { return {content, sharedCodePage(1252)}; }

TEST(ProfileFile, FindsSectionsAndKeysInAnyCase) {
  const ProfileFile file = profile(text);
  EXPECT_EQ(file.value(u"ONE", u"A"), u"1");
  EXPECT_EQ(file.value(u"one", u"b"), u"\"x\"");
  EXPECT_EQ(file.value(u"Two", u"C"), u"");
  EXPECT_FALSE(file.value(u"one", u"c"));
  EXPECT_FALSE(file.value(u"three", u"a"));
  EXPECT_EQ(profile("[\xC4]\n\xD6=1").value(u"\u00E4", u"\u00F6"), u"1");
}

TEST(ProfileFile, ListsWhatItHolds) {
  const ProfileFile file = profile(text);
  EXPECT_EQ(file.sections(), (Names{u"One", u"two"}));
  EXPECT_EQ(file.keys(u"one"), (Names{u"a", u"B"}));
  EXPECT_EQ(file.entries(u"one"), (Names{u"a=1", u"B=\"x\""}));
  EXPECT_EQ(file.entries(u"two"), (Names{u"c=", u"flag"}));
  EXPECT_EQ(file.keys(u"two"), Names{u"c"});
}

TEST(ProfileFile, ReadsLinesWithAnyEndAndAHeadThatIsNotClosed) {
  EXPECT_EQ(profile("[a\nx=1").value(u"a", u"x"), u"1");
  EXPECT_EQ(profile("[a]b\r\nx=1").value(u"a", u"x"), u"1");
  EXPECT_TRUE(profile("").sections().empty());
}

TEST(ProfileFile, TheFirstOfTwoOfOneNameCounts) {
  const ProfileFile file = profile("[a]\nx=1\nX=2\n[A]\nx=3\ny=4\n");
  EXPECT_EQ(file.value(u"a", u"x"), u"1");
  EXPECT_FALSE(file.value(u"a", u"y"));
}

TEST(ProfileFile, ReplacesAValueInItsPlace) {
  ProfileFile file = profile(text);
  file.set(u"ONE", u"A", u"2");
  EXPECT_EQ(file.content(),
            "; first\r\n[One]\r\nA=2\r\nB=\"x\"\r\n; inside\r\n\r\n[two]\r\nc=\r\nflag\r\n");
}

TEST(ProfileFile, ANewKeyComesAfterTheLastLineOfItsSection) {
  ProfileFile file = profile(text);
  file.set(u"one", u"new", u"v");
  EXPECT_EQ(
      file.content(),
      "; first\r\n[One]\r\n a = 1 \r\nB=\"x\"\r\n; inside\r\nnew=v\r\n\r\n[two]\r\nc=\r\nflag\r\n");
}

TEST(ProfileFile, ANewSectionComesToTheEnd) {
  ProfileFile file = profile("[a]\r\nx=1");
  file.set(u"b", u"y", u"2");
  EXPECT_EQ(file.content(), "[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");
  ProfileFile empty = profile("");
  empty.set(u"b", u"y", u"2");
  EXPECT_EQ(empty.content(), "[b]\r\ny=2\r\n");
}

TEST(ProfileFile, RemovesAKeyOrASection) {
  ProfileFile file = profile(text);
  file.removeKey(u"one", u"b");
  file.removeKey(u"one", u"none");
  file.removeSection(u"TWO");
  file.removeSection(u"three");
  EXPECT_EQ(file.content(), "; first\r\n[One]\r\n a = 1 \r\n; inside\r\n\r\n");
}

TEST(ProfileFile, TextIsWhatTheCodePageSays) {
  // The second byte of the section's first character is that of "]", the key's that of "|".
  const ProfileFile japanese("[\x83\x5D]\r\n\x83\x7C=\x83\x5C\r\n", sharedCodePage(932));
  EXPECT_EQ(japanese.sections(), Names{u"\u30BE"});
  EXPECT_EQ(japanese.value(u"\u30BE", u"\u30DD"), u"\u30BD");
}

TEST(ProfileFile, WhatThePageDoesNotHaveIsAQuestionMark) {
  ProfileFile file = profile("[a]\r\nx=1\r\n");
  file.set(u"a", u"x", u"\u0416");
  EXPECT_EQ(file.content(), "[a]\r\nx=?\r\n");
}

TEST(ProfileFile, LinesThatAreNotChangedStayToTheBit) {
  // A first byte of two, without the second.
  ProfileFile file("; \x83\r\n[a]\r\nx=\x83\r\n", sharedCodePage(932));
  file.set(u"a", u"y", u"1");
  EXPECT_EQ(file.content(), "; \x83\r\n[a]\r\nx=\x83\r\ny=1\r\n");
}

std::string utf16File(std::u16string_view content) {
  const std::u16string marked = u"\uFEFF" + std::u16string(content);
  return {reinterpret_cast<const char*>(marked.data()), marked.size() * sizeof(char16_t)};
}

TEST(ProfileFile, AByteOrderMarkSaysThatItIsUtf16) {
  // The byte of a line's end is half of a character too.
  ProfileFile file = profile(utf16File(u"[\u0416\u0A0A]\r\n\u30BD = \xD83D\xDE00\xD800 \nb=2"));
  EXPECT_EQ(file.value(u"\u0436\u0A0A", u"\u30BD"), u"\xD83D\xDE00\xD800");
  EXPECT_EQ(file.keys(u"\u0416\u0A0A"), (Names{u"\u30BD", u"b"}));
  file.set(u"\u0416\u0A0A", u"b", u"\u05D0");
  EXPECT_EQ(file.content(),
            utf16File(u"[\u0416\u0A0A]\r\n\u30BD = \xD83D\xDE00\xD800 \r\nb=\u05D0\r\n"));
}

}  // namespace
}  // namespace zelvreg::machine
