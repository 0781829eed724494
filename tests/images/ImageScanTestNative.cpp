// Scans of image files; the Windows program works on the computer that it runs on.
#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

using Found = std::map<std::string, std::string>;
namespace fs = std::filesystem;

class ImageScanTest : public ImageTest {
 protected:
  // What is on drives that were not given cannot be told.
  static Fill windowsWithDrives(const std::map<char, std::string>& devices) {
    return windows({R"(C:\Windows\explorer.exe)", R"(C:\gone\a.exe)", R"(D:\tools\there.exe)",
                    R"(D:\gone\b.exe)", R"(E:\gone\c.exe)"},
                   devices);
  }

  void expectLetters(const std::string& name) {
    EXPECT_EQ(onImage(name, {"scan", "--json", "--only", "startup"}), 1) << error.str();
    EXPECT_EQ(found(), (Found{{"a.exe", "sure"}, {"b.exe", "sure"}}));
  }

  static std::string bytesOf(std::initializer_list<unsigned> numbers) {
    std::string bytes;
    for (const unsigned number : numbers) {
      bytes += static_cast<char>(number);
    }
    return bytes;
  }
};

class EachFormat : public ImageScanTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(EachFormat, IsScannedAndNotWritten) {
  const std::string file = std::string("disk.") + GetParam();
  makeDisk("whole", {{1, windows({R"(C:\gone\a.exe)"})}});
  convert("whole", GetParam(), file);
  const std::string before = folder.read(file);
  const auto time = fs::last_write_time(path(file));
  EXPECT_EQ(onImage(file, {"scan", "--json", "--only", "startup"}), 1) << error.str();
  EXPECT_EQ(found(), (Found{{"a.exe", "sure"}}));
  EXPECT_TRUE(folder.read(file) == before);
  EXPECT_EQ(fs::last_write_time(path(file)), time);
}

INSTANTIATE_TEST_SUITE_P(Image, EachFormat,
                         ::testing::Values("raw", "qcow2", "vpc", "vhdx", "vmdk", "vdi"),
                         [](const auto& format) { return std::string(format.param); });

TEST_F(ImageScanTest, DrivesOfAMasterTableHaveTheLettersOfTheirWindows) {
  const std::string signature = bytesOf({0x78, 0x56, 0x34, 0x12});
  const std::uint64_t offset = startOf(2) * sector;
  std::string mark = signature;
  mark.append(reinterpret_cast<const char*>(&offset), sizeof offset);
  makeDisk("disk", "label: dos\nlabel-id: 0x12345678\n" + entry(1, "type=7") + entry(2, "type=7"),
           {{1, windowsWithDrives({{'D', mark}, {'E', "another disk"}})}, {2, files}});
  expectLetters("disk");
}

TEST_F(ImageScanTest, ALogicalPartitionHasItsLetter) {
  const std::uint64_t offset = startOf(2) * sector;
  std::string mark = bytesOf({0x78, 0x56, 0x34, 0x12});
  mark.append(reinterpret_cast<const char*>(&offset), sizeof offset);
  const std::string extended =
      "2 : start=" + std::to_string(startOf(2) - 2048) + ", size=10240, type=5\n";
  makeDisk("disk",
           "label: dos\nlabel-id: 0x12345678\n1 : " + entry(1, "type=7") + extended +
               "5 : " + entry(2, "type=7"),
           {{1, windowsWithDrives({{'D', mark}})}, {2, files}});
  expectLetters("disk");
}

TEST_F(ImageScanTest, DrivesOfAGuidTableHaveTheLettersOfTheirWindows) {
  const std::string mark = "DMIO:ID:" + bytesOf({0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66,
                                                 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF});
  const std::string data = "type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7";
  makeDisk("disk",
           "label: gpt\n" + entry(1, data) +
               entry(2, data + ", uuid=00112233-4455-6677-8899-AABBCCDDEEFF") +
               entry(3, "type=C12A7328-F81F-11D2-BA4B-00A0C93EC93B"),
           {{1, windowsWithDrives({{'D', mark}})}, {2, files}});
  expectLetters("disk");
}

