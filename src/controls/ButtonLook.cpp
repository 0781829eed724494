#include "controls/ButtonLook.h"

#include <algorithm>
#include <cmath>

#include "controls/ButtonStyles.h"

namespace zelvreg::controls {
namespace {

constexpr Rgb black = rgb(0x000000);
constexpr Rgb white = rgb(0xFFFFFF);

// The smallest share of one color in another that is noticed.
constexpr double distinct = 1.3;

// The colors of one state.
struct Tints {
  Rgb face;
  Rgb text;
  Rgb edge;
  bool hasFace = false;
};

class Drawing {
 public:
  Drawing(const ButtonProperties& ofButton, const ButtonState& inState, Size ofSize, int atDpi,
          const Palette& ofWindow)
      : properties(ofButton),
        state(inState),
        style(styleOf(ofButton.ButtonType)),
        palette(ofWindow),
        size(ofSize),
        dpi(atDpi),
        isChecked(ofButton.CheckBoxBehaviour && ofButton.Value),
        isHovered(inState.isHovered && ofButton.Enabled),
        isPressed(inState.isPressed && ofButton.Enabled) {}

  ButtonLook ofStyle() {
    const Tints tints = tintsOfState();
    look.face = tints.face;
    look.text = tints.text;
    look.isLeftAligned = style.isLeftAligned;
    if (tints.hasFace && style.edge != Edge::Ledge) {
      addFace(tints.face);
    }
    addEdge(tints);
    addDefaultFrame(tints.face);
    addFocus(tints.face, palette.accent, scaled(style.focusInset, dpi));
    return std::move(look);
  }

  // All colors are the system's, so that they differ in whatever theme the user needs.
  ButtonLook ofSystem() {
    const SystemColors& system = palette.system;
    const bool isLit = properties.Enabled && (isHovered || isPressed || isChecked);
    look.face = isLit ? system.highlight : system.face;
    look.text = !properties.Enabled ? system.disabledText
                : isLit             ? system.highlightText
                                    : system.text;
    look.shift = isPressed ? pixels(1) : 0;
    add(0, look.face, look.face);
    addOutline(0, pixels(isChecked ? 3 : state.isDefault ? 2 : 1), look.text);
    addFocus(look.face, look.text, pixels(4));
    return std::move(look);
  }

 private:
  int pixels(double at96) const { return std::max(1, scaled(at96, dpi)); }
  double radius() const { return outlineRadius(properties, isHovered, dpi); }

  std::uint32_t faceProperty() const {
    return isHovered ? properties.BackOver : properties.BackColor;
  }
  bool hasOwnFace() const { return !isSystemColor(faceProperty()); }

  Rgb styleFace() const { return palette.faces[static_cast<std::size_t>(style.face)]; }

  // Before the state changes it.
  Rgb plainFace() const {
    if (hasOwnFace()) {
      return fromProperty(faceProperty());
    }
    return style.fill == Fill::None ? palette.ground : styleFace();
  }

  // The color that is wanted on a face; dark or white where the two are too much alike.
  static Rgb apartFrom(Rgb face, Rgb wanted, double least) {
    return contrast(wanted, face) >= least ? wanted : isLight(face) ? darkText : white;
  }

  Rgb checkedFace(Rgb face) const {
    if (style.edge == Edge::Bar && !hasOwnFace()) {
      return styleFace();
    }
    // White changes a dark face less than the accent color a light one.
    return mix(face, apartFrom(face, palette.accent, distinct), isLight(face) ? 0.14 : 0.28);
  }

  Tints tintsOfState() const {
    Tints tints;
    const bool isOwn = hasOwnFace();
    tints.hasFace = style.fill != Fill::None || isOwn || isChecked ||
                    (properties.Enabled && (isHovered || isPressed || state.isDefault));
    Rgb face = plainFace();
    if (state.isDefault && !isOwn) {
      face = mix(face, palette.accent, style.defaultShare);
    }
    if (isChecked) {
      face = checkedFace(face);
    }
    tints.face = properties.Enabled ? shaded(face) : mix(face, palette.ground, 0.65);
    tints.text = textOn(tints.face);
    tints.edge = edgeOn(tints.face, isOwn);
    return tints;
  }

