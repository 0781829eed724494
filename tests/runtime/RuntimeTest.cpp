#include <windows.h>

#include <algorithm>

#include "runtime/Directory.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "runtime/FileText.h"
#include "support/ComputerFixture.h"
#include "support/UnrulyContents.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

using fileSystemObject::TextStream;

class RuntimeTest : public fixture::ComputerFixture {
 protected:
  RuntimeTest() { makeFolder("C:\\Runtime"); }
};

TEST_F(RuntimeTest, DirGivesTheNameOfAFile) {
  makeFile("C:\\Runtime\\Names\\Some File.txt");
  EXPECT_EQ(Dir("C:\\Runtime\\Names\\Some File.txt"), "Some File.txt");
  EXPECT_EQ(Dir("C:\\Runtime\\Names\\*.txt"), "Some File.txt");
}

TEST_F(RuntimeTest, AFolderIsCreatedWithAllAboveIt) {
  EXPECT_TRUE(zelvreg::makeFolder("C:\\Runtime\\New\\Deeper"));
  EXPECT_EQ(GetFileAttributesW(Wide("C:\\Runtime\\New\\Deeper").get()) & FILE_ATTRIBUTE_DIRECTORY,
            DWORD{FILE_ATTRIBUTE_DIRECTORY});
  EXPECT_TRUE(zelvreg::makeFolder("C:\\Runtime\\New"));
}

TEST_F(RuntimeTest, NoFolderIsCreatedInThePlaceOfAFileOrOnAMissingDrive) {
  makeFile("C:\\Runtime\\file");
  EXPECT_FALSE(zelvreg::makeFolder("C:\\Runtime\\file"));
  EXPECT_FALSE(zelvreg::makeFolder("Q:\\none"));
}

TEST_F(RuntimeTest, DirIsEmptyForWhatIsNoPlainFile) {
  makeFolder("C:\\Runtime\\Folder");
  EXPECT_EQ(Dir(""), "");
  EXPECT_EQ(Dir("C:\\Runtime\\Folder"), "");
  EXPECT_EQ(Dir("C:\\Runtime\\*.none"), "");
  EXPECT_EQ(Dir("C:\\NoSuchFolder\\a"), "");
  EXPECT_EQ(Dir("|"), "");
}

