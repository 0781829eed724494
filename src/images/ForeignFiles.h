// What an image's own bytes say of other files, found before any program is asked about the image:
// a program that is asked opens them all first, whatever they are.
#ifndef ZELVREG_IMAGES_FOREIGN_FILES_H
#define ZELVREG_IMAGES_FOREIGN_FILES_H

#include <filesystem>
#include <vector>

namespace zelvreg::images {

// Throws MachineError if a part of this image is in a file that is not a plain one beside it, or if
// its content is in another file, whole or but for what differs. A file that cannot be read, or is
// damaged, is left to whoever opens it. Images below it are not looked at.
void refuseForeignFiles(const std::filesystem::path& image);

// The files that an image names as its parts, whether they are there or not. None for a file that
// is no image.
std::vector<std::filesystem::path> namedParts(const std::filesystem::path& image);

// Throws MachineError unless this file is a plain one beside the image of which it is a part.
void requireBeside(const std::filesystem::path& image, const std::filesystem::path& part);

// Whether a plain file can be a disk without any format: it begins with the sector of a disk, or
// with an empty one.
bool canBeRawDisk(const std::filesystem::path& file);

}  // namespace zelvreg::images

#endif
