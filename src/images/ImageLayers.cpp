#include "images/ImageLayers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include "images/ForeignFiles.h"
#include "images/ImageRefusal.h"
#include "images/OwnMounts.h"
#include "machine/base/PlainFile.h"
#include "unicode/Unicode.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr std::size_t mostLayers = 64;

// Those that keep a disk in a file. Other drivers of the daemon would open something else.
constexpr std::array<std::string_view, 11> formats{
    "raw", "qcow2", "vpc", "vhdx", "vmdk", "vdi", "qcow", "qed", "dmg", "cloop", "parallels"};
// Those that can build on another image.
constexpr std::array<std::string_view, 4> layeredFormats{"qcow2", "qcow", "qed", "vmdk"};

// Empty for a plain file that can be read.
std::string whyNotReadable(const fs::path& file) {
  if (machine::openPlainFile(file).isOpen()) return "";
  switch (errno) {
    case ENOENT:
      return "there is no such image file; name one that is there";
    case EISDIR:
      return "is a folder; name the image file in it, or give a mounted disk with --offline";
    case EINVAL:
      return "is a device or a pipe; name a file, or mount the disk and give it with --offline";
    default:
      return "cannot be read: " + std::string(std::strerror(errno)) +
             "; give yourself the right to read it";
  }
}

void requireReadable(const fs::path& image) {
  if (const std::string why = whyNotReadable(image); !why.empty()) {
    refuse(image, why);
  }
  // The tool and the daemon take UTF-8 alone.
  if (!isPlainUtf8(image.string())) {
    refuse(image, "the image's name is no UTF-8; give it another name, and run this again");
  }
}

// From the words of the tool.
std::string whyUnreadable(const std::string& complaint) {
  std::string line = complaint.substr(0, complaint.find('\n'));
  if (line.find("log that needs to be replayed") != std::string::npos) {
    return "holds changes in a log that can only be taken over by writing it; make a copy, run "
           "qemu-img check -r all COPY, and name the copy";
  }
  const std::string_view tool = "qemu-img: ";
  line.erase(0, line.starts_with(tool) ? tool.size() : 0);
  return "is no image that qemu-img can read: " + line +
         "; get a whole copy of it, or if it is a checkpoint of another image, merge the two";
}

// What the tool says of one file alone; no file of another folder is opened for it. It may be in
// use, which the daemon finds out.
Json describe(Keeper& keeper, const fs::path& image) {
  refuseForeignFiles(image);
  const ProgramEnd told = keeper.run({"qemu-img", "info", "-U", "--output=json", image.string()});
  Json about = Json::parse(told.output, nullptr, false);
  if (told.status != 0 || !about.is_object()) {
    refuse(image, whyUnreadable(told.complaint));
  }
  return about;
}

// What the daemon opens along with an image.
std::vector<fs::path> partsOf(const fs::path& image, const Json& about) {
  std::vector<fs::path> parts;
  const Json specific = about.value("format-specific", Json::object());
  const Json data = specific.value("data", Json::object());
  for (const Json& extent : data.value("extents", Json::array())) {
    if (fs::path file = extent.value("filename", ""); file != image) {
      requireBeside(image, file);
      parts.push_back(std::move(file));
    }
  }
  return parts;
}

void refuseEncrypted(const fs::path& image, const std::string& format, const Json& about) {
  if (about.value("encrypted", false)) {
    const std::string of = format == "luks" ? "" : "encrypt.";
    refuse(image,
           "is encrypted; decrypt it, and name the copy: qemu-img convert --object "
           "secret,id=key,file=PASSWORD-FILE --image-opts driver=" +
               format + "," + of + "key-secret=key,file.filename=FILE -O qcow2 COPY.qcow2");
  }
}

std::string formatOf(const fs::path& image, std::string format) {
  if (std::ranges::find(formats, format) == formats.end()) {
    refuse(image, "is of the format " + format +
                      ", which cannot be mounted; convert it with "
                      "qemu-img convert, and name the result");
  }
  return format;
}

void refuseNoFile(const fs::path& image, const fs::path& below) {
  std::error_code error;
  if (!below.is_absolute() || !fs::is_regular_file(below, error)) {
    refuse(image, "builds on " + below.string() +
                      ", which is no file here; put that image where this says");
  }
}

// A base that is no disk was never meant: somebody who could write the image would have any file
// read by whoever opens it.
[[noreturn]] void refuseBase(const fs::path& image, const fs::path& base,
                             const std::string& format) {
  refuse(image, "builds on " + base.string() + ", which is no disk of the format " + format +
                    "; look what that file is, and put the right one there");
}

}  // namespace

std::vector<ImageLayer> layersOf(Keeper& keeper, const fs::path& image) {
  std::vector<ImageLayer> layers;
  fs::path above;
  std::string stated;
  for (fs::path file = image; !file.empty();) {
    if (layers.size() == mostLayers) {
      refuse(image, "builds on too many others; merge them with qemu-img convert");
    }
    requireReadable(file);
    // A raw one builds on nothing, whatever the computer has written there.
    const Json about = stated == "raw" ? Json::object() : describe(keeper, file);
    const std::string format = about.value("format", "raw");
    refuseEncrypted(file, format, about);
    layers.push_back({.file = file,
                      .format = formatOf(file, stated.empty() ? format : stated),
                      .parts = partsOf(file, about)});
    const bool isDisk = layers.back().format == format && (format != "raw" || canBeRawDisk(file));
    if (!above.empty() && !isDisk) {
      refuseBase(above, file, layers.back().format);
    }
    const fs::path below = about.value("full-backing-filename", "");
    if (!below.empty()) {
      refuseNoFile(file, below);
    }
    stated = about.value("backing-filename-format", "");
    above = std::exchange(file, below);
  }
  return layers;
}

std::vector<fs::path> filesOf(const fs::path& image) {
  Keeper keeper(ownMountFolder(), {});
  std::vector<fs::path> files;
  for (const ImageLayer& layer : layersOf(keeper, image)) {
    files.push_back(layer.file);
    files.insert(files.end(), layer.parts.begin(), layer.parts.end());
  }
  return files;
}

Json nodeOf(const std::vector<ImageLayer>& layers, bool canBeWritten) {
  Json node;
  for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
    const bool isReadOnly = !canBeWritten || layer != layers.rend() - 1;
    Json above{
        {"driver", layer->format},
        {"read-only", isReadOnly},
        {"file",
         {{"driver", "file"}, {"filename", layer->file.string()}, {"read-only", isReadOnly}}}};
    if (std::ranges::find(layeredFormats, layer->format) != layeredFormats.end()) {
      above["backing"] = node;
    }
    node = std::move(above);
  }
  return node;
}

}  // namespace zelvreg::images
