// Which images a command line names: one by one, by their folder, or in a list.
#ifndef ZELVREG_IMAGES_IMAGE_LIST_H
#define ZELVREG_IMAGES_IMAGE_LIST_H

#include <filesystem>
#include <istream>
#include <string>
#include <vector>

namespace zelvreg::images {

// Whether a file's name ends as those of images do: .raw, .img, .dd, .qcow2, .qcow, .qed, .vhd,
// .vhdx, .vmdk, .vdi, in any case.
bool isNamedLikeImage(const std::filesystem::path& file);

// The images that these arguments name, each once, in their order, with the whole path of its
// folder. An argument is
// - "-": a list on standard input, `input`;
// - a folder: the files in it that are named like images, by name, but for those that begin with a
//   dot, and for parts of others;
// - a list: a pipe, or a file that is not named like an image and begins with text. Each line names
//   an image; one that is empty or begins with "#" names none;
// - anything else is an image, whether it is there or not.
// Throws MachineError if there is none in a folder or a list, if either cannot be read, or if what
// may be either cannot.
std::vector<std::filesystem::path> imagesListed(const std::vector<std::string>& arguments,
                                                std::istream& input);

}  // namespace zelvreg::images

#endif
