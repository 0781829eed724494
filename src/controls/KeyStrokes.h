// Key strings such as "+{Tab}", by which a control presses keys for the user.
#ifndef ZELVREG_CONTROLS_KEY_STROKES_H
#define ZELVREG_CONTROLS_KEY_STROKES_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace zelvreg::controls {

struct KeyStroke {
  std::uint16_t key = 0;  // the system's number of a virtual key
  bool isDown = false;

  bool operator==(const KeyStroke&) const = default;
};

// The key string that a button sends for an arrow key: "{Tab}" moves the focus forward, "+{Tab}"
// back. The empty text for any other key.
std::string_view focusKeys(std::uint16_t key);

// The strokes of a key string of "{Tab}" and, before it, "+" for the Shift key. None for any other
// text.
std::vector<KeyStroke> keyStrokes(std::string_view keys);

}  // namespace zelvreg::controls

#endif
