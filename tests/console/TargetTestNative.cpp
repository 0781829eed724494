// The Windows program works on the computer that it runs on and takes no other.
#include <gtest/gtest.h>

#include "console/CommandLine.h"

namespace zelvreg::console {
namespace {

Options parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "zelvreg");
  arguments.push_back("scan");
  return parseCommandLine(static_cast<int>(arguments.size()), arguments.data()).options;
}

std::string complaint(const std::vector<const char*>& arguments) {
  try {
    parse(arguments);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "(none)";
}

TEST(Target, WithoutAComputerItSaysHowToNameOne) {
  const std::string line = complaint({});
  EXPECT_NE(line.find("--machine DIR"), std::string::npos) << line;
  EXPECT_NE(line.find("--offline ROOT"), std::string::npos) << line;
}

TEST(Target, ADiskTakesFurtherDrivesAUserAndAJudgementOfMissingOnes) {
  const Target target = parse({"--offline", "/mnt", "--drive", "d=/data", "--drive", "E=/e",
                               "--user", "Ann", "--missing-drives", "dead"})
                            .target;
  EXPECT_EQ(target.offlineRoot, "/mnt");
  EXPECT_EQ(target.drives, (std::map<char, std::string>{{'D', "/data"}, {'E', "/e"}}));
  EXPECT_EQ(target.user, "Ann");
  EXPECT_TRUE(target.missingDrivesAreDead);
}

TEST(Target, APartitionIsOfAnImage) {
  EXPECT_EQ(parse({"--image", "disk", "--partition", "2"}).target.partition, 2U);
  EXPECT_NE(complaint({"--offline", "/mnt", "--partition", "2"}).find("give it with --image"),
            std::string::npos);
}

TEST(Target, MissingDrivesAreUnknownUnlessSaidOtherwise) {
  EXPECT_FALSE(parse({"--offline", "/mnt"}).target.missingDrivesAreDead);
  EXPECT_NE(complaint({"--offline", "/mnt", "--missing-drives", "maybe"}), "(none)");
}

TEST(Target, AttributesAreLeftAloneOnlyWhenAskedForAndOnADisk) {
  EXPECT_FALSE(parse({"--offline", "/mnt"}).target.filesAreReadOnly);
  EXPECT_TRUE(parse({"--offline", "/mnt", "--read-only-files"}).target.filesAreReadOnly);
  EXPECT_NE(complaint({"--machine", "/m", "--read-only-files"}), "(none)");
}

TEST(Target, OlderBackupsAreKeptUpToANumberThatOnlyADiskTakes) {
  EXPECT_EQ(parse({"--offline", "/mnt"}).target.keptBackups, 3U);
  EXPECT_EQ(parse({"--offline", "/mnt", "--keep-backups", "0"}).target.keptBackups, 0U);
  EXPECT_NE(complaint({"--offline", "/mnt", "--keep-backups", "-1"}), "(none)");
  EXPECT_NE(complaint({"--machine", "/m", "--keep-backups", "1"}), "(none)");
}

TEST(Target, ADriveIsALetterAndAFolderAndGivenOnce) {
  for (const char* drive : {"D", "D=", "=x", "DD=/x", "1=/x"}) {
    EXPECT_NE(complaint({"--offline", "/mnt", "--drive", drive}).find("is not a drive"),
              std::string::npos)
        << drive;
  }
  EXPECT_NE(
      complaint({"--offline", "/mnt", "--drive", "D=/a", "--drive", "d=/b"}).find("given twice"),
      std::string::npos);
}

TEST(Target, AnImageTakesWhatADiskTakes) {
  const Target target =
      parse({"--image", "disk.vhdx", "--partition", "2", "--drive", "D=/data", "--user", "Ann",
             "--missing-drives", "dead", "--keep-backups", "1", "--read-only-files"})
          .target;
  EXPECT_EQ(target.image, "disk.vhdx");
  EXPECT_EQ(target.partition, 2U);
  EXPECT_EQ(target.drives, (std::map<char, std::string>{{'D', "/data"}}));
  EXPECT_EQ(target.user, "Ann");
  EXPECT_TRUE(target.missingDrivesAreDead);
}

TEST(Target, AnImageIsTheOnlyComputer) {
  EXPECT_NE(complaint({"--image", "i", "--offline", "b"}).find("excludes"), std::string::npos);
  EXPECT_NE(complaint({"--image", "i", "--machine", "b"}).find("excludes"), std::string::npos);
  EXPECT_NE(complaint({"--offline", "b", "--partition", "1"}), "(none)");
  EXPECT_NE(complaint({"--offline", "b", "--in-place"}), "(none)");
  EXPECT_NE(complaint({"--image", "i", "--partition", "x"}), "(none)");
}

TEST(Target, WhatOnlyReadsAnImageTakesNoWayToWriteIt) {
  EXPECT_NE(complaint({"--image", "i", "--in-place"}).find("only reads"), std::string::npos);
  EXPECT_NE(complaint({"--image", "i", "--overlay", "n"}).find("only reads"), std::string::npos);
  EXPECT_NE(complaint({"--image", "i", "--overlay", "n", "--in-place"}).find("excludes"),
            std::string::npos);
}

TEST(Target, AMachineFolderAndADiskExcludeEachOther) {
  EXPECT_NE(complaint({"--machine", "a", "--offline", "b"}), "(none)");
  EXPECT_NE(complaint({"--machine", "a", "--user", "Ann"}), "(none)");
}

}  // namespace
}  // namespace zelvreg::console
