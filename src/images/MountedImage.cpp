#include "images/MountedImage.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "images/DriveLetters.h"
#include "images/ImagePrograms.h"
#include "images/ImageRefusal.h"
#include "images/OwnMounts.h"
#include "machine/base/FileDescriptor.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"
#include "machine/offline/Hibernation.h"
#include "machine/offline/OfflineFiles.h"
#include "unicode/Unicode.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using machine::FileDescriptor;
using machine::MachineError;

// The two daemons. The first shows the whole disk as a file. The second cuts that into partitions,
// since one daemon does not let a partition of a disk be written while it shows another one.
constexpr std::size_t diskDaemon = 0;
constexpr std::size_t partitionDaemon = 1;

constexpr const char* diskNode = "disk";

constexpr const char* noRoom =
    "; see that there is room where it is kept and that its disk is sound, and run this again";

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

void makeEmptyFile(const fs::path& file) { std::ofstream(file).flush(); }

// Has what was written to a file or a folder reach its disk. Empty if it could, else why not.
std::string whyNotSynced(const fs::path& file) {
  const FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  return opened.isOpen() && fsync(opened.get()) == 0 ? "" : std::strerror(errno);
}

bool isReadOnly(const fs::path& folder) {
  struct statvfs about {};
  return statvfs(folder.c_str(), &about) != 0 || (about.f_flag & ST_RDONLY) != 0;
}

// What the driver reads of such a one may be there, but what is missing would look like damage.
std::string cutLine(const Partition& partition) {
  return "the image ends before the end of its partition " + std::to_string(partition.number) +
         "; get a whole copy of it";
}

std::string listOf(const std::vector<Partition>& partitions) {
  std::string text;
  for (const Partition& partition : partitions) {
    constexpr std::uint64_t megabyte = 1 << 20;
    text += (text.empty() ? "" : ", ") + std::to_string(partition.number) + " (" +
            std::to_string(partition.size / megabyte) + " MB)";
  }
  return text;
}

}  // namespace

