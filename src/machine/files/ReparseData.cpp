#include "machine/files/ReparseData.h"

#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {
namespace {

constexpr std::size_t mostBytes = 16 << 10;  // as many as Windows keeps

std::uint32_t numberAt(std::string_view data, std::size_t offset, std::size_t bytes) {
  std::uint32_t number = 0;
  for (std::size_t index = bytes; index-- > 0 && offset + bytes <= data.size();) {
    number = number << 8 | static_cast<unsigned char>(data[offset + index]);
  }
  return number;
}

// Where a junction, a mount point or a symbolic link leads, in Windows' own words; empty for what
// is none.
std::u16string targetIn(std::string_view data) {
  constexpr std::uint32_t junctionTag = 0xA0000003;
  constexpr std::uint32_t symbolicLinkTag = 0xA000000C;
  constexpr std::size_t headerSize = 16;
  constexpr std::size_t flagsSize = 4;
  const std::uint32_t tag = numberAt(data, 0, 4);
  if (tag != junctionTag && tag != symbolicLinkTag) return {};
  const std::size_t start =
      headerSize + (tag == symbolicLinkTag ? flagsSize : 0) + numberAt(data, 8, 2);
  const std::size_t end = std::min(data.size(), start + numberAt(data, 10, 2));
  std::u16string target;
  for (std::size_t at = start; at + 2 <= end; at += 2) {
    target += static_cast<char16_t>(numberAt(data, at, 2));
  }
  return target;
}

}  // namespace

bool leadsElsewhere(const std::string& link, char drive) {
  std::array<char, mostBytes> data{};
  const ssize_t size =
      lgetxattr(link.c_str(), "system.ntfs_reparse_data", data.data(), data.size());
  if (size <= 0) return false;
  const std::u16string target = targetIn({data.data(), static_cast<std::size_t>(size)});
  std::u16string_view path = target;
  constexpr std::u16string_view front = u"\\??\\";
  const bool isFull = path.starts_with(front);
  path.remove_prefix(isFull ? front.size() : 0);
  const bool namesDrive = path.size() > 1 && path[1] == u':';
  return namesDrive ? upperCase(path[0]) != static_cast<char16_t>(drive) : isFull;
}

}  // namespace zelvreg::machine
