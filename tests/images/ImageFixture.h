// Images of disks that a test makes: volumes of NTFS with what it puts there, in partitions, in any
// format. Each lies in the test's own folder.
#ifndef ZELVREG_TESTS_IMAGES_IMAGE_FIXTURE_H
#define ZELVREG_TESTS_IMAGES_IMAGE_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "console/CommandRun.h"
#include "images/ImagePrograms.h"
#include "machine/AdoptedProcesses.h"
#include "machine/HiveBuilder.h"
#include "machine/ProgramRun.h"
#include "machine/TemporaryFolder.h"
#include "machine/base/MachineError.h"
#include "support/ParsedJson.h"

namespace zelvreg::fixture {

inline constexpr std::uint64_t sector = 512;
inline constexpr std::uint64_t volumeSectors = 8'192;  // 4 MB

class ImageTest : public ::testing::Test, protected console::CommandRun {
 protected:
  // Each 1 MB behind the one before, so that the tool for tables puts it where it is told.
  static std::uint64_t startOf(unsigned number) {
    return 2048 + (number - 1) * (volumeSectors + 2048);
  }

  void SetUp() override {
    try {
      images::requirePrograms();
    } catch (const machine::MachineError& error) {
      GTEST_SKIP() << error.what();
    }
  }

  [[nodiscard]] std::string path(const std::string& name) const {
    return (folder.path() / name).string();
  }

  // Fills a folder; its hives are closed when it returns.
  using Fill = std::function<void(const TemporaryFolder& root)>;

  // A volume of NTFS, as a file.
  void makeVolume(const std::string& name, const Fill& fill, std::uint64_t start = 0) const {
    const TemporaryFolder content;
    fill(content);
    folder.write(name, "");
    std::filesystem::resize_file(path(name), volumeSectors * sector);
    ASSERT_TRUE(run({"mkntfs", "-F", "-Q", "-q", "-s", "512", "-p", std::to_string(start), "-H",
                     "1", "-S", "1", path(name)}));
    const TemporaryFolder mounted;
    ASSERT_TRUE(run({"ntfs-3g", path(name), mounted.path().string()}));
    std::filesystem::copy(content.path(), mounted.path(), std::filesystem::copy_options::recursive);
    ASSERT_TRUE(run({"umount", mounted.path().string()}));
    AdoptedProcesses::waitForAll();
  }

  // A raw disk with a table, as the tool for tables takes it, and a volume in each partition of
  // these numbers of startOf().
  void makeDisk(const std::string& name, const std::string& table,
                const std::vector<std::pair<unsigned, Fill>>& volumes) const {
    folder.write(name, "");
    std::filesystem::resize_file(path(name), startOf(4) * sector);
    folder.write("table", table);
    ASSERT_TRUE(run({"sfdisk", "-q", path(name)}, path("table")));
    for (const auto& [number, fill] : volumes) {
      makeVolume("volume", fill, startOf(number));
      put(name, startOf(number) * sector, folder.read("volume"));
    }
  }

  // The same with a table of four partitions at most, each of one type.
  void makeDisk(const std::string& name, const std::vector<std::pair<unsigned, Fill>>& volumes,
                unsigned char type = 7) const {
    folder.write(name, "");
    std::filesystem::resize_file(path(name), startOf(4) * sector);
    std::string table(sector, '\0');
    table.replace(sector - 2, 2, "\x55\xAA");
    table.replace(440, 4, "\x78\x56\x34\x12");
    for (const auto& [number, fill] : volumes) {
      makeVolume("volume", fill, startOf(number));
      put(name, startOf(number) * sector, folder.read("volume"));
      char* entry = table.data() + 446 + 16 * (number - 1);
      const auto start = static_cast<std::uint32_t>(startOf(number));
      const auto size = static_cast<std::uint32_t>(volumeSectors);
      entry[4] = static_cast<char>(type);
      std::memcpy(entry + 8, &start, sizeof start);
      std::memcpy(entry + 12, &size, sizeof size);
    }
    put(name, 0, table);
  }

  // Writes bytes into a file from an offset on.
  void put(const std::string& name, std::uint64_t offset, const std::string& bytes) const {
    std::fstream file(path(name), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(offset));
    file << bytes;
    ASSERT_TRUE(file.flush());
  }

  void convert(const std::string& from, const std::string& format, const std::string& to) const {
    ASSERT_TRUE(run({"qemu-img", "convert", "-f", "raw", "-O", format, path(from), path(to)}));
  }

  // One line of a table for partition `number`, with its type.
  static std::string entry(unsigned number, const std::string& more) {
    return "start=" + std::to_string(startOf(number)) + ", size=" + std::to_string(volumeSectors) +
           ", " + more + "\n";
  }

  // A Windows that starts these programs, each by a value with the program's name; `devices` are
  // the values of its MountedDevices by letter.
  static Fill windows(const std::vector<std::string>& programs,
                      const std::map<char, std::string>& devices = {}) {
    return [programs, devices](const TemporaryFolder& root) {
      root.write("Windows/System32/kernel32.dll", "");
      root.write("Windows/explorer.exe", "");
      root.makeFolder("Windows/System32/config");
      root.makeFolder("Windows/SysWOW64");
      root.makeFolder("Users/Anna");
      HiveBuilder software(root.path() / "Windows/System32/config/SOFTWARE");
      software.text(R"(Microsoft\Windows NT\CurrentVersion)", "SystemRoot", R"(C:\Windows)");
      for (const std::string& program : programs) {
        const std::string name = program.substr(program.find_last_of('\\') + 1);
        software.text(R"(Microsoft\Windows\CurrentVersion\Run)", name, program);
      }
      HiveBuilder system(root.path() / "Windows/System32/config/SYSTEM");
      system.number("Select", "Current", 1);
      for (const auto& [letter, data] : devices) {
        system.value("MountedDevices", std::string(R"(\DosDevices\)") + letter + ":", 3, data);
      }
      HiveBuilder(root.path() / "Users/Anna/NTUSER.DAT").text("Software\\Vendor", "x", "y");
    };
  }

  static void files(const TemporaryFolder& root) { root.write("tools/there.exe", ""); }

  int onImage(const std::string& name, std::vector<std::string> arguments) {
    return on("--image", path(name), std::move(arguments));
  }

  // The line with which the program ends.
  std::string refusal(const std::string& name, std::vector<std::string> arguments) {
    try {
      onImage(name, std::move(arguments));
    } catch (const std::runtime_error& failure) {
      std::string line = failure.what();
      EXPECT_EQ(line.find('\n'), std::string::npos) << line;
      return line;
    }
    return "(none)";
  }

  // Of each finding the name that it shows, and its confidence.
  [[nodiscard]] std::map<std::string, std::string> found() const {
    std::map<std::string, std::string> texts;
    const auto findings = parsedJson(out.str())["findings"];
    for (const auto& finding : findings) {
      texts[finding["badValue"]] = finding["confidence"];
    }
    return texts;
  }

  const TemporaryFolder folder;

 private:
  const AdoptedProcesses adopted;
};

}  // namespace zelvreg::fixture

#endif
