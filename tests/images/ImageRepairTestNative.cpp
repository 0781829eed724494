// Repairs of disks in image files; the Windows program takes no image.
#include <sys/mount.h>

#include <bit>

#include "images/ImageFixture.h"
#include "images/OwnMounts.h"

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

// A file system in memory, of a size that can be changed.
class SmallDisk {
 public:
  explicit SmallDisk(fs::path folder) : place(std::move(folder)) {
    images::ownMountFolder();  // so that nobody else sees it
    fs::create_directory(place);
    resize(enough, 0);
  }
  ~SmallDisk() { umount2(place.c_str(), MNT_DETACH); }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  static constexpr std::size_t enough = 32 << 20;

  [[nodiscard]] std::size_t used() const {
    const fs::space_info space = fs::space(place);
    return space.capacity - space.free;
  }

  void resize(std::size_t size, unsigned long flags = MS_REMOUNT) const {
    const std::string limit = "size=" + std::to_string(size);
    EXPECT_EQ(mount("small", place.c_str(), "tmpfs", flags, limit.c_str()), 0);
  }

 private:
  fs::path place;
};

TEST_F(ImageRepairTest, AFullDiskLeavesNoOverlay) {
  const SmallDisk small(path("small"));
  int failures = 0;
  for (std::size_t size = 1 << 17; size < SmallDisk::enough; size += size / 8) {
    small.resize(size);
    if (ended("--image", path("disk"), fixInto("small/new")) == 0) break;
    ++failures;
    const std::string said = error.str();
    EXPECT_NE(said.find("No space left") + said.find("could not be written") + 1, 0U) << said;
    EXPECT_FALSE(folder.has("small/new")) << size << said;
  }
  EXPECT_GT(failures, 5);
  EXPECT_EQ(dead("small/new"), 0U);
  expectUntouched();
}

TEST_F(ImageRepairTest, AFullDiskLeavesAnImageThatIsWrittenItselfAsItWas) {
  const SmallDisk small(path("small"));
  convert("whole", "raw", "small/disk");  // with no room for what is empty
  const auto fixIt = {"fix", "--yes", "--quiet", "--only", "startup", "--in-place"};
  int failures = 0;
  for (std::size_t size = small.used(); size < SmallDisk::enough; size += 1 << 14) {
    small.resize(size);
    if (ended("--image", path("small/disk"), {fixIt.begin(), fixIt.end()}) == 0) break;
    ++failures;
    EXPECT_EQ(dead("small/disk"), 1U) << size << error.str();
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(dead("small/disk"), 0U);
}

// The first page of a journal that somebody has opened and not closed.
std::string openJournal(std::uint64_t size) {
  constexpr std::size_t pageSize = 4096;
  std::string page(pageSize, '\0');
  const auto put = [&page](std::size_t offset, std::uint64_t number, std::size_t bytes) {
    for (std::size_t index = 0; index < bytes; ++index) {
      page[offset + index] = static_cast<char>(number >> 8 * index & 0xFF);
    }
  };
  constexpr std::size_t area = 0x30;
  constexpr std::size_t client = area + 0x30;
  page.replace(0, 4, "RSTR");
  put(4, 0x1E, 2);  // where the update sequence is, and its length
  put(6, 9, 2);
  put(16, pageSize, 4);
  put(20, pageSize, 4);
  put(24, area, 2);
  put(26, 1, 2);
  put(28, 1, 2);
  put(area + 8, 1, 2);        // clients
  put(area + 10, 0xFFFF, 2);  // none is free
  put(area + 12, 0, 2);       // the first is in use
  put(area + 16, 67 - static_cast<std::uint64_t>(std::bit_width(size)), 4);
  put(area + 20, 0x30 + 0xA0, 2);
  put(area + 22, 0x30, 2);
  put(area + 24, size, 8);
  put(area + 36, 0x30, 2);
  put(area + 38, 0x40, 2);
  put(client + 16, 0xFFFF, 2);
  put(client + 18, 0xFFFF, 2);
  put(client + 28, 8, 4);
  page.replace(client + 32, 8, std::string("N\0T\0F\0S\0", 8));
  put(0x1E, 1, 2);
  for (std::size_t end = 510; end < pageSize; end += sector) {
    put(end, 1, 2);
  }
  return page;
}

// The driver mounts such a disk for reading only, whatever it is asked.
TEST_F(ImageRepairTest, ADiskWhoseJournalIsOpenIsNotWritten) {
  const std::string bytes = folder.read("whole");
  const std::size_t journal = bytes.find(std::string(1 << 16, '\xFF'));
  ASSERT_NE(journal, std::string::npos);
  const std::size_t size = bytes.find_first_not_of('\xFF', journal) - journal;
  put("whole", journal, openJournal(size) + openJournal(size));
  const std::string open = folder.read("whole");
  EXPECT_EQ(dead("whole"), 1U);
  for (const std::vector<std::string>& words :
       {fixInto("new.qcow2"), {"fix", "--in-place"}, {"undo", "on", "--in-place"}}) {
    const std::string line = refusal("whole", words);
    EXPECT_NE(line.find("can only be read"), std::string::npos) << line;
  }
  EXPECT_FALSE(folder.has("new.qcow2"));
  EXPECT_TRUE(folder.read("whole") == open);
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
