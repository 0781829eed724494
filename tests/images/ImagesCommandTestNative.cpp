// Many images in one call; the Windows program takes no image.
#include "console/ImagesCommand.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

class ImagesCommandTest : public ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    if (IsSkipped()) return;
    folder.makeFolder("disks");
    makeDisk("disks/a.raw", {{1, windows({R"(C:\gone\a.exe)"})}});
    convert("disks/a.raw", "qcow2", "disks/b.qcow2");
  }

  // The exit status of the command with these words behind the folder of results; 2 with its line
  // on `error` for what throws.
  int images(Words words, const std::string& input = "") {
    words.insert(words.begin(), {"zelvreg", "images", "--results", path("results")});
    std::vector<const char*> texts;
    for (const std::string& word : words) {
      texts.push_back(word.c_str());
    }
    error.str("");
    std::istringstream lines(input);
    try {
      const auto parsed = console::parseCommandLine(static_cast<int>(texts.size()), texts.data());
      return console::scanImages(parsed.options, lines, {.out = out, .error = error});
    } catch (const std::runtime_error& refusal) {
      error << refusal.what() << "\n";
      return console::failed;
    }
  }

  [[nodiscard]] std::string said() const { return error.str(); }
  [[nodiscard]] bool says(const std::string& text) const {
    return said().find(text) != std::string::npos;
  }
  [[nodiscard]] nlohmann::json result(const std::string& name) const {
    return parsedJson(folder.read("results/" + name + ".json"));
  }
  // As if all of it had been made before.
  void makeOlder(const std::string& name) const {
    const timespec time{.tv_sec = ::time(nullptr) + 1000, .tv_nsec = 0};
    const timespec times[]{time, time};
    ASSERT_EQ(utimensat(AT_FDCWD, path("results/" + name + ".json").c_str(), times, 0), 0);
  }
};

TEST_F(ImagesCommandTest, EachImageGetsAResultThatNamesIt) {
  EXPECT_EQ(images({path("disks"), "--only", "startup,fonts"}), 0) << said();
  const std::string folderName = fs::canonical(path("disks")).string();
  EXPECT_EQ(said(), "zelvreg: " + folderName + "/a.raw: problems were found\nzelvreg: " +
                        folderName + "/b.qcow2: problems were found\n");
  for (const char* name : {"a.raw", "b.qcow2"}) {
    EXPECT_EQ(result(name)["findings"].size(), 1U);
    EXPECT_EQ(result(name)["image"]["file"], folderName + "/" + name);
    EXPECT_EQ(result(name)["image"]["options"], Words{"--only fonts,startup"});
  }
}

TEST_F(ImagesCommandTest, ResultsHoldWhatAScanPrints) {
  const Words words{"--only", "startup", "--now", "2026-01-31T13:45:06Z"};
  Words scan{"scan", "--json"};
  scan.insert(scan.end(), words.begin(), words.end());
  Words all{path("disks/a.raw")};
  all.insert(all.end(), words.begin(), words.end());
  ASSERT_EQ(images(all), 0) << said();
  auto kept = result("a.raw");
  kept.erase("image");
  onImage("disks/a.raw", scan);
  EXPECT_EQ(kept, parsedJson(out.str()));
}

TEST_F(ImagesCommandTest, ABrokenImageIsNamedAndTheOthersAreScanned) {
  folder.write("disks/a1.vhdx", "no image");
  EXPECT_EQ(images({path("disks"), "--quiet"}), 2);
  EXPECT_FALSE(folder.has("results/a1.vhdx.json"));
  EXPECT_TRUE(folder.has("results/b.qcow2.json"));
  const std::string line = folder.read("results/a1.vhdx.error");
  EXPECT_EQ(said(), "zelvreg: " + line);
  EXPECT_TRUE(line.starts_with(fs::canonical(path("disks/a1.vhdx")).string() + ": ")) << line;
  fs::copy_file(path("disks/b.qcow2"), path("disks/a1.vhdx"), fs::copy_options::overwrite_existing);
  EXPECT_EQ(images({path("disks"), "--quiet"}), 0) << said();
  EXPECT_TRUE(folder.has("results/a1.vhdx.json"));
  EXPECT_FALSE(folder.has("results/a1.vhdx.error"));
}

