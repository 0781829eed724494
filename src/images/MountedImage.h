// The Windows disk in an image file, mounted for this process alone, and gone with it.
#ifndef ZELVREG_IMAGES_MOUNTED_IMAGE_H
#define ZELVREG_IMAGES_MOUNTED_IMAGE_H

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "images/ImageLayers.h"
#include "images/Keeper.h"
#include "images/PartitionTable.h"
#include "images/StorageDaemon.h"

namespace zelvreg::images {

struct ImageTarget {
  std::filesystem::path file;  // of any format that qemu-img knows
  // The Windows to work on, by the number of its partition; none if there is one alone.
  std::optional<unsigned> partition;
  bool canBeWritten = false;
  // A new image that takes all that is written, so that the file is only read; else it is written
  // itself.
  std::optional<std::filesystem::path> overlay;
};

class MountedImage {
 public:
  // Throws MachineError, one line that begins with the image's name. Nothing is mounted then, and
  // no overlay is left.
  explicit MountedImage(ImageTarget target);
  ~MountedImage();
  MountedImage(const MountedImage&) = delete;
  MountedImage& operator=(const MountedImage&) = delete;

  // Where the partition with Windows is mounted, and by upper-case letter those that its Windows
  // gave letters to. The others cannot be written.
  [[nodiscard]] const std::filesystem::path& root() const { return windows; }
  [[nodiscard]] const std::map<char, std::filesystem::path>& drives() const { return lettered; }

  [[nodiscard]] bool canBeWritten() const { return image.canBeWritten; }

  // The line with the image's name in place of the folder where it is mounted.
  [[nodiscard]] std::string named(std::string line) const;

  // Has all that was written so far written to the image or the overlay, which stays from now on.
  // Throws MachineError.
  void sync();

  // Takes everything apart; no file of the disk may be open. Throws MachineError if not everything
  // could be written. The destructor does the same and says nothing.
  void close();

 private:
  std::vector<ImageLayer> layers();
  void makeOverlay(const ImageLayer& below);
  void showDisk();
  void readTable();
  void mountPartitions();
  [[nodiscard]] std::string mount(const Partition& partition, bool canBeWritten);
  void chooseWindows();
  void mountForWriting();
  void findDrives();
  [[nodiscard]] bool hasWindows(const Partition& partition) const;
  [[nodiscard]] std::string whyNoWindows(const std::vector<Partition>& among) const;
  [[nodiscard]] std::filesystem::path folderOf(const Partition& partition) const;
  [[nodiscard]] std::filesystem::path fileOf(const Partition& partition) const;
  [[noreturn]] void refuse(const std::string& why) const;

  ImageTarget image;
  std::filesystem::path folder;
  std::optional<Keeper> keeper;
  std::vector<Partition> partitions;
  std::map<unsigned, std::string> unmounted;  // why, by number
  Partition chosen;
  std::filesystem::path windows;
  std::map<char, std::filesystem::path> lettered;
};

}  // namespace zelvreg::images

#endif
