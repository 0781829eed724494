#include "controls/KeyStrokes.h"

namespace zelvreg::controls {
namespace {

constexpr std::uint16_t tabKey = 0x09;
constexpr std::uint16_t shiftKey = 0x10;

}  // namespace

std::string_view focusKeys(std::uint16_t key) {
  switch (key) {
    case 0x27:  // right
    case 0x28:  // down
      return "{Tab}";
    case 0x25:  // left
    case 0x26:  // up
      return "+{Tab}";
    default:
      return {};
  }
}

std::vector<KeyStroke> keyStrokes(std::string_view keys) {
  const bool isShifted = keys.starts_with('+');
  if (isShifted) {
    keys.remove_prefix(1);
  }
  if (keys != "{Tab}") {
    return {};
  }
  if (isShifted) {
    return {{shiftKey, true}, {tabKey, true}, {tabKey, false}, {shiftKey, false}};
  }
  return {{tabKey, true}, {tabKey, false}};
}

}  // namespace zelvreg::controls
