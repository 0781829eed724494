// Names and references that mean more to other programs; the Windows program takes no image.
#include <sys/stat.h>

#include "images/ImageFixture.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

class ImageNamesTest : public ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    if (IsSkipped()) return;
    makeDisk("whole", {{1, windows({R"(C:\gone\a.exe)"})}});
  }

  std::size_t dead(const std::string& name) {
    EXPECT_LE(onImage(name, {"scan", "--json", "--only", "startup"}), 1) << error.str();
    return found().size();
  }
};

TEST_F(ImageNamesTest, AFileIsOnlyAFileWhateverItsName) {
  for (const char* name : {"a,b=c.raw", "json:{}", "nbd:127.0.0.1:1", "-x", "a b'\"\\$(x);", "%s",
                           "Grüße\n", "fat:rw:x"}) {
    fs::copy_file(path("whole"), path(name));
    EXPECT_EQ(dead(name), 1U) << name;
    const std::string overlay = std::string("new ") + name;
    EXPECT_EQ(
        onImage(name, {"fix", "--yes", "--quiet", "--only", "startup", "--overlay", path(overlay)}),
        0)
        << error.str();
    EXPECT_EQ(dead(overlay), 0U) << name;
  }
}

TEST_F(ImageNamesTest, ANameWithoutAFolderIsOnlyAFile) {
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  fs::copy_file("whole", "nbd:x");
  EXPECT_EQ(on("--image", "nbd:x", {"scan", "--quiet", "--only", "startup"}), 1);
  EXPECT_THROW(on("--image", "json:{\"driver\":\"null-co\"}", {"scan"}), machine::MachineError);
  fs::current_path(before);
}

TEST_F(ImageNamesTest, ANameThatIsNoTextIsRefused) {
  // The second is half of a character.
  for (const char* name : {"\xFF", "\xED\xA0\x80"}) {
    fs::copy_file(path("whole"), path(name));
    EXPECT_NE(refusal(name, {"scan"}).find("no UTF-8"), std::string::npos);
  }
  EXPECT_NE(refusal("whole", {"fix", "--overlay", path("\xFE")}).find("no UTF-8"),
            std::string::npos);
}

TEST_F(ImageNamesTest, AnImageNamesNothingButFilesThatItBuildsOn) {
  convert("whole", "qcow2", "base");
  const std::string below = "nbd:127.0.0.1:1";
  ASSERT_TRUE(run({"qemu-img", "create", "-q", "-u", "-f", "qcow2", "-F", "raw", "-b", below,
                   path("bad"), "1M"}));
  EXPECT_NE(refusal("bad", {"scan"}).find("builds on " + below), std::string::npos);
  ASSERT_TRUE(run({"qemu-img", "create", "-q", "-u", "-f", "qcow2", "-F", "nbd", "-b", path("base"),
                   path("odd"), "1M"}));
  EXPECT_NE(refusal("odd", {"scan"}).find("format nbd"), std::string::npos);
  ASSERT_TRUE(
      run({"qemu-img", "create", "-q", "-f", "qcow2", "-F", "qcow2", "-b", "base", path("good")}));
  EXPECT_EQ(dead("good"), 1U);
}

TEST_F(ImageNamesTest, AnImageBuildsOnDisksAlone) {
  const auto buildOn = [this](const std::string& below, const char* format) {
    fs::remove(path("top"));
    ASSERT_TRUE(run({"qemu-img", "create", "-q", "-u", "-f", "qcow2", "-F", format, "-b",
                     path(below), path("top"), std::to_string(fs::file_size(path("whole")))}));
  };
  folder.write("secrets", "root:x:0:0" + std::string(2000, '\n'));
  buildOn("secrets", "raw");
  EXPECT_NE(refusal("top", {"scan"}).find("no disk of the format raw"), std::string::npos);
  buildOn("whole", "vmdk");
  EXPECT_NE(refusal("top", {"scan"}).find("no disk of the format vmdk"), std::string::npos);
  buildOn("whole", "raw");
  EXPECT_EQ(dead("top"), 1U);
  // What a computer writes to its raw disk makes no other image of it.
  fs::copy_file(path("top"), path("base"));
  put("base", 510, "\x55\xAA");
  buildOn("base", "raw");
  EXPECT_NE(refusal("top", {"scan"}), "(none)");
}

TEST_F(ImageNamesTest, NoOtherFileIsOpenedForAnImage) {
  ASSERT_TRUE(run({"qemu-img", "create", "-q", "-f", "qcow2", "-o",
                   "data_file_raw=on,data_file=" + path("content"), path("split"), "1M"}));
  fs::remove(path("content"));
  EXPECT_NE(refusal("split", {"scan"}).find("its content in another file"), std::string::npos);
  // Whoever opens a pipe waits for ever.
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  folder.write("parts.vmdk",
               "# Disk DescriptorFile\nversion=1\nCID=12345678\nparentCID=ffffffff\n"
               "createType=\"monolithicFlat\"\nRW 8 FLAT \"pipe\" 0\n");
  EXPECT_NE(refusal("parts.vmdk", {"scan"}).find("is no file beside it"), std::string::npos);
}

TEST_F(ImageNamesTest, AnImageInACircleIsRefused) {
  for (const auto& [name, below] : {std::pair("one", "two"), std::pair("two", "one")}) {
    ASSERT_TRUE(run({"qemu-img", "create", "-q", "-u", "-f", "qcow2", "-F", "qcow2", "-b",
                     path(below), path(name), "1M"}));
  }
  EXPECT_NE(refusal("one", {"scan"}).find("too many"), std::string::npos);
}

TEST_F(ImageNamesTest, PartsOfAnImageLieBesideIt) {
  ASSERT_TRUE(run({"qemu-img", "convert", "-O", "vmdk", "-o", "subformat=monolithicFlat",
                   path("whole"), path("flat.vmdk")}));
  EXPECT_EQ(dead("flat.vmdk"), 1U);
  std::string text = folder.read("flat.vmdk");
  const std::string name = "\"flat-flat.vmdk\"";
  folder.write("other/flat-flat.vmdk", folder.read("flat-flat.vmdk"));
  text.replace(text.find(name), name.size(), "\"other/flat-flat.vmdk\"");
  folder.write("far.vmdk", text);
  EXPECT_NE(refusal("far.vmdk", {"scan"}).find("is no file beside it"), std::string::npos);
}

TEST(ImagePrograms, ThoseThatAreMissingAreNamedWithTheirPackages) {
  const std::string line = images::missingPrograms("/nowhere");
  for (const char* word :
       {"qemu-img", "qemu-storage-daemon", "ntfs-3g",
        "apt-get install qemu-utils qemu-system-common ntfs-3g", "./run --image"}) {
    EXPECT_NE(line.find(word), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace zelvreg::fixture