  // The face under the mouse or pressed. A BackOver that differs is taken as it is.
  Rgb shaded(Rgb face) const {
    const bool isTold = properties.BackOver != properties.BackColor;
    if (isPressed) {
      return mix(face, apartFrom(face, isLight(face) ? palette.accent : black, distinct),
                 style.pressedShare);
    }
    if (isHovered && !isTold) {
      return mix(face, apartFrom(face, isLight(face) ? palette.accent : white, distinct),
                 style.hoveredShare);
    }
    return face;
  }

  Rgb textOn(Rgb face) const {
    if (!properties.Enabled) {
      return seenOn(face, palette.disabledText, readableContrast);
    }
    const std::uint32_t told = isHovered ? properties.ForeOver : properties.ForeColor;
    if (!isSystemColor(told)) {
      return fromProperty(told);
    }
    const Rgb accented = mix(palette.accent, palette.text, 0.3);
    if ((style.hasAccentEdge || isChecked) && contrast(accented, face) >= readableContrast) {
      return accented;
    }
    return readableOn(face, palette.text);
  }

  Rgb edgeOn(Rgb face, bool isOwn) const {
    if (!properties.Enabled) {
      return palette.line;
    }
    if (isOwn || (state.isDefault && !isLight(face))) {
      return face;
    }
    if (isChecked || style.hasAccentEdge) {
      return palette.accent;
    }
    return isHovered || isPressed ? mix(palette.border, palette.accent, isPressed ? 0.9 : 0.6)
                                  : palette.border;
  }

  void add(int inset, Rgb upper, Rgb lower, double opacity = 1) {
    look.shapes.push_back({static_cast<double>(inset), static_cast<double>(inset),
                           static_cast<double>(size.width - inset),
                           static_cast<double>(size.height - inset),
                           std::max(0.0, radius() - inset), 0, upper, lower, opacity});
  }

  void addRectangle(double left, double top, double right, double bottom, Rgb color) {
    look.shapes.push_back({left, top, right, bottom, 0, 0, color, color});
  }

  void addOutline(int inset, double line, Rgb color) {
    add(inset, color, color);
    look.shapes.back().line = line;
  }

  void addFace(Rgb face) {
    switch (style.fill) {
      case Fill::Gradient:
        // Light from above; what is pressed in is in its own shadow.
        add(0, isPressed ? mix(face, black, 0.1) : mix(face, white, isLight(face) ? 0.7 : 0.1),
            isPressed ? face : mix(face, black, isLight(face) ? 0.05 : 0.12));
        break;
      case Fill::Glass:
        add(0, face, mix(face, black, isPressed ? 0.02 : 0.06));
        addGloss(face);
        break;
      default:
        add(0, face, face);
        break;
    }
  }

  // The reflection in the upper half of a glass button.
  void addGloss(Rgb face) {
    const int inset = pixels(1);
    add(inset, white, white, isLight(face) ? (isPressed ? 0.25 : 0.6) : 0.08);
    look.shapes.back().bottom = std::floor(size.height / 2.0);
    look.shapes.back().radius = std::max(0.0, radius() - inset);
  }

  void addEdge(const Tints& tints) {
    const double width = size.width;
    const double height = size.height;
    const int line = pixels(style.line);
    switch (style.edge) {
      case Edge::None:
        break;
      case Edge::Line:
        addOutline(0, style.line * dpi / 96, tints.edge);
        break;
      case Edge::Bevel:
        addBevel(tints.face);
        break;
      case Edge::Groove:
        addOutline(0, line, bevelled(tints.face, isPressed ? white : black, 0.25));
        addOutline(line, line, bevelled(tints.face, isPressed ? black : white, 0.7));
        break;
      case Edge::Underline: {
        const double thick = isPressed || isChecked ? line * 1.5 : line;
        addRectangle(0, height - thick, width, height,
                     state.isDefault && properties.Enabled ? palette.accent : tints.edge);
        break;
      }
      case Edge::Bar:
        addBar(tints);
        break;
      case Edge::Ledge:
        addLedge(tints, line);
        break;
    }
  }

