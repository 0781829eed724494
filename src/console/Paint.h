// Colors on a terminal.
#ifndef ZELVREG_CONSOLE_PAINT_H
#define ZELVREG_CONSOLE_PAINT_H

#include <cstdint>
#include <string>
#include <string_view>

#include "form/Evidence.h"

namespace zelvreg::console {

// What --color says.
enum class ColorUse : std::uint8_t { Auto, Always, Never };

// Whether the variables NO_COLOR and TERM leave colors on; null for one that is not set.
bool environmentAllowsColor(const char* noColor, const char* term);

enum class Ink : std::uint8_t { Heading, Sure, Likely, Unsure, Error };
Ink inkOf(Confidence confidence);

// The number of an ink's color, of the 256 that terminals have; none for a heading, which is bold.
// Each can be read on a light and on a dark ground.
inline constexpr int noColor = -1;
int colorOf(Ink ink);

class Paint {
 public:
  Paint() = default;
  explicit Paint(bool isOnNow) : isOn(isOnNow) {}

  [[nodiscard]] bool isColored() const { return isOn; }

  // The text, which must be safe to print, in this ink; as it is if there are no colors.
  [[nodiscard]] std::string in(Ink ink, std::string_view text) const;

 private:
  bool isOn = false;
};

}  // namespace zelvreg::console

#endif