// Two letters for one partition, letters of the Windows itself, and what is no letter.
TEST_F(ImageScanTest, WhateverStandsAmongTheLettersTheOthersHold) {
  std::string mark = bytesOf({0x78, 0x56, 0x34, 0x12});
  const std::uint64_t offset = startOf(2) * sector;
  mark.append(reinterpret_cast<const char*>(&offset), sizeof offset);
  const std::map<char, std::string> devices{{'D', mark},
                                            {'E', mark},
                                            {'C', mark},
                                            {'/', mark},
                                            {'1', mark},
                                            {'F', ""},
                                            {'G', std::string(100'000, '\xFF')},
                                            {'H', mark.substr(0, 11)}};
  makeDisk("disk", "label: dos\nlabel-id: 0x12345678\n" + entry(1, "type=7") + entry(2, "type=7"),
           {{1, windows({R"(D:\tools\there.exe)", R"(E:\gone\e.exe)", R"(C:\tools\there.exe)",
                         R"(F:\gone\f.exe)", R"(G:\gone\g.exe)", R"(H:\gone\h.exe)"},
                        devices)},
            {2, files}});
  EXPECT_EQ(onImage("disk", {"scan", "--json", "--only", "startup"}), 1) << error.str();
  EXPECT_EQ(found(), (Found{{"e.exe", "sure"}, {"there.exe", "sure"}}));
}

TEST_F(ImageScanTest, AGivenDriveGoesBeforeThatOfTheImage) {
  const TemporaryFolder other;
  other.write("gone/b.exe", "");
  other.write("tools/there.exe", "");
  makeDisk("disk", {{1, windowsWithDrives({})}});
  EXPECT_EQ(onImage("disk", {"scan", "--json", "--only", "startup", "--missing-drives", "dead",
                             "--drive", "D=" + other.path().string()}),
            1);
  const Found texts = found();
  EXPECT_FALSE(texts.contains("b.exe"));
  EXPECT_TRUE(texts.contains("c.exe"));
}

TEST_F(ImageScanTest, AllUsersOfAnImageAreScanned) {
  makeDisk(
      "disk",
      {{1, [](const TemporaryFolder& root) {
          windows({})(root);
          constexpr const char* run = R"(Software\Microsoft\Windows\CurrentVersion\Run)";
          HiveBuilder(root.path() / "Users/Anna/NTUSER.DAT").text(run, "a.exe", R"(C:\gone\a.exe)");
          root.makeFolder("Users/Bert");
          HiveBuilder(root.path() / "Users/Bert/NTUSER.DAT").text(run, "b.exe", R"(C:\gone\b.exe)");
        }}});
  EXPECT_EQ(onImage("disk", {"scan", "--user", "all", "--json", "--only", "startup"}), 1)
      << error.str();
  EXPECT_EQ(found(), (Found{{"a.exe", "sure"}, {"b.exe", "sure"}}));
}

TEST_F(ImageScanTest, ABareVolumeIsADisk) {
  makeVolume("disk", windows({R"(C:\gone\a.exe)"}));
  EXPECT_EQ(onImage("disk", {"scan", "--json", "--only", "startup"}), 1) << error.str();
  EXPECT_EQ(found(), (Found{{"a.exe", "sure"}}));
}

TEST_F(ImageScanTest, TwoCanScanAtATime) {
  makeVolume("disk", windows({R"(C:\gone\a.exe)"}));
  convert("disk", "qcow2", "disk.qcow2");
  const auto parsed = console::parseCommandLine(
      4, std::array{"zelvreg", "--image", path("disk.qcow2").c_str(), "scan"}.data());
  const auto first = console::Computer::open(parsed.options.target);
  EXPECT_EQ(onImage("disk.qcow2", {"scan", "--quiet"}), 1) << error.str();
}

}  // namespace
}  // namespace zelvreg::fixture