MountedImage::MountedImage(ImageTarget target) : image(std::move(target)) {
  image.file = fs::absolute(image.file);
  requirePrograms();
  std::string name = (ownMountFolder() / "image-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) refuse(std::strerror(errno));
  folder = name;
  keeper.emplace(folder, StorageDaemon::words());
  showDisk();
  readTable();
  mountPartitions();
  chooseWindows();
  if (image.canBeWritten) {
    mountForWriting();
  }
  findDrives();
}

MountedImage::~MountedImage() = default;

void MountedImage::refuse(const std::string& why) const { images::refuse(image.file, why); }

fs::path MountedImage::folderOf(const Partition& partition) const {
  return folder / ("partition " + std::to_string(partition.number));
}

fs::path MountedImage::fileOf(const Partition& partition) const {
  return folder / ("p" + std::to_string(partition.number));
}

void MountedImage::makeOverlay(const ImageLayer& below) {
  image.overlay = fs::absolute(*image.overlay);
  if (!isPlainUtf8(image.overlay->string())) {
    refuse("the overlay's name is no UTF-8; give it another name");
  }
  try {
    keeper->make(*image.overlay);
  } catch (const MachineError& error) {
    refuse("the overlay " + image.overlay->string() + " cannot be made: " + error.what() +
           "; name a new file in a folder that you may write");
  }
  const ProgramEnd end = keeper->run({"qemu-img", "create", "-q", "-f", "qcow2", "-F", below.format,
                                      "-b", below.file.string(), image.overlay->string()});
  if (end.status != 0) {
    refuse("the overlay " + image.overlay->string() +
           " cannot be made: " + firstLine(end.complaint) + "; see that there is room for it");
  }
}

std::vector<ImageLayer> MountedImage::layers() {
  std::vector<ImageLayer> layers = layersOf(*keeper, image.file);
  if (image.overlay) {
    makeOverlay(layers.front());
    layers.insert(layers.begin(), {.file = *image.overlay, .format = "qcow2"});
  }
  return layers;
}

void MountedImage::showDisk() {
  nlohmann::json node = nodeOf(layers(), image.canBeWritten);
  node["node-name"] = diskNode;
  makeEmptyFile(folder / diskNode);
  try {
    StorageDaemon daemon(keeper->daemon(diskDaemon));
    daemon.add(node);
    daemon.show(diskNode, folder / diskNode, image.canBeWritten);
  } catch (const MachineError& error) {
    const std::string why = error.what();
    refuse(why.find(" lock") != std::string::npos
               ? "is in use by another program; wait until it has ended"
               : "cannot be opened: " + firstLine(why) +
                     "; see that you may read it, and write it if it is to be repaired --in-place");
  }
}

void MountedImage::readTable() {
  const FileDescriptor disk = machine::openPlainFile(folder / diskNode);
  const auto read = [&disk](std::uint64_t offset, std::span<std::byte> bytes) {
    return machine::readAt(disk, offset, bytes.data(), bytes.size()) == bytes.size();
  };
  try {
    partitions = readPartitions(read, fs::file_size(folder / diskNode));
  } catch (const MachineError& error) {
    refuse(error.what());
  }
}

void MountedImage::mountPartitions() {
  StorageDaemon daemon(keeper->daemon(partitionDaemon));
  for (const Partition& partition : partitions) {
    if (partition.content != Content::Ntfs) continue;
    const std::string name = fileOf(partition).filename().string();
    makeEmptyFile(fileOf(partition));
    fs::create_directory(folderOf(partition));
    try {
      // The disk is already locked, for this process alone.
      daemon.add({{"driver", "raw"},
                  {"node-name", name},
                  {"read-only", !image.canBeWritten},
                  {"offset", partition.offset},
                  {"size", partition.size},
                  {"file",
                   {{"driver", "file"},
                    {"filename", (folder / diskNode).string()},
                    {"read-only", !image.canBeWritten},
                    {"locking", "off"}}}});
      daemon.show(name, fileOf(partition), image.canBeWritten);
      unmounted[partition.number] = mount(partition, false);
    } catch (const MachineError& error) {
      unmounted[partition.number] = firstLine(error.what());
    }
  }
}

// Empty, or why it could not be done.
std::string MountedImage::mount(const Partition& partition, bool canBeWritten) {
  const ProgramEnd end =
      keeper->mount({"ntfs-3g", "-o", canBeWritten ? "norecover,noatime" : "norecover,ro",
                     fileOf(partition).string(), folderOf(partition).string()});
  return end.status == 0 ? "" : "it cannot be mounted: " + firstLine(end.complaint);
}

bool MountedImage::hasWindows(const Partition& partition) const {
  const auto why = unmounted.find(partition.number);
  if (why == unmounted.end() || !why->second.empty()) return false;
  try {
    const machine::OfflineFiles files = machine::findOfflineFiles(folderOf(partition));
    return files.software || files.system;
  } catch (const MachineError&) {
    return false;
  }
}

// Of those that a repair could be meant for, the first that says more than that nothing is there.
std::string MountedImage::whyNoWindows(const std::vector<Partition>& among) const {
  for (const Partition& partition : among) {
    const std::string name = "partition " + std::to_string(partition.number);
    if (partition.content == Content::BitLocker) {
      return name +
             " is encrypted with BitLocker; decrypt it, or mount it unlocked and give it "
             "with --offline";
    }
    if (partition.content == Content::Dynamic) {
      return name +
             " belongs to a dynamic disk; mount its volume with ldmtool and give it with "
             "--offline";
    }
    const auto why = unmounted.find(partition.number);
    if (partition.isCut && (why == unmounted.end() || !why->second.empty())) {
      return cutLine(partition);
    }
    if (why != unmounted.end() && !why->second.empty()) {
      return name + ": " + why->second;
    }
  }
  return "there is no Windows on it; name the image of the disk that holds Windows and Users";
}

void MountedImage::chooseWindows() {
  std::vector<Partition> among = partitions;
  if (image.partition) {
    std::erase_if(among, [&](const Partition& it) { return it.number != *image.partition; });
    if (among.empty()) {
      refuse("there is no partition " + std::to_string(*image.partition) + "; there are " +
             (partitions.empty() ? "none" : listOf(partitions)));
    }
  }
  std::vector<Partition> found;
  std::ranges::copy_if(among, std::back_inserter(found),
                       [this](const Partition& partition) { return hasWindows(partition); });
  if (found.empty()) {
    refuse(whyNoWindows(among));
  }
  if (found.size() > 1) {
    refuse("there is more than one Windows on it; choose with --partition one of " + listOf(found));
  }
  chosen = found.front();
  if (chosen.isCut) {
    refuse(cutLine(chosen));
  }
  windows = folderOf(chosen);
}

// The driver falls back to reading only without a word.
void MountedImage::mountForWriting() {
  machine::OfflineDisk disk;
  disk.root = windows;
  if (const auto why = machine::whyAsleep(disk)) {
    throw MachineError(named(*why));
  }
  if (umount2(windows.c_str(), 0) != 0) refuse(std::strerror(errno));
  if (const std::string why = mount(chosen, true); !why.empty()) refuse(why);
  if (isReadOnly(windows)) {
    refuse(
        "its Windows was not shut down fully, so it can only be read; start it and shut it down "
        "with shutdown /s /t 0, and run this again");
  }
}

void MountedImage::findDrives() {
  const machine::OfflineFiles files = machine::findOfflineFiles(windows);
  if (!files.system) return;
  const std::optional<char> ownLetter =
      files.software ? systemDrive(*files.software) : std::nullopt;
  for (const auto& [letter, mark] : markedLetters(*files.system)) {
    const auto partition = std::ranges::find(partitions, mark, &Partition::mark);
    if (mark.empty() || partition == partitions.end() || partition->number == chosen.number ||
        letter == ownLetter.value_or('C')) {
      continue;
    }
    const auto why = unmounted.find(partition->number);
    if (why != unmounted.end() && why->second.empty()) {
      lettered.emplace(letter, folderOf(*partition));
    }
  }
}

std::string MountedImage::named(std::string line) const {
  const std::string inside = folder.string();
  for (std::size_t at = line.find(inside); at != std::string::npos; at = line.find(inside, at)) {
    line.replace(at, inside.size(), image.file.string());
    at += image.file.string().size();
  }
  return line;
}

void MountedImage::sync() {
  for (const fs::path& file : {windows, fileOf(chosen), folder / diskNode}) {
    if (const std::string why = whyNotSynced(file); !why.empty()) {
      refuse("the repair could not be written: " + why + noRoom);
    }
  }
  keeper->keep();
}

void MountedImage::close() {
  try {
    keeper->finish();
  } catch (const MachineError& error) {
    refuse(error.what() + std::string(noRoom));
  }
}

}  // namespace zelvreg::images
