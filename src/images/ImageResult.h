// What a scan leaves of an image in the folder of results: NAME.json with the result, or NAME.error
// with one line that says why there is none. NAME is the name of the image's file.
#ifndef ZELVREG_IMAGES_IMAGE_RESULT_H
#define ZELVREG_IMAGES_IMAGE_RESULT_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::images {

// How the contents of the two files begin, by which it is told what they are of.
struct ResultStarts {
  std::string ofImage;    // of each result of the image
  std::string ofOptions;  // of one that was made with the same options
  std::string ofFailure;  // of the line
};

// Each of the two files is there whole or not at all, however a process ends.
class ImageResult {
 public:
  // `image` is a whole path.
  ImageResult(const std::filesystem::path& folder, std::filesystem::path image,
              ResultStarts expected);

  [[nodiscard]] const std::filesystem::path& image() const { return file; }
  [[nodiscard]] const ResultStarts& expected() const { return starts; }

  // Throws MachineError if one of the two is there and of another image, which it would replace.
  void refuseOther() const;

  // Whether there is a result made with the same options that is newer than each of these files:
  // than its last write, and than the last change of its name, owner or rights.
  [[nodiscard]] bool isNewerThan(const std::vector<std::filesystem::path>& files) const;

  // Puts a result or a line into place, and then removes the other of the two. The text must begin
  // as expected. Throws MachineError.
  void keep(std::string_view content) const;
  void keepFailure(std::string_view line) const;

  // Removes a failure beside a result, which a process that was stopped may have left. Throws
  // MachineError.
  void removeFailure() const;

  // Removes what a process that was stopped has left half written.
  void removeLeftovers() const;

 private:
  std::filesystem::path file;
  std::filesystem::path kept;
  std::filesystem::path failure;
  ResultStarts starts;
};

// Throws MachineError if two images have one name, so that they would share a result, or if a name
// is too long for that of a result.
void refuseNames(const std::vector<std::filesystem::path>& images);

}  // namespace zelvreg::images

#endif
