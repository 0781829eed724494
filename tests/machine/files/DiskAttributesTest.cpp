#include "machine/files/DiskAttributes.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <cstdint>
#include <fstream>

#include "machine/TemporaryFolder.h"

namespace zelvreg::machine {
namespace {

// A disk of NTFS cannot be mounted everywhere: an attribute of the same form stands for its own.
constexpr const char* standIn = "user.zelvreg.attributes";

class DiskAttributesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(file).put('x');
    const std::uint32_t none = 0;
    if (setxattr(file.c_str(), standIn, &none, sizeof none, 0) != 0) {
      GTEST_SKIP() << "the folder for temporary files keeps no extended attributes";
    }
  }

  void set(std::uint32_t attributes) const {
    setxattr(file.c_str(), standIn, &attributes, sizeof attributes, 0);
  }
  std::uint32_t kept() const {
    std::uint32_t attributes = 0;
    getxattr(file.c_str(), standIn, &attributes, sizeof attributes);
    return attributes;
  }

  fixture::TemporaryFolder folder;
  std::string file = (folder.path() / "a.dll").string();
  DiskAttributes attributes{true};
};

TEST_F(DiskAttributesTest, ReadOnlyHiddenAndSystemGoWhenOnlyArchiveIsAskedFor) {
  set(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  attributes.ask(file, FILE_ATTRIBUTE_ARCHIVE);
  attributes.write(standIn);
  EXPECT_EQ(kept(), FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(DiskAttributesTest, WhatOnlyTheDiskMaySetStays) {
  constexpr std::uint32_t compressed = 0x800;
  set(compressed | FILE_ATTRIBUTE_READONLY);
  attributes.ask(file, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_DIRECTORY);
  attributes.write(standIn);
  EXPECT_EQ(kept(), compressed | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(DiskAttributesTest, WhatWasWrittenIsNotWrittenAgain) {
  attributes.ask(file, FILE_ATTRIBUTE_ARCHIVE);
  attributes.write(standIn);
  set(FILE_ATTRIBUTE_HIDDEN);
  attributes.write(standIn);
  EXPECT_EQ(kept(), FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(DiskAttributesTest, AFileWithoutAttributesOnItsDiskGetsNone) {
  removexattr(file.c_str(), standIn);
  attributes.ask(file, FILE_ATTRIBUTE_ARCHIVE);
  attributes.write(standIn);
  EXPECT_LT(getxattr(file.c_str(), standIn, nullptr, 0), 0);
}

}  // namespace
}  // namespace zelvreg::machine
