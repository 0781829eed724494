// The Windows program takes no image.
#include "images/ImageList.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sstream>
#include <tuple>

#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using machine::MachineError;

class ImageList : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path(const std::string& name) const {
    return (fs::canonical(folder.path()) / name).string();
  }

  [[nodiscard]] static std::vector<fs::path> listed(const std::vector<std::string>& arguments,
                                                    const std::string& input = "") {
    std::istringstream stream(input);
    return imagesListed(arguments, stream);
  }

  [[nodiscard]] static std::string refusal(const std::string& argument,
                                           const std::string& input = "") {
    try {
      std::ignore = listed({argument}, input);
    } catch (const MachineError& error) {
      return error.what();
    }
    return "(none)";
  }

  [[nodiscard]] std::vector<fs::path> paths(const std::vector<std::string>& names) const {
    std::vector<fs::path> all;
    for (const std::string& name : names) {
      all.emplace_back(path(name));
    }
    return all;
  }

  const fixture::TemporaryFolder folder;
};

TEST_F(ImageList, AFolderHasThoseThatAreNamedLikeImagesByName) {
  for (const char* name :
       {"b.QCOW2", "a.vhdx", "c.img", ".d.raw", "read.me", "e", "f.qcow2.json"}) {
    folder.write(name, "x");
  }
  folder.makeFolder("folder.vmdk");
  EXPECT_EQ(listed({folder.path()}), paths({"a.vhdx", "b.QCOW2", "c.img"}));
}

TEST_F(ImageList, PartsOfAnImageAreNoImages) {
  folder.write(
      "a.vmdk",
      "# Disk DescriptorFile\nRW 8192 FLAT \"a-flat.vmdk\" 0\nRW 8 SPARSE \"a-s2.vmdk\"\n");
  folder.write("a-flat.vmdk", "x");
  folder.write("a-s2.vmdk", "x");
  folder.write("b.vmdk", "x");
  EXPECT_EQ(listed({folder.path()}), paths({"a.vmdk", "b.vmdk"}));
}

TEST_F(ImageList, AListHasAnImageInEachLine) {
  const std::string lines = "# two\n" + path("a") + "\r\n\n" + path("b c.vhd") + "\n" + path("a");
  folder.write("list", lines);
  EXPECT_EQ(listed({path("list")}), paths({"a", "b c.vhd"}));
  EXPECT_EQ(listed({"-"}, lines), paths({"a", "b c.vhd"}));
}

TEST_F(ImageList, APipeIsAList) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  const pid_t writer = fork();
  if (writer == 0) {
    std::ofstream(path("pipe")) << path("a") << "\n";
    _exit(0);
  }
  EXPECT_EQ(listed({path("pipe")}), paths({"a"}));
}

TEST_F(ImageList, WhatIsNamedLikeAnImageOrHoldsZerosIsOne) {
  folder.write("a.vmdk", "# Disk DescriptorFile\n");
  folder.write("raw", std::string("text\0", 5));
  EXPECT_EQ(listed({path("raw"), path("a.vmdk"), path("gone")}), paths({"raw", "a.vmdk", "gone"}));
}

TEST_F(ImageList, AnImageIsListedOnceHoweverItIsNamed) {
  folder.makeFolder("disks");
  folder.write("disks/a.raw", "x");
  fs::create_directory_symlink(path("disks"), path("link"));
  EXPECT_EQ(listed({path("disks"), path("link/a.raw"), path("disks/../link/a.raw")}),
            paths({"disks/a.raw"}));
}

TEST_F(ImageList, ALinkToAnImageKeepsItsOwnName) {
  folder.write("a.raw", "x");
  fs::create_symlink("a.raw", path("b.raw"));
  EXPECT_EQ(listed({path("b.raw")}), paths({"b.raw"}));
}

TEST_F(ImageList, WhatCannotBeLookedAtIsAnImageOnlyByItsName) {
  for (const char* name : {"store", "store.raw"}) {
    fs::create_symlink(name, path(name));  // leads nowhere but to itself
  }
  EXPECT_NE(refusal(path("store")).find(path("store") + ": cannot be read: "), std::string::npos);
  EXPECT_EQ(listed({path("store.raw")}), paths({"store.raw"}));
}

TEST_F(ImageList, ThatHasNoneIsRefused) {
  folder.write("list", "\n# none\n");
  folder.makeFolder("empty");
  EXPECT_EQ(refusal(path("list")),
            path("list") + ": lists no image; write the path of one in each line");
  EXPECT_NE(refusal("-", "").find("standard input: lists no image"), std::string::npos);
  EXPECT_NE(refusal(path("empty")).find("there is no image in it"), std::string::npos);
}

}  // namespace
}  // namespace zelvreg::images
