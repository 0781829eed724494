// Links and pipes that a program may be told to write to are not on every Windows.
#include "console/HostFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

#include "machine/TemporaryFolder.h"

namespace zelvreg::console {
namespace {

namespace fs = std::filesystem;

class HostFileTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder.path() / name).string();
  }
  // How many files and folders there are.
  [[nodiscard]] std::ptrdiff_t count() const {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
  }

  const fixture::TemporaryFolder folder;
};

TEST_F(HostFileTest, AFileIsCreatedOrReplacedAndNothingIsLeftBesideIt) {
  writeHostFile(path("report"), "a longer text");
  writeHostFile(path("report"), std::string_view("a\r\n\0b", 5));
  EXPECT_EQ(folder.read("report"), std::string("a\r\n\0b", 5));
  EXPECT_EQ(readHostFile(path("report")), std::string("a\r\n\0b", 5));
  EXPECT_EQ(count(), 1);
}

TEST_F(HostFileTest, ANameMayBeAnyBytes) {
  for (const char* name : {"отчёт サ", "\xFF", "\xED\xA0\x80"}) {
    writeHostFile(path(name), "text");
    EXPECT_EQ(readHostFile(path(name)), "text");
    EXPECT_EQ(folder.read(name), "text");
  }
}

TEST_F(HostFileTest, AReplacedFileIsNeverSeenHalf) {
  folder.write("report", "old");
  std::ifstream reader(path("report"));
  writeHostFile(path("report"), "new");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
  EXPECT_EQ(folder.read("report"), "new");
}

TEST_F(HostFileTest, WhatIsBesideAFileIsNeitherReplacedNorWrittenThrough) {
  folder.write("report.new", "mine");
  folder.write("elsewhere", "mine too");
  fs::create_symlink("elsewhere", path("other.new"));
  writeHostFile(path("report"), "text");
  writeHostFile(path("other"), "text");
  EXPECT_EQ(folder.read("report.new"), "mine");
  EXPECT_EQ(folder.read("elsewhere"), "mine too");
  EXPECT_TRUE(fs::is_symlink(path("other.new")));
  EXPECT_EQ(count(), 5);
}

TEST_F(HostFileTest, AReplacedFileKeepsWhoMayReadItAndWhoOwnsIt) {
  folder.write("report", "old");
  ASSERT_EQ(chmod(path("report").c_str(), 0600), 0);
  constexpr uid_t nobody = 65534;
  const bool hasOtherOwner = chown(path("report").c_str(), nobody, nobody) == 0;
  writeHostFile(path("report"), "new");
  struct stat status {};
  ASSERT_EQ(stat(path("report").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
  EXPECT_EQ(status.st_uid, hasOtherOwner ? nobody : geteuid());
  EXPECT_EQ(folder.read("report"), "new");
}

TEST_F(HostFileTest, ALinkStaysOneAndItsFileIsWritten) {
  folder.write("target", "a longer text than the new one");
  fs::create_symlink("target", path("link"));
  fs::create_symlink("not yet there", path("early"));
  writeHostFile(path("link"), "text");
  writeHostFile(path("early"), "text");
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_EQ(folder.read("target"), "text");
  EXPECT_EQ(folder.read("not yet there"), "text");
  EXPECT_EQ(count(), 4);
}

TEST_F(HostFileTest, APipeStaysOneAndIsWrittenTo) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  // Open at both ends, so that neither waits for the other.
  const int pipe = open(path("pipe").c_str(), O_RDWR | O_NONBLOCK);
  ASSERT_GE(pipe, 0);
  writeHostFile(path("pipe"), "text");
  std::array<char, 16> buffer{};
  EXPECT_EQ(read(pipe, buffer.data(), buffer.size()), 4);
  close(pipe);
  EXPECT_STREQ(buffer.data(), "text");
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

TEST_F(HostFileTest, WhatCannotBeWrittenIsNamedInOneLine) {
  folder.makeFolder("a folder");
  for (const char* name : {"a folder", "none/report"}) {
    try {
      writeHostFile(path(name), "text");
      ADD_FAILURE() << name;
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
      EXPECT_NE(std::string(error.what()).find(name), std::string::npos);
    }
  }
  EXPECT_EQ(count(), 1);
}

TEST_F(HostFileTest, WhatCannotBeReadIsRefused) {
  EXPECT_THROW(readHostFile(path("none")), std::runtime_error);
  EXPECT_THROW(readHostFile(folder.path().string()), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::console
