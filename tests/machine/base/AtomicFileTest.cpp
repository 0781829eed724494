#include "machine/base/AtomicFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <csignal>

#include "machine/OrdinaryUser.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"

namespace zelvreg::machine {
namespace {

using zelvreg::fixture::TemporaryFolder;

std::ptrdiff_t filesIn(const TemporaryFolder& folder) {
  return std::distance(std::filesystem::directory_iterator(folder.path()), {});
}

TEST(AtomicFile, MakesAndReplacesAFileAndLeavesNothingBeside) {
  const TemporaryFolder folder;
  replaceFile(folder.path() / "a", "one");
  EXPECT_EQ(folder.read("a"), "one");
  replaceFile(folder.path() / "a", "two");
  EXPECT_EQ(folder.read("a"), "two");
  EXPECT_EQ(filesIn(folder), 1);
}

TEST(AtomicFile, TheOldContentStandsUntilItIsReplaced) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  {
    const AtomicFile prepared(folder.path() / "a", "new");
    EXPECT_EQ(folder.read("a"), "old");
  }
  EXPECT_EQ(folder.read("a"), "old");
  EXPECT_EQ(filesIn(folder), 1);
}

TEST(AtomicFile, KeepsThePermissionsOfTheOldFile) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  chmod((folder.path() / "a").c_str(), 0640);
  replaceFile(folder.path() / "a", "new");
  struct stat status {};
  stat((folder.path() / "a").c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(AtomicFile, WritesTheFileBehindALink) {
  const TemporaryFolder folder;
  folder.write("real/a", "old");
  std::filesystem::create_symlink("real/a", folder.path() / "link");
  replaceFile(folder.path() / "link", "new");
  EXPECT_EQ(folder.read("real/a"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link"));
}

TEST(AtomicFile, AFailureLeavesEverythingAsItWasAndSaysWhich) {
  const TemporaryFolder folder;
  EXPECT_THROW(replaceFile(folder.path() / "missing" / "a", "x"), MachineError);
  folder.makeFolder("a/b");
  EXPECT_THROW(replaceFile(folder.path() / "a", "x"), MachineError);
  EXPECT_TRUE(folder.has("a/b"));
  EXPECT_EQ(filesIn(folder), 1);
}

// Lets no file of this process grow beyond a size, as a full disk does.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : signalBefore(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{size, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  void (*signalBefore)(int);
  rlimit before{};
};

TEST(AtomicFile, ADiskThatFillsUpWhileWritingLeavesTheOldFile) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  {
    const FileSizeLimit full(100);
    EXPECT_THROW(replaceFile(folder.path() / "a", std::string(1000, 'x')), MachineError);
  }
  EXPECT_EQ(folder.read("a"), "old");
  EXPECT_EQ(filesIn(folder), 1);
}

TEST(AtomicFile, TakesWhatAnotherWritesAndNothingIfThatFails) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  {
    AtomicFile prepared(folder.path() / "a", [](const std::filesystem::path& beside) {
      std::ofstream(beside) << "new";
    });
    EXPECT_EQ(folder.read("a"), "old");
    prepared.replace();
  }
  EXPECT_EQ(folder.read("a"), "new");
  const auto fail = [](const std::filesystem::path& beside) {
    std::ofstream(beside) << "half";
    throw MachineError("failed");
  };
  EXPECT_THROW(AtomicFile(folder.path() / "a", fail), MachineError);
  EXPECT_EQ(folder.read("a"), "new");
  EXPECT_EQ(filesIn(folder), 1);
}

TEST(AtomicFile, ACopyTakesThePlaceOfAnOlderOneOnlyWhenItIsToldTo) {
  const TemporaryFolder folder;
  folder.write("a", "content");
  folder.write("elsewhere", "other");
  std::filesystem::create_symlink("elsewhere", folder.path() / "a.bak");
  const auto copy = [&] {
    const std::filesystem::path a = folder.path() / "a";
    return AtomicFile::copyOf(a, stampOf(a), folder.path() / "a.bak");
  };
  { const AtomicFile unused = copy(); }
  EXPECT_EQ(folder.read("a.bak"), "other");
  copy().replace();
  EXPECT_EQ(folder.read("a.bak"), "content");
  EXPECT_EQ(folder.read("elsewhere"), "other");
  copy().replace();
  EXPECT_EQ(filesIn(folder), 3);
}

TEST(AtomicFile, ACopyOfWhatMayNotBeNamedTwiceHasItsContentTimesAndAttributes) {
  const TemporaryFolder folder;
  chmod(folder.path().c_str(), 0777);
  folder.write("a", "content");
  const std::filesystem::path a = folder.path() / "a";
  constexpr const char* name = "user.zelvreg.note";
  const bool hasAttribute = setxattr(a.c_str(), name, "mine", 4, 0) == 0;
  const std::array<timespec, 2> times{{{1'000'000'000, 0}, {1'000'000'000, 0}}};
  ASSERT_EQ(utimensat(AT_FDCWD, a.c_str(), times.data(), 0), 0);
  const std::filesystem::path copy = folder.path() / "a.bak";
  {
    // Systems that guard second names refuse one to who neither owns a file nor may write it.
    const fixture::OrdinaryUser user;
    AtomicFile::copyOf(a, stampOf(a), copy).replace();
  }
  EXPECT_EQ(folder.read("a.bak"), "content");
  EXPECT_EQ(stampOf(copy)[2], 1'000'000'000);
  std::array<char, 8> value{};
  EXPECT_EQ(getxattr(copy.c_str(), name, value.data(), value.size()), hasAttribute ? 4 : -1);
}

TEST(AtomicFile, CopiesOrReplacesNothingButTheFileThatWasSeen) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  const FileStamp seen = stampOf(folder.path() / "a");
  AtomicFile prepared(folder.path() / "a", "new");
  folder.write("other", "other");
  std::filesystem::rename(folder.path() / "other", folder.path() / "a");
  EXPECT_THROW(prepared.replaceJust(seen), MachineError);
  EXPECT_THROW(AtomicFile::copyOf(folder.path() / "a", seen, folder.path() / "a.bak"),
               MachineError);
  EXPECT_EQ(folder.read("a"), "other");
  prepared.replaceJust(stampOf(folder.path() / "a"));
  EXPECT_EQ(folder.read("a"), "new");
  EXPECT_EQ(filesIn(folder), 1);
}

TEST(AtomicFile, KeepsTheExtendedAttributesOfTheOldFile) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  const std::filesystem::path a = folder.path() / "a";
  constexpr const char* name = "user.zelvreg.note";
  if (setxattr(a.c_str(), name, "mine", 4, 0) != 0) {
    GTEST_SKIP() << "the folder for temporary files keeps no extended attributes";
  }
  replaceFile(a, "new");
  std::array<char, 8> value{};
  EXPECT_EQ(getxattr(a.c_str(), name, value.data(), value.size()), 4);
  EXPECT_STREQ(value.data(), "mine");
}

