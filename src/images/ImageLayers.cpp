#include "images/ImageLayers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "machine/base/HostName.h"
#include "machine/base/MachineError.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using machine::MachineError;

constexpr std::size_t mostLayers = 64;

// Those that keep a disk in a file. Other drivers of the daemon would open something else.
constexpr std::array<std::string_view, 11> formats{
    "raw", "qcow2", "vpc", "vhdx", "vmdk", "vdi", "qcow", "qed", "dmg", "cloop", "parallels"};
// Those that can build on another image.
constexpr std::array<std::string_view, 4> layeredFormats{"qcow2", "qcow", "qed", "vmdk"};

[[noreturn]] void refuse(const fs::path& image, const std::string& why) {
  throw MachineError(image.string() + ": " + why);
}

bool isPlainFile(const fs::path& file) {
  std::error_code error;
  return file.is_absolute() && fs::is_regular_file(file, error);
}

// What the tool says of one file alone; nothing that the file names is opened for it. It may be in
// use, which the daemon finds out.
Json describe(Keeper& keeper, const fs::path& image) {
  if (!isPlainFile(image)) {
    refuse(image, "there is no such image file; name one that is there");
  }
  // The tool and the daemon take UTF-8 alone.
  if (!machine::isUtf8(image.string())) {
    refuse(image, "the image's name is no UTF-8; give it another name, and run this again");
  }
  const ProgramEnd told = keeper.run({"qemu-img", "info", "-U", "--output=json", image.string()});
  Json about = Json::parse(told.output, nullptr, false);
  if (told.status != 0 || !about.is_object()) {
    std::string line = told.complaint.substr(0, told.complaint.find('\n'));
    const std::string_view tool = "qemu-img: ";
    line.erase(0, line.starts_with(tool) ? tool.size() : 0);
    refuse(image, "is no image that qemu-img can read: " + line);
  }
  return about;
}

// Those that the daemon opens along with an image.
void refuseOtherFiles(const fs::path& image, const Json& about) {
  const Json specific = about.value("format-specific", Json::object());
  const Json data = specific.value("data", Json::object());
  if (about.value("encrypted", false)) {
    refuse(image, "is encrypted; convert it with qemu-img convert, and name the result");
  }
  if (data.contains("data-file")) {
    refuse(image,
           "keeps its content in another file; convert it with qemu-img convert, and name "
           "the result");
  }
  for (const Json& extent : data.value("extents", Json::array())) {
    const fs::path file = extent.value("filename", "");
    std::error_code error;
    if (file != image && (file.parent_path() != image.parent_path() ||
                          !fs::is_regular_file(fs::symlink_status(file, error)))) {
      refuse(image, "its part " + file.string() +
                        " is no file beside it; put all parts into one "
                        "folder");
    }
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

}  // namespace

std::vector<ImageLayer> layersOf(Keeper& keeper, const fs::path& image) {
  std::vector<ImageLayer> layers;
  std::optional<std::string> statedFormat;
  for (fs::path file = image; !file.empty();) {
    if (layers.size() == mostLayers) {
      refuse(image, "builds on too many others; merge them with qemu-img convert");
    }
    const Json about = describe(keeper, file);
    refuseOtherFiles(file, about);
    layers.push_back(
        {file, formatOf(file, statedFormat.value_or(about.value("format", "unknown")))});
    const std::string below = about.value("full-backing-filename", "");
    if (!below.empty() && !isPlainFile(below)) {
      refuse(file,
             "builds on " + below + ", which is no file here; put that image where this says");
    }
    statedFormat.reset();
    if (about.contains("backing-filename-format")) {
      statedFormat = about.value("backing-filename-format", "");
    }
    file = below;
  }
  return layers;
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
