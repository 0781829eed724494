#include "images/ImageList.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <fstream>
#include <set>
#include <string_view>
#include <system_error>

#include "images/ForeignFiles.h"
#include "machine/base/MachineError.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using machine::MachineError;

constexpr std::array<std::string_view, 10> endings{".raw", ".img", ".dd",   ".qcow2", ".qcow",
                                                   ".qed", ".vhd", ".vhdx", ".vmdk",  ".vdi"};

[[noreturn]] void refuseUnreadable(const fs::path& file, const std::error_code& error) {
  throw MachineError(file.string() + ": cannot be read: " + error.message() +
                     "; give yourself the right to read it");
}

// A disk has zeros near its beginning, whatever it holds; text has none.
bool beginsWithText(const fs::path& file) {
  const machine::FileDescriptor opened = machine::openPlainFile(file);
  if (!opened.isOpen()) refuseUnreadable(file, {errno, std::generic_category()});
  std::array<char, 4096> start{};
  const std::size_t size = machine::readAt(opened, 0, start.data(), start.size());
  return std::string_view(start.data(), size).find('\0') == std::string_view::npos;
}

bool isList(const fs::path& file, const fs::file_status& status) {
  return fs::is_fifo(status) ||
         (fs::is_regular_file(status) && !isNamedLikeImage(file) && beginsWithText(file));
}

std::vector<fs::path> linesOf(std::istream& list, const std::string& name) {
  std::vector<fs::path> images;
  for (std::string line; std::getline(list, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty() && !line.starts_with('#')) images.emplace_back(line);
  }
  if (list.bad()) {
    throw MachineError(name + ": cannot be read to its end; make the list again");
  }
  if (images.empty()) {
    throw MachineError(name + ": lists no image; write the path of one in each line");
  }
  return images;
}

std::vector<fs::path> imagesInFolder(const fs::path& folder) {
  std::error_code error;
  std::set<fs::path> images;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code unknown;
    if (!entry->path().filename().string().starts_with('.') && isNamedLikeImage(entry->path()) &&
        entry->is_regular_file(unknown)) {
      images.insert(entry->path());
    }
  }
  if (error) refuseUnreadable(folder, error);
  std::set<fs::path> parts;
  for (const fs::path& image : images) {
    const auto named = namedParts(image);
    parts.insert(named.begin(), named.end());
  }
  std::erase_if(images, [&parts](const fs::path& image) { return parts.contains(image); });
  if (images.empty()) {
    throw MachineError(folder.string() +
                       ": there is no image in it; name the folder that holds them, or a list");
  }
  return {images.begin(), images.end()};
}

// What cannot be looked at and does not have the name of an image may be a folder or a list of
// them.
std::vector<fs::path> imagesOf(const std::string& argument, std::istream& input) {
  if (argument == "-") return linesOf(input, "standard input");
  std::error_code error;
  const fs::file_status status = fs::status(argument, error);
  if (status.type() == fs::file_type::none && !isNamedLikeImage(argument)) {
    refuseUnreadable(argument, error);
  }
  if (fs::is_directory(status)) return imagesInFolder(argument);
  if (!isList(argument, status)) return {argument};
  std::ifstream list(argument);
  return linesOf(list, argument);
}

// By whichever way a folder is reached, an image in it has one path. Its own name stays: what a
// link means to an image that builds on others is for who opens it.
fs::path wholePath(const fs::path& image) {
  std::error_code error;
  const fs::path whole = fs::absolute(image);
  const fs::path folder = fs::canonical(whole.parent_path(), error);
  return error ? whole.lexically_normal() : folder / whole.filename();
}

}  // namespace

bool isNamedLikeImage(const fs::path& file) {
  std::string ending = file.extension().string();
  std::ranges::transform(ending, ending.begin(), [](char letter) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  });
  return std::ranges::find(endings, ending) != endings.end();
}

std::vector<fs::path> imagesListed(const std::vector<std::string>& arguments, std::istream& input) {
  std::vector<fs::path> all;
  std::set<fs::path> known;
  for (const std::string& argument : arguments) {
    for (const fs::path& image : imagesOf(argument, input)) {
      const fs::path whole = wholePath(image);
      if (known.insert(whole).second) all.push_back(whole);
    }
  }
  return all;
}

}  // namespace zelvreg::images
