#include "machine/files/FolderListings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>

#include "machine/TemporaryFolder.h"

namespace zelvreg::machine {
namespace {

std::int64_t tickOfTheClock() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
  return now.tv_sec * std::int64_t{1'000'000'000} + now.tv_nsec;
}

class FolderListingsTest : public ::testing::Test {
 protected:
  FolderListingsTest() { makeOld(); }

  // As if the folder was changed long ago, so that any change gives it another time.
  void makeOld() const {
    std::filesystem::last_write_time(
        folder.path(), std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  }

  bool has(FolderListings& listings) {
    return listings.find(folder.path().string(), u"NEW", u"new") != nullptr;
  }

  fixture::TemporaryFolder folder;
};

TEST_F(FolderListingsTest, AChangeIsSeenAtOnce) {
  FolderListings listings(Freshness::Exact);
  EXPECT_FALSE(has(listings));
  folder.write("new", "");
  EXPECT_TRUE(has(listings));
}

TEST_F(FolderListingsTest, AChangeIsSeenInTheNextTickOfTheClock) {
  FolderListings listings(Freshness::ToTheTick);
  EXPECT_FALSE(has(listings));
  folder.write("new", "");
  const std::int64_t tick = tickOfTheClock();
  while (tickOfTheClock() == tick) {
  }
  EXPECT_TRUE(has(listings));
}

TEST_F(FolderListingsTest, AChangeOfTheProgramsOwnIsSeenAtOnce) {
  FolderListings listings(Freshness::ToTheTick);
  EXPECT_FALSE(has(listings));
  folder.write("new", "");
  listings.forget(folder.path().string());
  EXPECT_TRUE(has(listings));
}

TEST_F(FolderListingsTest, WithinATickAFolderIsLookedAtOnce) {
  // The clock may tick in between: then it is tried again.
  for (bool isWithinATick = false; !isWithinATick;) {
    FolderListings listings(Freshness::ToTheTick);
    std::filesystem::remove(folder.path() / "new");
    makeOld();
    const std::int64_t tick = tickOfTheClock();
    EXPECT_FALSE(has(listings));
    folder.write("new", "");
    const bool isSeen = has(listings);
    isWithinATick = tickOfTheClock() == tick;
    EXPECT_FALSE(isWithinATick && isSeen);
  }
}

}  // namespace
}  // namespace zelvreg::machine
