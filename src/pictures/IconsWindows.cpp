#include <windows.h>

#include <algorithm>
#include <cstddef>

#include "IconTable.h"
#include "pictures/Icons.h"

namespace zelvreg {
namespace {

// The bitmaps of one size, in the order of the table; empty when the program has none.
std::span<const std::uint8_t> strip(int size) {
  const HRSRC place = FindResourceW(nullptr, MAKEINTRESOURCEW(size), MAKEINTRESOURCEW(10));
  if (place == nullptr) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(nullptr, place)));
  if (bytes == nullptr) return {};
  return {bytes, SizeofResource(nullptr, place)};
}

}  // namespace

std::span<const Icon> icons() { return iconTable; }

const Icon* findIcon(std::string_view key) {
  const auto found = std::ranges::find(iconTable, key, &Icon::key);
  return found == iconTable.end() ? nullptr : &*found;
}

std::optional<IconShape> iconShape(std::string_view key, int pixels) {
  const Icon* icon = findIcon(key);
  if (icon == nullptr) return std::nullopt;
  const auto above = std::ranges::upper_bound(iconSizes, pixels);
  const int size = above == iconSizes.begin() ? iconSizes.front() : *std::prev(above);
  const auto all = strip(size);
  const std::size_t length = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
  const std::size_t start = length * static_cast<std::size_t>(icon - iconTable.data());
  if (all.size() < start + length) return std::nullopt;
  return IconShape{size, all.subspan(start, length)};
}

std::vector<std::uint32_t> painted(const IconShape& shape, std::uint32_t color) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(shape.coverage.size());
  for (const std::uint32_t alpha : shape.coverage) {
    const auto part = [&](unsigned shift) {
      return ((color >> shift & 255U) * alpha + 127U) / 255U;
    };
    pixels.push_back(alpha << 24U | part(0) << 16U | part(8) << 8U | part(16));
  }
  return pixels;
}

}  // namespace zelvreg
