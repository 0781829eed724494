#include "images/ForeignFiles.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "images/ImageRefusal.h"
#include "images/LittleEndian.h"
#include "machine/base/PlainFile.h"

namespace zelvreg::images {
namespace {

namespace fs = std::filesystem;
using machine::FileDescriptor;

constexpr std::size_t sectorSize = 512;
using Sector = std::array<std::byte, sectorSize>;

bool beginsWith(const Sector& sector, std::string_view text) {
  return std::equal(text.begin(), text.end(), sector.begin(), [](char left, std::byte right) {
    return static_cast<std::byte>(left) == right;
  });
}

// Of the third version of qcow2; others have none.
bool hasDataFile(const Sector& sector) {
  constexpr std::string_view start("QFI\xFB\0\0\0\3", 8);
  constexpr std::size_t lastFeatureOffset = 79;
  constexpr std::byte dataFileFeature{4};
  return beginsWith(sector, start) && (sector[lastFeatureOffset] & dataFileFeature) != std::byte{0};
}

// Of vhd, which programs take for a disk of its own. Its parent is another image.
bool isDifferencing(const Sector& sector) {
  constexpr std::size_t lastTypeOffset = 63;
  constexpr std::byte differencingType{4};
  return beginsWith(sector, "conectix") && sector[lastTypeOffset] == differencingType;
}

// The text of vmdk that names the parts, where it stands alone or in an image without content of
// its own; else empty. It ends where no program reads on.
std::string partsText(const FileDescriptor& file, const Sector& sector) {
  constexpr std::size_t longestText = 1 << 20;
  std::uint64_t offset = 0;
  if (beginsWith(sector, "KDMV")) {
    constexpr std::size_t capacityOffset = 12;
    constexpr std::size_t textOffset = 28;
    offset = littleEndian<std::uint64_t>(sector.data() + textOffset) * sectorSize;
    if (littleEndian<std::uint64_t>(sector.data() + capacityOffset) != 0) return {};
  } else if (std::string_view("#v \t\r\n").find(static_cast<char>(sector[0])) ==
             std::string_view::npos) {
    return {};
  }
  std::string text(longestText, '\0');
  text.resize(machine::readAt(file, offset, text.data(), text.size()));
  return text;
}

bool isType(char character) { return std::isupper(static_cast<unsigned char>(character)) != 0; }
bool isSpace(char character) { return std::isspace(static_cast<unsigned char>(character)) != 0; }

// Whether a number and a word in capitals, which tell the size and the kind of a part, end here.
bool isPartBefore(std::string_view text) {
  const auto cut = [&text](const auto& is) {
    const std::size_t size = text.size();
    while (!text.empty() && is(text.back())) text.remove_suffix(1);
    return text.size() < size;
  };
  cut(isSpace);
  const bool hasType = cut(isType);
  cut(isSpace);
  return hasType && !text.empty() && std::isdigit(static_cast<unsigned char>(text.back())) != 0;
}

std::vector<std::string> partsIn(std::string_view text) {
  std::vector<std::string> parts;
  for (std::size_t quote = text.find('"'); quote != std::string_view::npos;
       quote = text.find('"', quote + 1)) {
    if (!isPartBefore(text.substr(0, quote))) continue;
    const std::string_view rest = text.substr(quote + 1);
    parts.emplace_back(rest.substr(0, rest.find_first_of("\"\r\n")));
  }
  return parts;
}

// A part may consist of parts itself.
void refuseForeignParts(const fs::path& image, std::vector<fs::path>& looked) {
  const FileDescriptor file = machine::openPlainFile(image);
  Sector sector{};
  if (!file.isOpen()) return;
  machine::readAt(file, 0, sector.data(), sector.size());
  if (hasDataFile(sector)) {
    refuse(image,
           "keeps its content in another file; convert it with qemu-img convert, and name the "
           "result");
  }
  if (isDifferencing(sector)) {
    refuse(image,
           "holds only what differs from another image; merge the two with the program that made "
           "them, and name the result");
  }
  for (const std::string& name : partsIn(partsText(file, sector))) {
    const fs::path part = image.parent_path() / name;
    requireBeside(image, part);
    if (std::ranges::find(looked, part) == looked.end()) {
      looked.push_back(part);
      refuseForeignParts(part, looked);
    }
  }
}

}  // namespace

void refuseForeignFiles(const fs::path& image) {
  std::vector<fs::path> looked{image};
  refuseForeignParts(image, looked);
}

std::vector<fs::path> namedParts(const fs::path& image) {
  const FileDescriptor file = machine::openPlainFile(image);
  Sector sector{};
  std::vector<fs::path> parts;
  if (file.isOpen() && machine::readAt(file, 0, sector.data(), sector.size()) > 0) {
    for (const std::string& name : partsIn(partsText(file, sector))) {
      parts.push_back(image.parent_path() / name);
    }
  }
  return parts;
}

void requireBeside(const fs::path& image, const fs::path& part) {
  std::error_code error;
  if (part.parent_path() != image.parent_path() ||
      !fs::is_regular_file(fs::symlink_status(part, error))) {
    refuse(image,
           "its part " + part.string() + " is no file beside it; put all parts into one folder");
  }
}

bool canBeRawDisk(const fs::path& file) {
  const FileDescriptor opened = machine::openPlainFile(file);
  Sector sector{};
  if (!opened.isOpen() ||
      machine::readAt(opened, 0, sector.data(), sector.size()) != sector.size()) {
    return false;
  }
  const bool isEmpty =
      std::ranges::all_of(sector, [](std::byte byte) { return byte == std::byte{0}; });
  return isEmpty || (sector[510] == std::byte{0x55} && sector[511] == std::byte{0xAA});
}

}  // namespace zelvreg::images
