#include "controls/ButtonProperties.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace zelvreg::controls {
namespace {

using Button = ButtonProperties;

const std::array<ButtonProperty, 23> allProperties = {{
    {"ButtonType", "BTYPE", &Button::ButtonType},
    {"Caption", "TX", &Button::Caption},
    {"Enabled", "ENAB", &Button::Enabled},
    {"Font", "FONT", &Button::Font},
    {"ColorScheme", "COLTYPE", &Button::ColorScheme},
    {"ShowFocusRect", "FOCUSR", &Button::ShowFocusRect},
    {"BackColor", "BCOL", &Button::BackColor},
    {"BackOver", "BCOLO", &Button::BackOver},
    {"ForeColor", "FCOL", &Button::ForeColor},
    {"ForeOver", "FCOLO", &Button::ForeOver},
    {"MaskColor", "MCOL", &Button::MaskColor},
    {"MousePointer", "MPTR", &Button::MousePointer},
    {"MouseIcon", "MICON", &Button::MouseIcon},
    {"PictureNormal", "PICN", &Button::PictureNormal},
    {"PictureOver", "PICH", &Button::PictureOver},
    {"UseMaskColor", "UMCOL", &Button::UseMaskColor},
    {"SoftBevel", "SOFT", &Button::SoftBevel},
    {"PicturePosition", "PICPOS", &Button::PicturePosition},
    {"UseGreyscale", "NGREY", &Button::UseGreyscale},
    {"SpecialEffect", "FX", &Button::SpecialEffect},
    {"HandPointer", "HAND", &Button::HandPointer},
    {"CheckBoxBehaviour", "CHECK", &Button::CheckBoxBehaviour},
    {"Value", "VALUE", &Button::Value},
}};

// The bag holds all numbers as one kind.
template <class T>
constexpr bool isNumber = std::is_integral_v<T> && !std::is_same_v<T, bool>;

template <class T>
T readField(const PropertyBag& bag, std::string_view key, const T& byDefault) {
  if constexpr (isNumber<T>) {
    return static_cast<T>(bag.read(key, static_cast<std::int32_t>(byDefault)));
  } else {
    return bag.read(key, byDefault);
  }
}

}  // namespace

std::span<const ButtonProperty> buttonProperties() { return allProperties; }

std::string_view keyOf(const ButtonField& field) {
  return std::ranges::find(allProperties, field, &ButtonProperty::field)->key;
}

ButtonProperties readButton(const PropertyBag& bag, const Ambient& ambient) {
  ButtonProperties read;
  read.Font = ambient.font;
  for (const ButtonProperty& property : allProperties) {
    // Both come after the color that they follow, which has been read by then.
    read.BackOver = property.key == "BCOLO" ? read.BackColor : read.BackOver;
    read.ForeOver = property.key == "FCOLO" ? read.ForeColor : read.ForeOver;
    std::visit([&](auto field) { read.*field = readField(bag, property.key, read.*field); },
               property.field);
  }
  return read;
}

void writeButton(const ButtonProperties& properties, PropertyBag& bag) {
  for (const ButtonProperty& property : allProperties) {
    std::visit(
        [&](auto field) {
          if constexpr (isNumber<std::remove_cvref_t<decltype(properties.*field)>>) {
            bag.write(property.key, static_cast<std::int32_t>(properties.*field));
          } else {
            bag.write(property.key, properties.*field);
          }
        },
        property.field);
  }
}

}  // namespace zelvreg::controls
