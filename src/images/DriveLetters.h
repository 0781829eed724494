// Which letters a Windows gave to the partitions of its disk, as its hives tell. Where a hive
// cannot be read they tell nothing; its damage is told when the disk is opened.
#ifndef ZELVREG_IMAGES_DRIVE_LETTERS_H
#define ZELVREG_IMAGES_DRIVE_LETTERS_H

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace zelvreg::images {

// What the MountedDevices key of a SYSTEM hive keeps of each letter: the mark of a partition, or
// what other disks have. By upper-case letter.
std::map<char, std::string> markedLetters(const std::filesystem::path& systemHive);

// The drive of SystemRoot, as a SOFTWARE hive has it.
std::optional<char> systemDrive(const std::filesystem::path& softwareHive);

}  // namespace zelvreg::images

#endif
