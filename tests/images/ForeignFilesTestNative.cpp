// What images say of other files, as somebody writes it who wants them read; the Windows program
// takes no image.
#include "images/ForeignFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

class ForeignFilesTest : public ::testing::Test {
 protected:
  // What is said of a file; empty if nothing.
  [[nodiscard]] std::string refusal(const std::string& name) const {
    try {
      images::refuseForeignFiles(folder.path() / name);
    } catch (const machine::MachineError& error) {
      return error.what();
    }
    return "";
  }

  [[nodiscard]] std::string refusalOf(const std::string& parts) const {
    folder.write("image", "# Disk DescriptorFile\nversion=1\n" + parts);
    return refusal("image");
  }

  // An image of vmdk that holds its text itself, and nothing else.
  static std::string embedded(const std::string& text, char capacity) {
    std::string bytes(512, '\0');
    bytes.replace(0, 4, "KDMV");
    bytes[12] = capacity;
    bytes[28] = 1;
    return bytes + text;
  }

  const TemporaryFolder folder;
};

TEST_F(ForeignFilesTest, APartLiesBesideItsImage) {
  folder.write("part", "");
  folder.write("sub/part", "");
  fs::create_symlink("/etc/passwd", folder.path() / "link");
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(refusalOf("RW 8 FLAT \"part\" 0\nRW 8 FLAT \"" + folder.path().string() + "/part\" 8"),
            "");
  for (const char* name : {"/etc/passwd", "../etc/passwd", "sub/part", "./part", "link", "pipe",
                           "absent", "", "nbd:unix:/tmp/x", "json:{}", "fat:/etc", "/dev/zero"}) {
    EXPECT_NE(refusalOf("RW 8 FLAT \"part\" 0\nRW 8 FLAT \"" + std::string(name) + "\" 0")
                  .find("is no file beside it"),
              std::string::npos)
        << name;
  }
}

TEST_F(ForeignFilesTest, HoweverItIsWritten) {
  for (const char* part :
       {"RW 8 VMFSSPARSE \"absent\"", " RW\t8\tSPARSE\t\"absent\"\r\n", "RW\n8\nFLAT\n\"absent\" 0",
        "RW 8FLAT\"absent", "x=\"\nRW 8 FLAT \"absent"}) {
    EXPECT_NE(refusalOf(part).find("absent is no file beside it"), std::string::npos) << part;
  }
  // What else stands in quotes is no part.
  EXPECT_EQ(refusalOf("encoding=\"UTF-8\"\nddb.x2=\"4\"\nddb.uuid = \"60 00\"\nRW 8 ZERO\n"), "");
}

TEST_F(ForeignFilesTest, APartOfAPartIsNoOther) {
  const std::string text = "RW 8 FLAT \"/etc/passwd\" 0";
  folder.write("inner", embedded(text, 0));
  EXPECT_NE(refusalOf("RW 8 SPARSE \"inner\"").find("its part /etc/passwd"), std::string::npos);
  folder.write("inner", embedded(text, 1));  // has content of its own, and the text is not read
  EXPECT_EQ(refusalOf("RW 8 SPARSE \"inner\""), "");
  folder.write("inner", embedded("RW 8 SPARSE \"image\"", 0));
  EXPECT_EQ(refusalOf("RW 8 SPARSE \"inner\""), "");
}

TEST_F(ForeignFilesTest, ContentInAnotherFileIsToldByTheThirdVersionAlone) {
  std::string header = std::string("QFI\xFB\0\0\0\3", 8) + std::string(72, '\0');
  folder.write("image", header);
  EXPECT_EQ(refusal("image"), "");
  header[79] = 4;
  folder.write("image", header);
  EXPECT_NE(refusal("image").find("its content in another file"), std::string::npos);
  header[7] = 2;
  folder.write("image", header);
  EXPECT_EQ(refusal("image"), "");
}

TEST_F(ForeignFilesTest, WhatOnlyDiffersFromAnotherIsNoDisk) {
  std::string footer(512, '\0');
  footer.replace(0, 8, "conectix");
  footer[63] = 3;
  folder.write("image", footer);
  EXPECT_EQ(refusal("image"), "");
  footer[63] = 4;
  folder.write("image", footer);
  EXPECT_NE(refusal("image").find("differs from another image"), std::string::npos);
}

TEST_F(ForeignFilesTest, ADiskIsNoText) {
  folder.write("image", "\xEB# RW 8 FLAT \"/etc/passwd\" 0");
  EXPECT_EQ(refusal("image"), "");
  EXPECT_EQ(refusal("absent"), "");
}

TEST_F(ForeignFilesTest, ARawDiskBeginsWithItsSectorOrAnEmptyOne) {
  const auto can = [this](const std::string& content) {
    folder.write("base", content);
    return images::canBeRawDisk(folder.path() / "base");
  };
  EXPECT_TRUE(can(std::string(510, 'x') + "\x55\xAA"));
  EXPECT_TRUE(can(std::string(512, '\0')));
  EXPECT_FALSE(can(std::string(512, 'x')));
  EXPECT_FALSE(can(std::string(511, '\0')));
  EXPECT_FALSE(images::canBeRawDisk(folder.path()));
}

}  // namespace
}  // namespace zelvreg::fixture