TEST(AtomicFile, WhatAStoppedProcessLeftIsRemovedAndNothingElse) {
  const TemporaryFolder folder;
  for (const char* name : {".a.zelvreg-1b2C3d", ".a.zelvreg-1b2C3", ".ab.zelvreg-1b2C3d",
                           ".a.1b2C3d", "a.zelvreg-1b2C3d"}) {
    folder.write(name, "x");
  }
  removeLeftovers(folder.path() / "a");
  EXPECT_EQ(filesIn(folder), 4);
  EXPECT_FALSE(folder.has(".a.zelvreg-1b2C3d"));
}

std::vector<AtomicFile> twoFiles(const TemporaryFolder& folder) {
  std::vector<AtomicFile> files;
  files.emplace_back(folder.path() / "a", "new a");
  files.emplace_back(folder.path() / "b", "new b");
  return files;
}

TEST(ReplaceTogether, ReplacesAllAndLeavesNothingElse) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  auto files = twoFiles(folder);
  replaceTogether(files, folder.path() / "note");
  EXPECT_EQ(folder.read("a"), "new a");
  EXPECT_EQ(folder.read("b"), "new b");
  EXPECT_EQ(filesIn(folder), 2);
  EXPECT_FALSE(finishReplacing(folder.path() / "note"));
  EXPECT_EQ(filesIn(folder), 2);
}

TEST(ReplaceTogether, LeavesAllOldWhereTheFirstCannotBeReplaced) {
  const TemporaryFolder folder;
  folder.write("b", "old");
  auto files = twoFiles(folder);
  folder.makeFolder("a");
  EXPECT_THROW(replaceTogether(files, folder.path() / "note"), MachineError);
  files.clear();
  EXPECT_EQ(folder.read("b"), "old");
  EXPECT_FALSE(folder.has("note"));
}

TEST(ReplaceTogether, IsEndedLaterWhereALaterOneCannotBeReplaced) {
  const TemporaryFolder folder;
  auto files = twoFiles(folder);
  folder.makeFolder("b");
  EXPECT_THROW(replaceTogether(files, folder.path() / "note"), MachineError);
  files.clear();
  EXPECT_EQ(folder.read("a"), "new a");
  EXPECT_THROW(finishReplacing(folder.path() / "note"), MachineError);
  std::filesystem::remove(folder.path() / "b");
  EXPECT_TRUE(finishReplacing(folder.path() / "note"));
  EXPECT_EQ(folder.read("b"), "new b");
  EXPECT_EQ(filesIn(folder), 2);
}

TEST(FinishReplacing, MovesNothingOutOfTheFolderOrIntoIt) {
  const TemporaryFolder folder;
  for (const char* names : {"../a\nb\n", "a\n../b\n", "a\n/b\n", "a\n..\n", "\nb\n"}) {
    folder.write("a", "old");
    folder.write("note", names);
    EXPECT_THROW(finishReplacing(folder.path() / "note"), MachineError) << names;
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_TRUE(folder.has("note"));
  }
}

TEST(ReadWholeFile, GivesEveryByteOrSaysWhyNot) {
  const TemporaryFolder folder;
  const std::string content(200000, '\0');
  folder.write("a", content);
  EXPECT_EQ(readWholeFile(folder.path() / "a"), content);
  EXPECT_THROW(readWholeFile(folder.path() / "missing"), MachineError);
  EXPECT_THROW(readWholeFile(folder.path()), MachineError);
}

TEST(ReadWholeFile, DoesNotWaitForAPipeOrAskADevice) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(readWholeFile(folder.path() / "pipe"), MachineError);
  EXPECT_THROW(readWholeFile("/dev/zero"), MachineError);
}

}  // namespace
}  // namespace zelvreg::machine
