// The colors of the windows, by what they are for.
#ifndef ZELVREG_DESKTOP_COLORS_H
#define ZELVREG_DESKTOP_COLORS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "controls/ButtonLook.h"
#include "controls/Color.h"
#include "controls/MenuEntry.h"

namespace zelvreg::desktop {

using controls::Rgb;
using controls::rgb;

enum class Tone : std::uint8_t {
  Accent,  // of the suite: the ground of titles
  OnAccent,
  QuietOnAccent,
  Surface,
  Ground,
  SideBar,
  Header,
  Line,
  RowLine,
  Border,
  Mark,  // the accent where it is drawn on the grounds below: ticks, progress, focus
  OnMark,
  MarkEdge,  // of an empty check box
  Track,     // of the progress
  Selected,
  OnSelected,
  Text,
  Secondary,
  Disabled,
  Problem,
  ProblemDisc,
  Link,
  Waiting,
  Testing,
  Finished,
};
inline constexpr std::size_t toneCount = static_cast<std::size_t>(Tone::Finished) + 1;

enum class Theme : std::uint8_t { Light, Dark };

class Colors {
 public:
  // The program's own, light.
  Colors();

  // The system's colors, by their numbers for GetSysColor, for a user who has turned on high
  // contrast. The suite's color and those of the form are not used then.
  void useSystem(const std::function<Rgb(int number)>& systemColor);
  void useOwn(Theme wanted);
  // High contrast has no theme; then this is the last one.
  [[nodiscard]] Theme theme() const { return ownTheme; }
  [[nodiscard]] bool isSystem() const { return hasSystem; }

  // Text on the accent is white or dark, whichever is read more easily.
  void setAccent(Rgb accent);

  // What the form gives a text, in the theme: where it cannot be read on the ground, it is moved
  // towards black or white.
  [[nodiscard]] Rgb textFrom(std::uint32_t property, Tone ground) const;

  [[nodiscard]] Rgb operator[](Tone tone) const { return tones[static_cast<std::size_t>(tone)]; }
  // The colors of menus; none under high contrast, where they are the system's.
  [[nodiscard]] std::optional<controls::MenuColors> menuColors() const;
  // The colors of buttons on a ground of that tone.
  [[nodiscard]] controls::Palette paletteOn(Tone ground) const;

 private:
  void applyAccent();
  Rgb& at(Tone tone) { return tones[static_cast<std::size_t>(tone)]; }

  std::array<Rgb, toneCount> tones;
  Rgb ownAccent;
  bool hasSystem = false;
  Theme ownTheme = Theme::Light;
};

}  // namespace zelvreg::desktop

#endif
