// Images of which no Windows can be mounted; the Windows program takes no image.
#include <sys/stat.h>

#include <array>
#include <cstring>

#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

class ImageRefusalTest : public ImageTest {
 protected:
  // Whether the line speaks of all of this, and of the image.
  void expectRefusal(const std::string& name, std::vector<std::string> arguments,
                     std::initializer_list<const char*> words) {
    arguments.insert(arguments.begin(), "scan");
    const std::string line = refusal(name, std::move(arguments));
    EXPECT_EQ(line.find(path(name)), 0U) << line;
    for (const char* word : words) {
      EXPECT_NE(line.find(word), std::string::npos) << line;
    }
  }

  void makeTwoWindows() const {
    makeDisk("disk",
             {{1, windows({R"(C:\gone\first.exe)"})}, {2, windows({R"(C:\gone\second.exe)"})}});
  }
};

TEST_F(ImageRefusalTest, AnEncryptedPartitionIsNamed) {
  makeDisk("disk", {{1, files}, {2, files}});
  put("disk", startOf(2) * sector, "\xEB\x58\x90-FVE-FS-");
  expectRefusal("disk", {}, {"partition 2", "BitLocker", "--offline"});
  expectRefusal("disk", {"--partition", "2"}, {"partition 2", "BitLocker"});
}

// The header of a LUKS volume of the first version, whose eight keys are not set.
std::string luksHeader() {
  const auto number = [](std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
      bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
  };
  const auto padded = [](std::string text, std::size_t size) {
    text.resize(size);
    return text;
  };
  std::string header = padded("LUKS\xBA\xBE", 7) + '\1' + padded("aes", 32) +
                       padded("xts-plain64", 32) + padded("sha256", 32) + number(4096) +
                       number(64) + std::string(52, '\0') + number(1000) +
                       padded("00000000-0000-0000-0000-000000000000", 40);
  for (std::uint32_t key = 0; key < 8; ++key) {
    header +=
        number(0xDEAD) + number(0) + std::string(32, '\0') + number(8 + 512 * key) + number(4000);
  }
  return header;
}

TEST_F(ImageRefusalTest, AnEncryptedImageIsNamedWithTheWayToACopy) {
  folder.write("luks", luksHeader() + std::string(3'000'000, '\0'));
  expectRefusal("luks", {}, {"is encrypted", "qemu-img convert", "driver=luks,key-secret=key,"});
  folder.write("word", "secret");
  makeDisk("disk", {{1, windows({})}});
  ASSERT_TRUE(run({"qemu-img", "convert", "-f", "raw", "-O", "qcow2", "--object",
                   "secret,id=key,file=" + path("word"), "-o",
                   "encrypt.format=aes,encrypt.key-secret=key", path("disk"), path("qcow2")}));
  const char* way = "driver=qcow2,encrypt.key-secret=key,file.filename=";
  expectRefusal("qcow2", {}, {"is encrypted", "qemu-img convert --object", way});
  ASSERT_TRUE(run({"qemu-img", "convert", "--object", "secret,id=key,file=" + path("word"),
                   "--image-opts", way + path("qcow2"), "-O", "qcow2", path("copy")}));
  EXPECT_EQ(onImage("copy", {"scan", "--quiet", "--only", "startup"}), 0) << error.str();
}

// As vhdx sums its headers and its log.
std::uint32_t castagnoli(const std::string& bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      sum = sum >> 1 ^ ((sum & 1) != 0 ? 0x82F63B78 : 0);
    }
  }
  return ~sum;
}

// Puts numbers of these many bytes into a page of vhdx, and then its sum.
std::string vhdxPage(std::string page,
                     const std::vector<std::array<std::uint64_t, 3>>& placesSizesNumbers) {
  for (const auto& [place, size, number] : placesSizesNumbers) {
    std::memcpy(page.data() + place, &number, size);
  }
  page.replace(4, 4, std::string(4, '\0'));
  const std::uint32_t sum = castagnoli(page);
  std::memcpy(page.data() + 4, &sum, sizeof sum);
  return page;
}

