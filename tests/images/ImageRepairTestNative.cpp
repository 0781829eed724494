// Repairs of disks in image files; the Windows program takes no image.
#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

class ImageRepairTest : public ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    if (IsSkipped()) return;
    makeDisk("whole", {{1, windows({R"(C:\gone\a.exe)"})}});
    convert("whole", "vhdx", "disk");
    before = folder.read("disk");
    time = fs::last_write_time(path("disk"));
  }

  // How many dead startup programs there are.
  std::size_t dead(const std::string& name) {
    EXPECT_LE(onImage(name, {"scan", "--json", "--only", "startup"}), 1) << error.str();
    return found().size();
  }

  std::vector<std::string> fixInto(const std::string& overlay) const {
    return {"fix", "--yes", "--quiet", "--only", "startup", "--overlay", path(overlay)};
  }

  void expectUntouched() const {
    EXPECT_TRUE(folder.read("disk") == before);
    EXPECT_EQ(fs::last_write_time(path("disk")), time);
  }

  std::string before;
  fs::file_time_type time;
};

TEST_F(ImageRepairTest, AnOverlayTakesTheRepairAndItsUndo) {
  EXPECT_EQ(onImage("disk", {"undo", "on", "--overlay", path("on.qcow2")}), 0) << error.str();
  EXPECT_EQ(onImage("on.qcow2", fixInto("new.qcow2")), 0) << error.str();
  expectUntouched();
  EXPECT_EQ(dead("disk"), 1U);
  EXPECT_EQ(dead("on.qcow2"), 1U);
  EXPECT_EQ(dead("new.qcow2"), 0U);
  EXPECT_EQ(onImage("new.qcow2", {"undo", "restore", "1", "--overlay", path("undone.qcow2")}), 0)
      << error.str();
  EXPECT_EQ(dead("new.qcow2"), 0U);
  EXPECT_EQ(dead("undone.qcow2"), 1U);
  expectUntouched();
}

TEST_F(ImageRepairTest, TheImageItselfIsWrittenOnlyWhenThatIsSaid) {
  EXPECT_NE(refusal("disk", {"fix", "--yes"}).find("--in-place"), std::string::npos);
  EXPECT_NE(refusal("disk", {"undo", "restore", "1"}).find("--overlay"), std::string::npos);
  EXPECT_NE(refusal("disk", {"scan", "--in-place"}).find("only reads"), std::string::npos);
  expectUntouched();
  EXPECT_EQ(onImage("disk", {"undo", "on", "--in-place"}), 0) << error.str();
  EXPECT_EQ(onImage("disk", {"fix", "--yes", "--quiet", "--only", "startup", "--in-place"}), 0)
      << error.str();
  EXPECT_EQ(dead("disk"), 0U);
  EXPECT_EQ(onImage("disk", {"undo", "restore", "1", "--in-place"}), 0) << error.str();
  EXPECT_EQ(dead("disk"), 1U);
}

TEST_F(ImageRepairTest, ARehearsalMakesNoOverlay) {
  std::vector<std::string> words = fixInto("new.qcow2");
  words.emplace_back("--dry-run");
  EXPECT_EQ(onImage("disk", words), 1) << error.str();
  EXPECT_FALSE(folder.has("new.qcow2"));
  expectUntouched();
}

TEST_F(ImageRepairTest, AFileThatIsThereIsNoOverlay) {
  folder.write("mine", "my own");
  EXPECT_NE(refusal("disk", fixInto("mine")).find("name a new file"), std::string::npos);
  EXPECT_EQ(folder.read("mine"), "my own");
  EXPECT_NE(refusal("disk", fixInto("no/folder")).find("cannot be made"), std::string::npos);
}

TEST_F(ImageRepairTest, WithoutARepairThereIsNoOverlay) {
  std::vector<std::string> words = fixInto("new.qcow2");
  words.insert(words.end(), {"--max", "0"});
  EXPECT_NE(refusal("disk", words), "(none)");
  EXPECT_FALSE(folder.has("new.qcow2"));
  EXPECT_EQ(onImage("disk",
                    {"fix", "--yes", "--quiet", "--only", "fonts", "--overlay", path("new.qcow2")}),
            0);
  EXPECT_FALSE(folder.has("new.qcow2"));
  EXPECT_NE(refusal("whole", {"fix", "--yes", "--partition", "4", "--overlay", path("new.qcow2")}),
            "(none)");
  EXPECT_FALSE(folder.has("new.qcow2"));
}

TEST_F(ImageRepairTest, AHibernatedWindowsIsNotWritten) {
  makeDisk("asleep", {{1, [](const TemporaryFolder& root) {
                         windows({R"(C:\gone\a.exe)"})(root);
                         root.write("hiberfil.sys", "hibr");
                       }}});
  EXPECT_EQ(dead("asleep"), 1U);
  const std::string asleep = folder.read("asleep");
  const std::vector<std::vector<std::string>> commands{
      {"fix", "--yes", "--only", "startup"},
      {"undo", "on"},
      {"undo", "restore", "1"},
      {"exclude", "add", R"(HKEY_LOCAL_MACHINE\Software)"}};
  for (const auto& where :
       std::vector<std::vector<std::string>>{{"--overlay", path("new.qcow2")}, {"--in-place"}}) {
    for (std::vector<std::string> words : commands) {
      words.insert(words.end(), where.begin(), where.end());
      const std::string line = refusal("asleep", words);
      EXPECT_NE(line.find(path("asleep") + "/partition 1/hiberfil.sys"), std::string::npos) << line;
      EXPECT_EQ(error.str(), "");
    }
    EXPECT_FALSE(folder.has("new.qcow2"));
    EXPECT_TRUE(folder.read("asleep") == asleep);
  }
}

TEST_F(ImageRepairTest, OnlyOneWritesAnImageAtATime) {
  const auto parsed = console::parseCommandLine(
      5, std::array{"zelvreg", "--image", path("disk").c_str(), "fix", "--in-place"}.data());
  {
    const auto first = console::Computer::open(parsed.options.target);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"scan"}, {"fix", "--in-place"}, fixInto("new.qcow2")}) {
      const std::string line = refusal("disk", words);
      EXPECT_NE(line.find("is in use by another program"), std::string::npos) << line;
    }
  }
  EXPECT_EQ(dead("disk"), 1U);
}

}  // namespace
}  // namespace zelvreg::fixture
