// What the windows of the program share: the resolution, colours, fonts and brushes.
#ifndef ZELVREG_DESKTOP_DESK_H
#define ZELVREG_DESKTOP_DESK_H

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "controls/ButtonLook.h"
#include "controls/GdiObjects.h"
#include "desktop/Layout.h"
#include "widgets/Control.h"

namespace zelvreg::desktop {

using controls::Rgb;
using controls::rgb;

namespace colours {
inline constexpr Rgb surface = rgb(0xFFFFFF);
inline constexpr Rgb ground = rgb(0xF6F8FB);
inline constexpr Rgb sideBar = rgb(0xEEF2F7);
inline constexpr Rgb line = rgb(0xDDE3EA);
inline constexpr Rgb border = rgb(0xC6D0DC);
inline constexpr Rgb text = rgb(0x1F2937);
inline constexpr Rgb secondary = rgb(0x5B6675);
inline constexpr Rgb disabled = rgb(0xA3ADBA);
inline constexpr Rgb problem = rgb(0xC00000);
inline constexpr Rgb selected = rgb(0xE3ECF6);
}  // namespace colours

// A text in the code page of a charset; charset 0 is the system's own page.
std::wstring wideText(std::string_view text, int charset);
std::string utf8Text(std::string_view text, int charset);
// What a user has typed, in the system's code page; what it does not hold becomes "?".
std::string narrowText(std::wstring_view text);

class Desk {
 public:
  explicit Desk(int resolution) : dpi(resolution) {}
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  [[nodiscard]] int resolution() const { return dpi; }
  // Whoever has a font or a brush must ask for it again.
  void setResolution(int resolution);

  // Lengths in points at 96 to the inch, and in twips, as points of the screen.
  [[nodiscard]] int points(int length) const { return MulDiv(length, dpi, 96); }
  [[nodiscard]] int fromTwips(int twips) const { return MulDiv(twips, dpi, 1440); }
  [[nodiscard]] int toTwips(int pixels) const { return MulDiv(pixels, 1440, dpi); }

  // Stays valid until the resolution changes.
  HFONT font(const Font& font, double pointsMore = 0, bool isBold = false);
  HBRUSH brush(Rgb colour);

  // Work that waits until the next time the message queue is served, once however often it is
  // asked for under the same owner.
  void later(const void* owner, std::function<void()> work) { waiting[owner] = std::move(work); }
  void forget(const void* owner) { waiting.erase(owner); }
  void catchUp();

  controls::Palette palette;

 private:
  int dpi;
  std::map<std::string, controls::FontHandle> fonts;
  std::map<COLORREF, controls::BrushHandle> brushes;
  std::map<const void*, std::function<void()>> waiting;
};

}  // namespace zelvreg::desktop

#endif