  void addBar(const Tints& tints) {
    if (!isChecked && !isHovered && !isPressed && !(state.isDefault && properties.Enabled)) {
      return;
    }
    // The bar is the part of a shape in its color that the face does not cover.
    const int line = pixels(style.line);
    Shape face = look.shapes.back();
    look.shapes.back().upper = look.shapes.back().lower =
        isChecked && properties.Enabled ? palette.accent : tints.edge;
    face.left += line;
    face.radius = std::max(0.0, face.radius - line / 2.0);
    look.shapes.push_back(face);
  }

  void addLedge(const Tints& tints, int line) {
    const int sunk = isPressed || isChecked ? line - pixels(1) : 0;
    const int thin = pixels(1);
    const Rgb side = state.isDefault && properties.Enabled ? mix(tints.face, black, 0.25)
                                                           : mix(tints.edge, black, 0.04);
    add(0, side, side);
    add(thin, tints.face, tints.face);
    look.shapes.back().bottom = size.height - line + sunk;
    look.shift = sunk - thin;
  }

  Rgb bevelled(Rgb face, Rgb towards, double share) const {
    return mix(face, towards, properties.SoftBevel ? share / 2 : share);
  }

  // Two steps, light from the upper left; while pressed, from the lower right.
  void addBevel(Rgb face) {
    const bool isSunk = isPressed || isChecked;
    const Rgb light = bevelled(face, white, 0.9);
    const double width = size.width;
    const double height = size.height;
    const double line = pixels(style.line);
    for (const int step : {0, 1}) {
      const Rgb dark = bevelled(face, black, step == 0 ? 0.5 : 0.22);
      const Rgb upper = isSunk ? dark : light;
      const Rgb lower = isSunk ? light : dark;
      const double at = step * line;
      addRectangle(at, at, width - at, at + line, upper);
      addRectangle(at, at, at + line, height - at, upper);
      addRectangle(at, height - at - line, width - at, height - at, lower);
      addRectangle(width - at - line, at, width - at, height - at, lower);
    }
    look.shift = isSunk ? pixels(1) : 0;
  }

  // A default button that keeps its face has a frame.
  void addDefaultFrame(Rgb face) {
    const bool hasAccentFace = !hasOwnFace() && style.defaultShare >= 0.5 &&
                               contrast(palette.accent, plainFace()) >= distinct;
    if (state.isDefault && properties.Enabled && !hasAccentFace) {
      const Rgb seen = apartFrom(face, palette.accent, distinct);
      addOutline(seen == palette.accent ? 0 : pixels(2), pixels(1), seen);
    }
  }

  void addFocus(Rgb face, Rgb color, int inset) {
    if (state.isFocused && properties.ShowFocusRect && properties.Enabled) {
      const Rgb seen = apartFrom(face, color, visibleContrast);
      // A ring that differs from the accent color is lost on the ground around the button.
      addOutline(seen == color ? inset : std::max(inset, pixels(3)), pixels(2), seen);
    }
  }

  const ButtonProperties& properties;
  const ButtonState& state;
  const ButtonStyle& style;
  const Palette& palette;
  Size size;
  int dpi;
  bool isChecked;
  bool isHovered;
  bool isPressed;
  ButtonLook look;
};

}  // namespace

ButtonLook lookOf(const ButtonProperties& properties, const ButtonState& state, Size size, int dpi,
                  const Palette& palette) {
  Drawing drawing(properties, state, size, dpi, palette);
  return properties.ColorScheme == 2 ? drawing.ofSystem() : drawing.ofStyle();
}

double outlineRadius(const ButtonProperties& properties, bool isHovered, int dpi) {
  if (properties.ColorScheme == 2) {
    return 0;
  }
  const ButtonStyle& style = styleOf(properties.ButtonType);
  return (isHovered ? style.radiusHovered : style.radius) * dpi / 96;
}

}  // namespace zelvreg::controls