TEST_F(RuntimeTest, DirPassesOverHiddenAndSystemFiles) {
  makeFile("C:\\RuntimeHidden\\a.hid");
  makeFile("C:\\RuntimeHidden\\b.hid");
  SetFileAttributesW(Wide("C:\\RuntimeHidden\\a.hid").get(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(Dir("C:\\RuntimeHidden\\a.hid"), "");
  EXPECT_EQ(Dir("C:\\RuntimeHidden\\*.hid"), "b.hid");
  SetFileAttributesW(Wide("C:\\RuntimeHidden\\b.hid").get(),
                     FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(Dir("C:\\RuntimeHidden\\*.hid"), "");
}

TEST_F(RuntimeTest, AFileIsNoFolderAndAFolderIsNoFile) {
  makeFile("C:\\Runtime\\kind.txt");
  EXPECT_TRUE(fileSystemObject::fileExists("C:\\Runtime\\kind.txt"));
  EXPECT_FALSE(fileSystemObject::folderExists("C:\\Runtime\\kind.txt"));
  EXPECT_FALSE(fileSystemObject::fileExists("C:\\Runtime"));
  EXPECT_TRUE(fileSystemObject::folderExists("C:\\Runtime"));
}

TEST_F(RuntimeTest, APathEndsAtItsFirstNul) {
  makeFile("C:\\Runtime\\nul.txt");
  EXPECT_TRUE(fileSystemObject::fileExists(std::string("C:\\Runtime\\nul.txt\0rest", 23)));
}

TEST_F(RuntimeTest, NothingExistsOnADriveThatTheComputerDoesNotHave) {
  EXPECT_FALSE(fileSystemObject::fileExists("Q:\\a.txt"));
  EXPECT_FALSE(fileSystemObject::folderExists("Q:\\"));
}

TEST_F(RuntimeTest, ATextIsReadLineByLineWhicheverItsLineEnds) {
  makeFile("C:\\Runtime\\lines.txt", "one\r\ntwo\n\nlast");
  auto stream = TextStream::openTextFile("C:\\Runtime\\lines.txt");
  std::vector<std::string> lines;
  while (!stream.atEndOfStream()) {
    lines.push_back(stream.readLine());
  }
  EXPECT_EQ(lines, (std::vector<std::string>{"one", "two", "", "last"}));
  EXPECT_EQ(stream.readLine(), "");
}

TEST_F(RuntimeTest, AMissingTextIsAtItsEnd) {
  EXPECT_TRUE(TextStream::openTextFile("C:\\Runtime\\none.txt").atEndOfStream());
  EXPECT_FALSE(readFileText("C:\\Runtime\\none.txt").has_value());
}

TEST_F(RuntimeTest, AWholeFileIsReadHoweverLongItIs) {
  const std::string content(200000, 'z');
  makeFile("C:\\Runtime\\long.txt", content);
  EXPECT_EQ(readFileText("C:\\Runtime\\long.txt"), content);
}

TEST_F(RuntimeTest, AFileThatIsNotThereHasNothingToKeepAndAFolderCannotBeRead) {
  DeleteFileW(Wide("C:\\Runtime\\kept.txt").get());
  EXPECT_EQ(contentToKeep("C:\\Runtime\\kept.txt"), "");
  makeFile("C:\\Runtime\\kept.txt", "abc");
  EXPECT_EQ(contentToKeep("C:\\Runtime\\kept.txt"), "abc");
  EXPECT_EQ(contentToKeep("C:\\Runtime"), std::nullopt);
}

TEST_F(RuntimeTest, LinesOfAMarkedFileAreUtf8) {
  makeFile("C:\\Runtime\\marked.txt", "\xEF\xBB\xBFсервер\r\nサーバー");
  auto stream = TextStream::openTextFile("C:\\Runtime\\marked.txt");
  EXPECT_EQ(stream.readLine(), "сервер");
  EXPECT_EQ(stream.readLine(), "サーバー");
  EXPECT_TRUE(stream.atEndOfStream());
}

TEST_F(RuntimeTest, WhatLiesBesideAReplacedFileStays) {
  makeFile("C:\\Runtime\\beside.txt.new", "mine");
  EXPECT_TRUE(replaceFileText("C:\\Runtime\\beside.txt", "text"));
  EXPECT_EQ(readFileText("C:\\Runtime\\beside.txt"), "text");
  EXPECT_EQ(readFileText("C:\\Runtime\\beside.txt.new"), "mine");
}

TEST_F(RuntimeTest, AnyBytesAreReadBackAndComeOutAsLines) {
  for (const std::string& content : fixture::unrulyContents("a\r\n")) {
    ASSERT_TRUE(replaceFileText("C:\\Runtime\\unruly.txt", content));
    EXPECT_TRUE(readFileText("C:\\Runtime\\unruly.txt") == content);
    auto stream = TextStream::openTextFile("C:\\Runtime\\unruly.txt");
    std::size_t lines = 0;
    while (!stream.atEndOfStream()) {
      EXPECT_EQ(stream.readLine().find('\n'), std::string::npos);
      ++lines;
    }
    const auto ends = static_cast<std::size_t>(std::ranges::count(content, '\n'));
    EXPECT_EQ(lines, ends + (content.back() == '\n' ? 0 : 1));
  }
}

TEST_F(RuntimeTest, VariablesAreReadWithoutRegardToCase) {
  EXPECT_EQ(environmentVariable("windir"), environmentVariable("WINDIR"));
  EXPECT_NE(environmentVariable("windir"), "");
  EXPECT_EQ(environmentVariable("ZELVREG_NO_SUCH_VARIABLE"), "");
}

TEST_F(RuntimeTest, TheProgramsFolderHasNoBackslashAtItsEnd) {
  const std::string folder = programFolder();
  ASSERT_GT(folder.size(), 3U);
  EXPECT_EQ(folder[1], ':');
  EXPECT_NE(folder.back(), '\\');
}

}  // namespace
}  // namespace zelvreg
