// The files that an image consists of: its own, and those that it builds on.
#ifndef ZELVREG_IMAGES_IMAGE_LAYERS_H
#define ZELVREG_IMAGES_IMAGE_LAYERS_H

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "images/Keeper.h"

namespace zelvreg::images {

struct ImageLayer {
  std::filesystem::path file;  // absolute
  std::string format;          // as the daemon calls it
  // Other files beside it that hold parts of its content.
  std::vector<std::filesystem::path> parts = {};
};

// The image and those below it, the lowest one last. What an image says of other files is somebody
// else's word: each must be a plain file, and one that is written along with the image must lie
// beside it. Throws MachineError.
std::vector<ImageLayer> layersOf(Keeper& keeper, const std::filesystem::path& image);

// All files that an image consists of: its own, and all layers below it with their parts. Nothing
// of it is mounted. Throws MachineError.
std::vector<std::filesystem::path> filesOf(const std::filesystem::path& image);

// Describes a node that shows these layers as one disk. Only the first is ever written.
nlohmann::json nodeOf(const std::vector<ImageLayer>& layers, bool canBeWritten);

}  // namespace zelvreg::images

#endif
