#include "machine/files/DiskAttributes.h"

#include <sys/xattr.h>

#include <cstdint>

namespace zelvreg::machine {
namespace {

constexpr std::uint32_t settableOnDisk = 0x2127;

void writeOne(const std::string& file, std::uint32_t attributes, const char* name) {
  std::uint32_t before = 0;
  if (getxattr(file.c_str(), name, &before, sizeof before) != sizeof before) return;
  const std::uint32_t after = (before & ~settableOnDisk) | (attributes & settableOnDisk);
  if (after != before) setxattr(file.c_str(), name, &after, sizeof after, XATTR_REPLACE);
}

}  // namespace

DWORD ntfsAttributesOf(const std::string& file) {
  std::uint32_t attributes = 0;
  const ssize_t size = lgetxattr(file.c_str(), ntfsAttribute, &attributes, sizeof attributes);
  return size == sizeof attributes ? attributes : 0;
}

std::optional<DWORD> DiskAttributes::of(const std::string& file) const {
  if (const auto found = asked.find(file); found != asked.end()) {
    return found->second;
  }
  const DWORD kept = areOnDisk ? ntfsAttributesOf(file) : 0;
  return kept == 0 ? std::nullopt : std::optional(kept);
}

void DiskAttributes::write(const char* attributeName) {
  for (const auto& [file, attributes] : asked) {
    writeOne(file, attributes, attributeName);
  }
  asked.clear();
}

}  // namespace zelvreg::machine
