// How an image is refused: in one line that begins with its name.
#ifndef ZELVREG_IMAGES_IMAGE_REFUSAL_H
#define ZELVREG_IMAGES_IMAGE_REFUSAL_H

#include <filesystem>
#include <string>

#include "machine/base/MachineError.h"

namespace zelvreg::images {

[[noreturn]] inline void refuse(const std::filesystem::path& image, const std::string& why) {
  throw machine::MachineError(image.string() + ": " + why);
}

}  // namespace zelvreg::images

#endif
