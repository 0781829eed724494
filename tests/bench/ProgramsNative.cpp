// Only native: the bench is built on the system that builds.
#include "Programs.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "PeerBench.h"
#include "machine/TemporaryFolder.h"

namespace zelvreg::bench {
namespace {

namespace fs = std::filesystem;
using fixture::TemporaryFolder;

// A program that writes down its words.
void writeProgram(const TemporaryFolder& folder, const std::string& name, int status = 0) {
  folder.write(name, "#!/bin/sh\nprintf '%s\\n' \"$@\" >" + (folder.path() / "words").string() +
                         "\nexit " + std::to_string(status) + "\n");
  fs::permissions(folder.path() / name, fs::perms::owner_all);
}

TEST(Programs, AProgramIsFoundInTheFirstFolderThatHasIt) {
  const TemporaryFolder first;
  const TemporaryFolder second;
  const std::string folders = first.path().string() + ":" + second.path().string();
  EXPECT_EQ(findProgram("reader", folders), std::nullopt);
  first.write("reader", "no program");
  writeProgram(second, "reader");
  EXPECT_EQ(findProgram("reader", folders), second.path() / "reader");
  fs::remove(first.path() / "reader");
  writeProgram(first, "reader");
  EXPECT_EQ(findProgram("reader", folders), first.path() / "reader");
  EXPECT_EQ(findProgram("reader", ""), std::nullopt);
}

TEST(Programs, AProgramThatFailsOrIsNotThereIsNotMeasured) {
  const TemporaryFolder folder;
  writeProgram(folder, "reader", 2);
  const std::string program = (folder.path() / "reader").string();
  EXPECT_NO_THROW(runProgram({program, "a"}, 2));
  EXPECT_EQ(folder.read("words"), "a\n");
  EXPECT_THROW(runProgram({program}, 1), std::runtime_error);
  EXPECT_THROW(measureProgram({program}, 1), std::runtime_error);
  EXPECT_THROW(runProgram({program + "-gone"}), std::runtime_error);
}

TEST(Peers, ThoseThatAreInstalledReadTheWholeHive) {
  const TemporaryFolder folder;
  writeProgram(folder, "hivexregedit");
  int scans = 0;
  const auto figures = measurePeers("/disk/SOFTWARE", folder.path().string(), 3, [&scans] {
    ++scans;
    return 0.5;
  });
  ASSERT_EQ(figures.size(), 1U);
  EXPECT_STREQ(figures.front().peer->name, "hivexregedit");
  EXPECT_EQ(figures.front().times.second, 0.5);
  EXPECT_EQ(scans, 3);
  EXPECT_EQ(folder.read("words"), "--export\n/disk/SOFTWARE\n\\\n");
  EXPECT_TRUE(measurePeers("/disk/SOFTWARE", "", 1, [] { return 0.5; }).empty());
}

TEST(Peers, TheFastestIsTheOneThatTakesLeastTime) {
  const std::vector<PeerFigures> figures{{&peers().front(), {2.0, 0.1, 0.05}},
                                         {&peers()[1], {1.5, 0.1, 0.06}},
                                         {&peers()[2], {3.0, 0.1, 0.03}}};
  EXPECT_EQ(fastestOf(figures), &figures[1]);
  EXPECT_EQ(fastestOf({}), nullptr);
}

}  // namespace
}  // namespace zelvreg::bench
