// The place of every control of the main window, in twips, and what it looks like there. The window
// has one layout; the front end converts it to pixels by the monitor's resolution.
#ifndef ZELVREG_LAYOUT_LAYOUT_H
#define ZELVREG_LAYOUT_LAYOUT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "widgets/Button.h"
#include "widgets/SimpleControls.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

// An inch has 1440 twips, and 96 pixels at 96 dpi.
inline constexpr int twipsPerPixel = 15;

// The areas of the window, in pixels at 96 dpi.
inline constexpr int windowWidth = 1026;
inline constexpr int windowHeight = 612;
inline constexpr int titleHeight = 60;
inline constexpr int commandBarBottom = 112;
inline constexpr int sideBarWidth = 196;
inline constexpr int statusBarTop = 586;

// The rows of a list, and its header.
inline constexpr int rowHeight = 23;
inline constexpr int headerHeight = 26;

// The columns of the categories and of the findings, until the user changes them. The one of width
// 0 is hidden.
inline constexpr std::array categoryColumnWidths{240, 346, 84, 98};
inline constexpr std::array findingColumnWidths{274, 164, 0, 154, 154};

enum class LabelLook : std::uint8_t {
  ProgramTitle,
  ProgramText,
  WindowTitle,  // of a small window
  PageTitle,
  Counter,  // a page's title that ends in a number
  Outcome,  // in its place
  Strong,
  Plain,
  Secondary,
  SecondaryRight,
  Wrapped,
  Explanation,  // wrapped, in the color of a text
  Problem,
  Link,
};

// What a button is for, from which its look follows.
enum class ButtonRole : std::uint8_t { Title, Command, SideBar, Plain, Primary, IconOnly, Tool };

struct Place {
  int left;
  int top;
  int width;
  int height;

  bool operator==(const Place&) const = default;
};

// By how much the window is larger than in the layout, in pixels at 96 dpi.
struct Growth {
  int width = 0;
  int height = 0;
};

// What a control does when what it is in grows to the right or downwards.
enum class Follows : std::uint8_t { No, Moves, Stretches };
struct Anchors {
  Follows across = Follows::No;
  Follows down = Follows::No;
};

Place placeIn(const Place& place, const Anchors& anchors, const Growth& growth);

// `parent` is null for a control on the window itself.
struct LabelPlace {
  Label& (*label)(Form42& form);
  Frame* (*parent)(Form42& form);
  Place place;
  LabelLook look;
  Anchors anchors = {};
};

struct ButtonPlace {
  Button& (*button)(Form42& form);
  Frame* (*parent)(Form42& form);
  Place place;
  ButtonRole role;
  const char* icon;
  Anchors anchors = {};
};

struct FramePlace {
  Frame& (*frame)(Form42& form);
  Frame* (*parent)(Form42& form);
  Place place;
  bool isCard;  // a white panel with an edge
  Anchors anchors = {};
};

// A control without a look of its own in the layout.
struct ControlPlace {
  Control& (*control)(Form42& form);
  Place place;
  Anchors anchors = {};
};

// The resolution at which a window is shown on a screen with that resolution: the same, or the
// highest at which the window fits into the work area (in pixels of the screen), but at least 96.
// The window's size is in pixels at 96 dpi, the smallest of the main window unless told.
int fittingResolution(int resolution, int areaWidth, int areaHeight, int width = windowWidth,
                      int height = windowHeight);

// Frames come before the controls in them.
std::span<const FramePlace> framePlaces();
std::span<const LabelPlace> labelPlaces();
std::span<const ButtonPlace> buttonPlaces();
std::span<const ControlPlace> controlPlaces();

// Gives a control its place in its parent.
void put(Control& control, const Place& place);

// Gives every control of the form its place in a window of the layout's size, and hides what the
// window does not show.
void layOut(Form42& form);

// How far the form's window is larger than in the layout. A smaller one counts as equal.
Growth growthOf(const Form42& form);

// Gives those controls new places that follow the size of the window.
void followSize(Form42& form);

// The place that the layout has for one of those controls in a window of the form's size.
Place placeFor(Form42& form, const Control& wanted);

// The place of a bar of the counts by category on their panel, the first being 0. There is room for
// sixteen, and all of the panel's width is theirs.
Place barPlace(const Form42& form, std::size_t number);

// The places of View1 and Frame8 on their page. The heights that the form's procedures set are for
// an older form. The list takes the room that the page has, so that all rows can be seen; during a
// scan it makes room for the progress.
Place categoryListPlace(const Form42& form);
Place progressPanelPlace(Form42& form);

}  // namespace zelvreg::desktop

#endif
