// The properties of a button, their keys in the property bag, and which of them have changed.
#ifndef ZELVREG_CONTROLS_BUTTON_PROPERTIES_H
#define ZELVREG_CONTROLS_BUTTON_PROPERTIES_H

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "controls/PropertyBag.h"

namespace zelvreg::controls {

// Where the picture is, seen from the caption.
enum class PicturePlace : std::int16_t { Left = 0, Right = 1, Above = 2, Below = 3, Behind = 4 };

// How the picture is changed: drawn in the color of the text (for pictures of one color), paler
// until the mouse is over it, or with a shadow of its own.
enum class PictureEffect : std::int16_t { None = 0, TextColor = 1, Pale = 2, Shadow = 3 };

struct ButtonProperties {
  std::int32_t ButtonType = 2;  // the style, 1 to 14
  std::string Caption;          // UTF-8; "&" marks the access key
  bool Enabled = true;
  FontDescription Font;
  // 2 takes all colors from the system, as high contrast requires.
  std::int32_t ColorScheme = 1;
  bool ShowFocusRect = true;
  // These system colors mean the style's own.
  std::uint32_t BackColor = systemColor(15);
  std::uint32_t BackOver = systemColor(15);
  std::uint32_t ForeColor = systemColor(18);
  std::uint32_t ForeOver = systemColor(18);
  std::uint32_t MaskColor = 0xC0C0C0;  // the transparent color of the pictures
  std::int16_t MousePointer = 0;       // 99 is MouseIcon
  Picture MouseIcon;
  Picture PictureNormal;
  Picture PictureOver;  // none shows PictureNormal
  bool UseMaskColor = true;
  bool SoftBevel = false;            // raised edges with half of their contrast
  std::int16_t PicturePosition = 0;  // a PicturePlace
  bool UseGreyscale = false;         // the normal picture is gray
  std::int16_t SpecialEffect = 0;    // a PictureEffect
  bool HandPointer = false;
  bool CheckBoxBehaviour = false;
  bool Value = false;  // whether it is checked

  bool operator==(const ButtonProperties&) const = default;
};

// The field of one property; its type is the property's.
using ButtonField = std::variant<std::int32_t ButtonProperties::*, std::int16_t ButtonProperties::*,
                                 std::uint32_t ButtonProperties::*, bool ButtonProperties::*,
                                 std::string ButtonProperties::*,
                                 FontDescription ButtonProperties::*, Picture ButtonProperties::*>;

struct ButtonProperty {
  std::string_view name;
  std::string_view key;
  ButtonField field;
};

// All properties, in the order in which they are stored.
std::span<const ButtonProperty> buttonProperties();

// The key of a field.
std::string_view keyOf(const ButtonField& field);

// A property without a key has its default: a color of the hovered state is the normal one, the
// font is the form's.
ButtonProperties readButton(const PropertyBag& bag, const Ambient& ambient);
void writeButton(const ButtonProperties& properties, PropertyBag& bag);

// The properties of one button in use: each change is marked under its key.
class ButtonDesign {
 public:
  ButtonDesign() = default;
  explicit ButtonDesign(ButtonProperties initial) : properties(std::move(initial)) {}

  [[nodiscard]] const ButtonProperties& get() const { return properties; }

  // Marks the key even if the value is the same. Returns the key.
  template <class T>
  std::string_view set(T ButtonProperties::*field, T value) {
    properties.*field = std::move(value);
    const std::string_view key = keyOf(field);
    changed.insert(key);
    return key;
  }

  [[nodiscard]] const std::set<std::string_view>& changedKeys() const { return changed; }
  // Stores all properties and clears all marks.
  void save(PropertyBag& bag) {
    writeButton(properties, bag);
    changed.clear();
  }

 private:
  ButtonProperties properties;
  std::set<std::string_view> changed;
};

}  // namespace zelvreg::controls

#endif
