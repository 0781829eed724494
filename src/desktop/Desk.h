// What the windows of the program share: the resolution, colors, fonts and brushes.
#ifndef ZELVREG_DESKTOP_DESK_H
#define ZELVREG_DESKTOP_DESK_H

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "controls/Canvas.h"
#include "controls/GdiObjects.h"
#include "desktop/Colors.h"
#include "layout/Layout.h"
#include "text/Wide.h"
#include "widgets/Control.h"
#include "widgets/FormWindow.h"
#include "widgets/MessageQueue.h"

namespace zelvreg::desktop {

class Desk {
  // What a window on another screen has in common with its owner.
  struct Common {
    Colors colors;
    bool isMirrored = false;
    std::map<const void*, std::function<void()>> waiting;
    std::map<const void*, std::function<void()>> listeners;
    // Finding one takes a walk through the fonts of the system.
    std::map<std::pair<std::string, int>, std::string> faces;
  };
  std::shared_ptr<Common> common;

 public:
  explicit Desk(int resolution) : Desk(std::make_shared<Common>(), resolution) {}
  // For a window that may be on another screen: all is shared but the resolution.
  Desk(const Desk& other, int resolution) : Desk(other.common, resolution) {}
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  [[nodiscard]] int resolution() const { return dpi; }
  // Fonts and brushes taken before are no longer valid.
  void setResolution(int resolution);

  // Lengths in pixels at 96 dpi, and in twips, as pixels of the screen, and back.
  [[nodiscard]] int pixels(int length) const { return MulDiv(length, dpi, 96); }
  [[nodiscard]] int fromPixels(int ofScreen) const { return MulDiv(ofScreen, 96, dpi); }
  [[nodiscard]] int fromTwips(int twips) const { return MulDiv(twips, dpi, 1440); }
  [[nodiscard]] int toTwips(int pixels) const { return MulDiv(pixels, 1440, dpi); }

  // Stays valid until the resolution changes.
  HFONT font(const Font& font, double pointsMore = 0, bool isBold = false);
  // The name under which the font is asked for: its own if it is installed and has the script of
  // its charset, else that of one which has.
  const std::string& faceOf(const Font& font);
  HBRUSH brush(Tone tone);

  // Adds work for the next time the message queue is served. It is done once, however often it was
  // asked for under the same owner.
  void later(const void* owner, std::function<void()> work) {
    common->waiting[owner] = std::move(work);
  }
  void forget(const void* owner) { common->waiting.erase(owner); }
  void catchUp();
  // Waits until the system has a message, or the queue or this desk has work.
  void wait(const MessageQueue& queue) const;

  [[nodiscard]] Rgb color(Tone tone) const { return colors[tone]; }
  // Takes the system's colors if high contrast is on, else the program's own.
  void readColors(Theme wanted);
  // Calls `show` whenever somebody says that the colors have changed, until it is replaced by none.
  void onColors(const void* owner, std::function<void()> show);
  void tellColors() const;
  // An icon in a color, or in its own; none for a key without an icon. `length` is in pixels at 96
  // dpi. One that points to a side points to the other where windows are laid out from the right.
  [[nodiscard]] controls::Picture icon(std::string_view key, int length = 16,
                                       std::optional<Tone> tone = std::nullopt) const;

  // Draws the shadow of a window as its form describes it, or removes it if it is not visible.
  void castShadow(HWND window, const DropShadow& shadow) const;

  Colors& colors;
  // Whether windows are laid out from the right, as a language wants them that is read so.
  bool& isMirrored;
  // Whether a refresh leaves the drawing to the message queue.
  bool refreshesLater = false;

 private:
  Desk(std::shared_ptr<Common> shared, int resolution)
      : common(std::move(shared)),
        colors(common->colors),
        isMirrored(common->isMirrored),
        dpi(resolution) {}

  int dpi;
  using FontKey = std::tuple<std::string, int, double, bool>;  // name, charset, points, is it bold
  std::map<FontKey, controls::FontHandle, std::less<>> fonts;
  std::map<COLORREF, controls::BrushHandle> brushes;
};

}  // namespace zelvreg::desktop

#endif
