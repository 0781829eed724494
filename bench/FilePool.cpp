#include "FilePool.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string_view>

namespace zelvreg::bench {
namespace {

constexpr std::size_t keysPerFile = 50;
constexpr std::size_t fewestFiles = 1000;
constexpr std::size_t mostFiles = 20'000;
constexpr std::size_t filesPerFolder = 10;
constexpr std::size_t productsPerVendor = 4;

struct Kind {
  std::string_view folder;  // of the system; empty for the folders of programs
  std::string_view stem;
  std::string_view extension;
  std::size_t share;  // of a hundred files
};

constexpr std::array<Kind, fileKindCount> kinds{{
    {"", "app", ".exe", 20},
    {"", "lib", ".dll", 30},
    {"", "picture", ".ico", 8},
    {"", "types", ".tlb", 8},
    {"C:\\Windows\\Fonts\\", "face", ".ttf", 10},
    {"C:\\Windows\\Help\\", "guide", ".chm", 4},
    {"C:\\Windows\\System32\\", "sys", ".dll", 20},
}};

const Kind& kindOf(FileKind kind) { return kinds[static_cast<std::size_t>(kind)]; }

// Most vendors have plain names.
constexpr std::array<std::string_view, 12> vendorNames{
    "Vendor",   "Vendor", "Vendor", "Société", "Vendor", "Vendor",
    "Εταιρεία", "Vendor", "Фирма",  "Vendor",  "公司",   "Smile 😀",
};

std::string folderOfProduct(View view, std::size_t number) {
  const std::size_t product = number / filesPerFolder;
  const std::size_t vendor = product / productsPerVendor;
  std::string folder = FilePool::programFolder(view) + "\\";
  folder.append(vendorNames[vendor % vendorNames.size()]).append(" ").append(padded(vendor, 4));
  folder += "\\Product " + std::to_string(product % productsPerVendor + 1);
  // No file of one view has a namesake in the other.
  return folder + (view == View::Bits64 ? "\\" : " (32-bit)\\");
}

std::string pathOf(FileKind kind, View view, std::size_t number, std::string_view prefix = {}) {
  const Kind& facts = kindOf(kind);
  std::string path =
      facts.folder.empty() ? folderOfProduct(view, number) : std::string(facts.folder);
  path.append(prefix).append(facts.stem).append(padded(number, 5)).append(facts.extension);
  return path;
}

// Both views have files of programs and of the system folder.
bool hasBothViews(FileKind kind) {
  return kindOf(kind).folder.empty() || kind == FileKind::SystemLibrary;
}

// Where a path lies below the folder of its drive. The 32-bit system folder has another name.
std::filesystem::path placeOf(std::string path, View view) {
  const std::string_view systemFolder = kindOf(FileKind::SystemLibrary).folder;
  if (view == View::Bits32 && path.starts_with(systemFolder)) {
    path.replace(0, systemFolder.size(), "C:\\Windows\\SysWOW64\\");
  }
  std::ranges::replace(path, '\\', '/');
  return path.substr(3);
}

}  // namespace

FilePool::FilePool(std::size_t keyCount) {
  const std::size_t all = std::clamp(keyCount / keysPerFile, fewestFiles, mostFiles);
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    const std::size_t views = hasBothViews(static_cast<FileKind>(kind)) ? 2 : 1;
    counts[kind] = std::max<std::size_t>(1, all * kinds[kind].share / 100 / views);
  }
}

std::string FilePool::live(FileKind kind, View view, Random& random) const {
  return pathOf(kind, view, random.below(count(kind)));
}

std::string FilePool::nth(FileKind kind, View view, std::size_t number) const {
  return pathOf(kind, view, number % count(kind));
}

std::string FilePool::deadFile(FileKind kind, View view, Random& random) const {
  return pathOf(kind, view, random.below(count(kind)), "old");
}

std::string FilePool::deadFolder(FileKind kind, View view, Random& random) const {
  return pathOf(kind, view, random.below(count(kind)) + mostFiles, "old");
}

Reference FilePool::dead(FileKind kind, View view, Random& random) const {
  const bool isFolderThere = random.oneIn(2);
  return {isFolderThere ? deadFile(kind, view, random) : deadFolder(kind, view, random),
          Truth::Dead, isFolderThere || !isOfPrograms(kind) ? deadFileFamily : deadFolderFamily};
}

Reference FilePool::any(FileKind kind, View view, Random& random) const {
  return random.oneIn(10) ? dead(kind, view, random)
                          : Reference{live(kind, view, random), Truth::Alive, plainFamily};
}

Reference FilePool::distinct(FileKind kind, View view, std::size_t number, Random& random) const {
  // A list longer than its kind of file goes on with programs, and then with files of folders that
  // are not there.
  if (number >= count(kind)) {
    number -= count(kind);
    kind = FileKind::Program;
  }
  if (number >= count(kind)) {
    return {pathOf(kind, view, number + mostFiles, "old"), Truth::Dead, deadFolderFamily};
  }
  const bool isDead = random.oneIn(10);
  return {pathOf(kind, view, number, isDead ? "old" : ""), isDead ? Truth::Dead : Truth::Alive,
          isDead ? deadFileFamily : plainFamily};
}

std::string FilePool::programFolder(View view) {
  return view == View::Bits64 ? "C:\\Program Files" : "C:\\Program Files (x86)";
}

bool FilePool::isOfPrograms(FileKind kind) { return kindOf(kind).folder.empty(); }

std::string_view FilePool::extensionOf(FileKind kind) { return kindOf(kind).extension; }

void FilePool::write(const std::filesystem::path& drive) const {
  std::set<std::filesystem::path> folders;
  const auto writeOne = [&](FileKind kind, View view, std::size_t number) {
    const std::filesystem::path file = drive / placeOf(pathOf(kind, view, number), view);
    if (folders.insert(file.parent_path()).second) {
      std::filesystem::create_directories(file.parent_path());
    }
    if (!std::ofstream(file, std::ios::binary)) {
      throw std::runtime_error(file.string() + " cannot be made; check the room left");
    }
  };
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    const auto fileKind = static_cast<FileKind>(kind);
    for (std::size_t number = 0; number < counts[kind]; ++number) {
      writeOne(fileKind, View::Bits64, number);
      if (hasBothViews(fileKind)) {
        writeOne(fileKind, View::Bits32, number);
      }
    }
  }
}

std::size_t FilePool::count(FileKind kind) const { return counts[static_cast<std::size_t>(kind)]; }

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('\\')); }

std::string fileNameOf(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

Reference folderOf(const Reference& file) {
  const bool isGone = file.family == std::string_view(deadFolderFamily);
  const bool isDead = file.truth == Truth::Dead && isGone;
  return {folderOf(file.text), isDead ? Truth::Dead : Truth::Alive,
          isDead ? deadFolderFamily : plainFamily};
}

std::string padded(std::size_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) {
    digits.insert(0, width - digits.size(), '0');
  }
  return digits;
}

}  // namespace zelvreg::bench
