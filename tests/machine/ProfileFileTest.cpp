#include "machine/ProfileFile.h"

#include <gtest/gtest.h>

namespace zelvreg::machine {
namespace {

using Names = std::vector<std::string>;

constexpr std::string_view text =
    "; first\r\n[One]\r\n a = 1 \r\nB=\"x\"\r\n; inside\r\n\r\n[two]\r\nc=\r\nflag\r\n";

ProfileFile profile(std::string_view content) { return {content, sharedCodePage(1252)}; }

TEST(ProfileFile, findsSectionsAndKeysInAnyCase) {
  const ProfileFile file = profile(text);
  EXPECT_EQ(file.value("ONE", "A"), "1");
  EXPECT_EQ(file.value("one", "b"), "\"x\"");
  EXPECT_EQ(file.value("Two", "C"), "");
  EXPECT_FALSE(file.value("one", "c"));
  EXPECT_FALSE(file.value("three", "a"));
  EXPECT_EQ(profile("[\xC4]\n\xD6=1").value("\xE4", "\xF6"), "1");
}

TEST(ProfileFile, listsWhatItHolds) {
  const ProfileFile file = profile(text);
  EXPECT_EQ(file.sections(), (Names{"One", "two"}));
  EXPECT_EQ(file.keys("one"), (Names{"a", "B"}));
  EXPECT_EQ(file.entries("one"), (Names{"a=1", "B=\"x\""}));
  EXPECT_EQ(file.entries("two"), (Names{"c=", "flag"}));
  EXPECT_EQ(file.keys("two"), Names{"c"});
}

TEST(ProfileFile, readsLinesWithAnyEndAndAHeadThatIsNotClosed) {
  EXPECT_EQ(profile("[a\nx=1").value("a", "x"), "1");
  EXPECT_EQ(profile("[a]b\r\nx=1").value("a", "x"), "1");
  EXPECT_TRUE(profile("").sections().empty());
}

TEST(ProfileFile, theFirstOfTwoOfOneNameCounts) {
  const ProfileFile file = profile("[a]\nx=1\nX=2\n[A]\nx=3\ny=4\n");
  EXPECT_EQ(file.value("a", "x"), "1");
  EXPECT_FALSE(file.value("a", "y"));
}

TEST(ProfileFile, replacesAValueInItsPlace) {
  ProfileFile file = profile(text);
  file.set("ONE", "A", "2");
  EXPECT_EQ(file.content(),
            "; first\r\n[One]\r\nA=2\r\nB=\"x\"\r\n; inside\r\n\r\n[two]\r\nc=\r\nflag\r\n");
}

TEST(ProfileFile, aNewKeyComesBehindTheLastLineOfItsSection) {
  ProfileFile file = profile(text);
  file.set("one", "new", "v");
  EXPECT_EQ(
      file.content(),
      "; first\r\n[One]\r\n a = 1 \r\nB=\"x\"\r\n; inside\r\nnew=v\r\n\r\n[two]\r\nc=\r\nflag\r\n");
}

TEST(ProfileFile, aNewSectionComesToTheEnd) {
  ProfileFile file = profile("[a]\r\nx=1");
  file.set("b", "y", "2");
  EXPECT_EQ(file.content(), "[a]\r\nx=1\r\n\r\n[b]\r\ny=2\r\n");
  ProfileFile empty = profile("");
  empty.set("b", "y", "2");
  EXPECT_EQ(empty.content(), "[b]\r\ny=2\r\n");
}

TEST(ProfileFile, removesAKeyOrASection) {
  ProfileFile file = profile(text);
  file.removeKey("one", "b");
  file.removeKey("one", "none");
  file.removeSection("TWO");
  file.removeSection("three");
  EXPECT_EQ(file.content(), "; first\r\n[One]\r\n a = 1 \r\n; inside\r\n\r\n");
}

}  // namespace
}  // namespace zelvreg::machine
