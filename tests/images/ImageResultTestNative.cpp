// The Windows program takes no image.
#include "images/ImageResult.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;

class ImageResultTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder.path() / name).string();
  }

  [[nodiscard]] ImageResult result(const std::string& options = "1") const {
    return {folder.path(),
            path("disk.raw"),
            {.ofImage = "image ", .ofOptions = "image " + options, .ofFailure = "disk: "}};
  }

  [[nodiscard]] static std::string refusal(const ImageResult& files) {
    try {
      files.refuseOther();
    } catch (const machine::MachineError& error) {
      return error.what();
    }
    return "";
  }

  // Seconds since 1970, of the last write alone.
  void setTime(const std::string& name, time_t seconds) const {
    const timespec time{.tv_sec = seconds, .tv_nsec = 0};
    const timespec times[]{time, time};
    ASSERT_EQ(utimensat(AT_FDCWD, path(name).c_str(), times, 0), 0);
  }

  const fixture::TemporaryFolder folder;
};

TEST_F(ImageResultTest, AResultAndAFailureTakeEachOthersPlace) {
  result().keep("image 1 text");
  EXPECT_EQ(folder.read("disk.raw.json"), "image 1 text");
  result().keepFailure("disk: broken");
  EXPECT_EQ(folder.read("disk.raw.error"), "disk: broken\n");
  EXPECT_FALSE(folder.has("disk.raw.json"));
  result().keep("image 1 text");
  EXPECT_FALSE(folder.has("disk.raw.error"));
}

TEST_F(ImageResultTest, AFailureThatAStoppedProcessHasLeftBesideAResultIsRemoved) {
  result().keep("image 1 text");
  folder.write("disk.raw.error", "disk: broken\n");
  result().removeFailure();
  result().removeFailure();
  EXPECT_FALSE(folder.has("disk.raw.error"));
  EXPECT_EQ(folder.read("disk.raw.json"), "image 1 text");
}

TEST_F(ImageResultTest, WhatCannotBeRemovedBesideTheOtherIsTold) {
  folder.makeFolder("disk.raw.error");
  EXPECT_THROW(result().keep("image 1 text"), machine::MachineError);
  EXPECT_THROW(result().removeFailure(), machine::MachineError);
}

TEST_F(ImageResultTest, WhatAStoppedProcessHasLeftIsRemovedAndNothingElse) {
  for (const char* name : {".disk.raw.json.zelvreg-a1B2c3", ".disk.raw.error.zelvreg-a1B2c3"}) {
    folder.write(name, "half");
  }
  folder.write(".disk.raw2.json.zelvreg-a1B2c3", "another's");
  result().keep("image 1");
  result().removeLeftovers();
  std::size_t left = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder.path())) {
    ++left;
  }
  EXPECT_EQ(left, 2U);
  EXPECT_TRUE(folder.has("disk.raw.json"));
}

TEST_F(ImageResultTest, AResultIsNewerThanWhatWasNotChangedSince) {
  folder.write("disk.raw", "x");
  folder.write("base.raw", "x");
  const std::vector<fs::path> parts{path("disk.raw"), path("base.raw")};
  EXPECT_FALSE(result().isNewerThan(parts));
  result().keep("image 1");
  const time_t later = time(nullptr) + 1000;
  setTime("disk.raw.json", later);
  EXPECT_TRUE(result().isNewerThan(parts));
  setTime("base.raw", later + 1);
  EXPECT_FALSE(result().isNewerThan(parts));
  setTime("base.raw", later);
  EXPECT_FALSE(result().isNewerThan(parts)) << "it may have been written after it";
  fs::remove(path("base.raw"));
  EXPECT_FALSE(result().isNewerThan(parts));
}

TEST_F(ImageResultTest, AnOldFileThatWasPutInPlaceLaterIsNewer) {
  folder.write("disk.raw", "x");
  result().keep("image 1");
  setTime("disk.raw.json", time(nullptr) - 1000);
  setTime("disk.raw", time(nullptr) - 100'000);
  EXPECT_FALSE(result().isNewerThan({path("disk.raw")}));
}

TEST_F(ImageResultTest, AResultOfOtherOptionsIsNotThatOfThese) {
  folder.write("disk.raw", "x");
  result("1").keep("image 1");
  setTime("disk.raw.json", time(nullptr) + 1000);
  EXPECT_TRUE(result("1").isNewerThan({path("disk.raw")}));
  EXPECT_FALSE(result("2").isNewerThan({path("disk.raw")}));
  EXPECT_EQ(refusal(result("2")), "");
}

TEST_F(ImageResultTest, WhatIsOfAnotherImageIsRefused) {
  EXPECT_EQ(refusal(result()), "");
  folder.write("disk.raw.json", "{}");
  EXPECT_EQ(refusal(result()), path("disk.raw.json") + ": is there and not of " + path("disk.raw") +
                                   "; give each image a name of its own, name another folder, or "
                                   "replace it with --again");
  result().keep("image 1");
  folder.write("disk.raw.error", "other: broken");
  EXPECT_NE(refusal(result()), "");
  result().keepFailure("disk: broken");
  EXPECT_EQ(refusal(result()), "");
}

TEST_F(ImageResultTest, TwoImagesOfOneNameAreRefused) {
  EXPECT_NO_THROW(refuseNames({"/a/x.raw", "/a/x.vhd"}));
  EXPECT_THROW(refuseNames({"/a/x.raw", "/a/y.raw", "/b/x.raw"}), machine::MachineError);
}

TEST_F(ImageResultTest, ANameThatIsTooLongIsRefused) {
  EXPECT_NO_THROW(refuseNames({"/" + std::string(249, 'x')}));
  EXPECT_THROW(refuseNames({"/" + std::string(250, 'x')}), machine::MachineError);
}

}  // namespace
}  // namespace zelvreg::images