TEST_F(ImageRefusalTest, AnImageWithALogIsNamedWithTheWayToACopy) {
  constexpr std::size_t pageSize = 4096;
  makeDisk("whole", {{1, windows({R"(C:\gone\a.exe)"})}});
  convert("whole", "vhdx", "disk");
  const std::string before = folder.read("disk");
  for (const std::size_t header : {0x10000U, 0x20000U}) {
    put("disk", header, vhdxPage(before.substr(header, pageSize), {{48, 8, 1}, {56, 8, 2}}));
  }
  std::uint64_t log = 0;
  std::memcpy(&log, before.data() + 0x10000 + 72, sizeof log);
  // One entry, which says that a page of the log itself is empty.
  const std::uint64_t size = before.size();
  std::string entry = "loge" + std::string(60, '\0') + "zero";
  entry.resize(pageSize);
  put("disk", log,
      vhdxPage(entry, {{8, 4, pageSize},
                       {16, 8, 1},
                       {24, 4, 1},
                       {32, 8, 1},
                       {40, 8, 2},
                       {48, 8, size},
                       {56, 8, size},
                       {72, 8, pageSize},
                       {80, 8, log + pageSize},
                       {88, 8, 1}}));
  expectRefusal("disk", {}, {"holds changes in a log", "qemu-img check -r all COPY"});
  std::filesystem::copy_file(path("disk"), path("copy"));
  ASSERT_TRUE(run({"qemu-img", "check", "-q", "-r", "all", path("copy")}));
  EXPECT_EQ(onImage("copy", {"scan", "--quiet", "--only", "startup"}), 1) << error.str();
}

TEST_F(ImageRefusalTest, ADynamicDiskIsNamed) {
  makeDisk("disk", {{1, windows({})}}, 0x42);
  expectRefusal("disk", {}, {"partition 1", "dynamic disk", "--offline"});
  makeDisk("guids",
           "label: gpt\n" + entry(1, "type=5808C8AA-7E8F-42E0-85D2-E1E90434CFB3") +
               entry(2, "type=AF9B60A0-1431-4F62-BC68-3311714A69AD"),
           {});
  expectRefusal("guids", {}, {"partition 1", "dynamic disk"});
  expectRefusal("guids", {"--partition", "2"}, {"partition 2", "dynamic disk"});
}

TEST_F(ImageRefusalTest, WithoutAWindowsItSaysSo) {
  makeDisk("disk", {{1, files}});
  expectRefusal("disk", {}, {"there is no Windows"});
  makeDisk("empty", "label: gpt\n", {});
  expectRefusal("empty", {}, {"there is no Windows"});
  folder.write("zeros", std::string(100'000, '\0'));
  expectRefusal("zeros", {}, {"there is no Windows"});
  folder.write("nothing", "");
  expectRefusal("nothing", {}, {"there is no Windows"});
}

TEST_F(ImageRefusalTest, OfTwoWindowsOneIsChosen) {
  makeTwoWindows();
  expectRefusal("disk", {}, {"more than one Windows", "--partition", "1 (4 MB), 2 (4 MB)"});
  expectRefusal("disk", {"--partition", "3"}, {"no partition 3", "1 (4 MB), 2 (4 MB)"});
  EXPECT_EQ(onImage("disk", {"scan", "--json", "--partition", "2", "--only", "startup"}), 1);
  EXPECT_EQ(found(), (std::map<std::string, std::string>{{"second.exe", "sure"}}));
}

TEST_F(ImageRefusalTest, ACutImageIsNamed) {
  makeDisk("disk", {{1, windows({})}});
  std::filesystem::resize_file(path("disk"), startOf(1) * sector + 3'000'000);
  expectRefusal("disk", {}, {"ends before the end of its partition 1"});
  std::filesystem::resize_file(path("disk"), startOf(1) * sector - 4096);
  expectRefusal("disk", {}, {"ends before the end of its partition 1"});
}

TEST_F(ImageRefusalTest, ADamagedTableIsNamed) {
  makeDisk("disk", "label: gpt\n" + entry(1, "type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7"),
           {{1, windows({R"(C:\gone\a.exe)"})}});
  put("disk", sector, "no table");
  // The backup of it stands in.
  EXPECT_EQ(onImage("disk", {"scan", "--json", "--only", "startup"}), 1) << error.str();
  EXPECT_EQ(found().size(), 1U);
  put("disk", startOf(4) * sector - sector, "no table");
  expectRefusal("disk", {}, {"partition table is damaged"});
}

TEST_F(ImageRefusalTest, AVolumeThatCannotBeMountedIsNamed) {
  makeDisk("disk", {{1, files}});
  put("disk", startOf(1) * sector, std::string("\xEB\x52\x90NTFS    ") + std::string(400, '\1'));
  expectRefusal("disk", {}, {"partition 1", "cannot be mounted"});
}

TEST_F(ImageRefusalTest, WhatIsNoImageIsNamed) {
  folder.makeFolder("folder");
  expectRefusal("folder", {}, {"is a folder", "--offline"});
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/zero", path("device"));
  for (const char* name : {"pipe", "device"}) {
    expectRefusal(name, {}, {"is a device or a pipe"});
  }
  expectRefusal("absent", {}, {"no such image file"});
  std::filesystem::create_symlink("link", path("link"));
  expectRefusal("link", {}, {"cannot be read"});
  folder.write("bad.qcow2", std::string("QFI\xFB") + std::string(2000, '\xFF'));
  expectRefusal("bad.qcow2", {}, {"no image that qemu-img can read"});
}

}  // namespace
}  // namespace zelvreg::fixture
