// Each command on an image that is only read, on one that is written itself, and into an overlay;
// the Windows program takes no image.
#include <map>

#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

class ImageCommandsTest : public ImageTest {
 protected:
  // A disk with a repair that can be undone, and an exclusion.
  void SetUp() override {
    ImageTest::SetUp();
    if (IsSkipped()) return;
    makeDisk("disk", {{1, windows({R"(C:\gone\a.exe)"})}});
    for (const Words& words : {Words{"undo", "on"},
                               {"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software\Other)"},
                               {"fix", "--yes", "--quiet", "--only", "startup"}}) {
      EXPECT_EQ(onImage("disk", with(words, {"--in-place"})), 0) << error.str();
    }
    before = folder.read("disk");
  }

  static Words with(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }

  int status(const Words& words) { return ended("--image", path("disk"), words); }

  [[nodiscard]] std::string printed(const std::string& name, const Words& words) {
    EXPECT_EQ(onImage(name, words), 0) << error.str();
    return out.str();
  }

  void expectUntouched(const Words& words) {
    EXPECT_TRUE(folder.read("disk") == before) << words.front();
    EXPECT_FALSE(folder.has("new")) << words.front();
  }

  std::string before;
};

TEST_F(ImageCommandsTest, WhatOnlyReadsTakesNoOverlay) {
  for (const Words& words : {Words{"scan", "--quiet", "--report", path("report")},
                             {"fix", "--dry-run", "--quiet"},
                             {"search", "vendor", "--keys"},
                             {"undo", "list"},
                             {"exclude", "list"},
                             {"languages"}}) {
    EXPECT_LE(status(words), 1) << words.front() << error.str();
    expectUntouched(words);
    for (const Words& more : {Words{"--in-place"}, {"--overlay", path("new")}}) {
      const bool isRehearsal = words.front() == "fix";
      EXPECT_EQ(status(with(words, more)) == 2, !isRehearsal) << words.front();
      EXPECT_EQ(error.str().find("leave out --overlay") != std::string::npos, !isRehearsal);
      expectUntouched(words);
    }
  }
  EXPECT_TRUE(folder.has("report"));
}

TEST_F(ImageCommandsTest, WhatWritesSaysWhere) {
  folder.write("export.reg",
               "Windows Registry Editor Version 5.00\r\n\r\n"
               "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vendor]\r\n\"x\"=\"y\"\r\n");
  for (const Words& words : {Words{"undo", "off"},
                             {"undo", "restore", "1"},
                             {"undo", "remove", "1", "--yes"},
                             {"undo", "restore-export", path("export.reg")},
                             {"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software\More)"},
                             {"exclude", "remove", "1", "--yes"},
                             {"w4"},
                             {"w4-c4"}}) {
    const std::string name = words.front() + " " + words.back();
    EXPECT_EQ(status(words), 2) << name;
    EXPECT_NE(error.str().find("give --overlay NEW.qcow2"), std::string::npos) << error.str();
    expectUntouched(words);
    EXPECT_EQ(status(with(words, {"--overlay", path("new")})), 0) << name << error.str();
    EXPECT_TRUE(folder.read("disk") == before) << name;
    EXPECT_TRUE(folder.has("new")) << name;
    fs::remove(path("new"));
    EXPECT_EQ(status(with(words, {"--in-place"})), 0) << name << error.str();
    EXPECT_FALSE(folder.read("disk") == before) << name;
    folder.write("disk", before);
  }
}

TEST_F(ImageCommandsTest, WhatItDoesIsInTheOverlay) {
  const std::string overlay = path("new");
  const auto into = [&](const Words& words) {
    fs::remove(overlay);
    EXPECT_EQ(status(with(words, {"--overlay", overlay})), 0) << error.str();
  };
  into({"undo", "remove", "1", "--yes"});
  EXPECT_EQ(printed("new", {"undo", "list"}).find("  1  "), std::string::npos) << out.str();
  into({"exclude", "remove", "1", "--yes"});
  EXPECT_EQ(printed("new", {"exclude", "list"}).find("Other"), std::string::npos);
  EXPECT_NE(printed("disk", {"exclude", "list"}).find("Other"), std::string::npos);
  into({"undo", "restore", "1"});
  EXPECT_EQ(onImage("new", {"scan", "--quiet", "--only", "startup"}), 1);
}

TEST_F(ImageCommandsTest, WhatChangesNothingLeavesNoOverlay) {
  for (const Words& words :
       {Words{"exclude", "remove", "1"}, {"fix", "--yes", "--quiet", "--only", "fonts"}}) {
    EXPECT_EQ(status(with(words, {"--overlay", path("new")})), 0) << words.front() << error.str();
    expectUntouched(words);
  }
  for (const Words& words : {Words{"undo", "remove", "7"},
                             {"undo", "restore", "7"},
                             {"exclude", "remove", "7"},
                             {"languages", "use", "none"},
                             {"undo", "restore-export", path("absent.reg")},
                             {"r"},
                             {"d"}}) {
    EXPECT_EQ(status(with(words, {"--overlay", path("new")})), 2) << words.front();
    expectUntouched(words);
  }
}

TEST_F(ImageCommandsTest, AnExportOnTheDiskIsRestoredByItsNumber) {
  EXPECT_EQ(status({"undo", "restore-export", R"(C:\Program Files\zelvreg\backup\registry\a.reg)",
                    "--overlay", path("new")}),
            2);
  EXPECT_NE(error.str().find("undo restore N"), std::string::npos) << error.str();
  expectUntouched({"undo"});
}

}  // namespace
}  // namespace zelvreg::fixture