TEST_F(ImagesCommandTest, AResultThatIsNewerIsKept) {
  const std::string lines = path("disks/a.raw") + "\n";
  ASSERT_EQ(images({"-", "--only", "startup"}, lines), 0) << said();
  makeOlder("a.raw");
  const auto before = fs::last_write_time(path("results/a.raw.json"));
  EXPECT_EQ(images({"-", "--only", "startup"}, lines), 0);
  EXPECT_TRUE(says("a.raw: has a result that is newer")) << said();
  EXPECT_EQ(fs::last_write_time(path("results/a.raw.json")), before);
  EXPECT_EQ(images({"-", "--only", "startup", "--again"}, lines), 0);
  EXPECT_TRUE(says("problems were found")) << said();
  makeOlder("a.raw");
  EXPECT_EQ(images({"-", "--only", "startup", "--missing-drives", "dead"}, lines), 0);
  EXPECT_TRUE(says("problems were found")) << said();
}

TEST_F(ImagesCommandTest, AnImageIsAsNewAsWhatItBuildsOn) {
  ASSERT_TRUE(run({"qemu-img", "create", "-q", "-f", "qcow2", "-F", "raw", "-b",
                   path("disks/a.raw"), path("top.qcow2")}));
  ASSERT_EQ(images({path("top.qcow2"), "--only", "startup"}), 0) << said();
  makeOlder("top.qcow2");
  EXPECT_EQ(images({path("top.qcow2"), "--only", "startup"}), 0);
  EXPECT_TRUE(says("has a result that is newer")) << said();
  const timespec time{.tv_sec = ::time(nullptr) + 2000, .tv_nsec = 0};
  const timespec times[]{time, time};
  ASSERT_EQ(utimensat(AT_FDCWD, path("disks/a.raw").c_str(), times, 0), 0);
  EXPECT_EQ(images({path("top.qcow2"), "--only", "startup"}), 0);
  EXPECT_TRUE(says("problems were found")) << said();
}

TEST_F(ImagesCommandTest, AScanThatTakesTooLongIsAFailure) {
  EXPECT_EQ(images({path("disks/a.raw"), "--timeout", "0.000001"}), 2);
  EXPECT_NE(folder.read("results/a.raw.error").find("--timeout"), std::string::npos) << said();
  EXPECT_FALSE(folder.has("results/a.raw.json"));
}

TEST_F(ImagesCommandTest, WhatIsDamagedInAnImageIsToldAndTheRestIsAResult) {
  makeDisk("damaged.raw", {{1, [](const TemporaryFolder& root) {
                              windows({R"(C:\gone\a.exe)"})(root);
                              root.write("Users/Anna/NTUSER.DAT", "no hive");
                            }}});
  EXPECT_EQ(images({path("damaged.raw"), "--only", "startup"}), 0) << said();
  EXPECT_TRUE(says("was scanned in part: ")) << said();
  EXPECT_TRUE(says("NTUSER.DAT")) << said();
  EXPECT_EQ(result("damaged.raw")["findings"].size(), 1U);
}

TEST_F(ImagesCommandTest, NothingIsWrittenWhereImagesWouldShareAResult) {
  folder.makeFolder("more");
  fs::copy_file(path("disks/a.raw"), path("more/a.raw"));
  EXPECT_EQ(images({path("disks"), path("more")}), 2);
  EXPECT_TRUE(says("have the same name")) << said();
  EXPECT_FALSE(folder.has("results"));
  ASSERT_EQ(images({path("more"), "--only", "startup"}), 0) << said();
  EXPECT_EQ(images({path("disks"), "--only", "startup"}), 2);
  EXPECT_TRUE(says("is there and not of")) << said();
  EXPECT_FALSE(folder.has("results/b.qcow2.json"));
  EXPECT_EQ(images({path("disks"), "--only", "startup", "--again"}), 0) << said();
}

TEST_F(ImagesCommandTest, TakesNothingThatNamesOneComputer) {
  for (const Words& words : {Words{"--machine", "x"},
                             {"--offline", "x"},
                             {"--image", "x"},
                             {"--drive", "D=x"},
                             {"--keep-backups", "1"}}) {
    Words all{path("disks")};
    all.insert(all.end(), words.begin(), words.end());
    EXPECT_EQ(images(all), 2);
    EXPECT_TRUE(says(words.front() + " is for one computer")) << said();
  }
  EXPECT_FALSE(folder.has("results"));
}

TEST_F(ImagesCommandTest, AFolderOfResultsThatIsNoneIsRefused) {
  folder.write("results", "");
  EXPECT_EQ(images({path("disks")}), 2);
  EXPECT_TRUE(says("is no folder")) << said();
}

}  // namespace
}  // namespace zelvreg::fixture
