// The store in which a form keeps the properties that its controls were given at design time.
#ifndef ZELVREG_CONTROLS_PROPERTY_BAG_H
#define ZELVREG_CONTROLS_PROPERTY_BAG_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>

#include "controls/Canvas.h"

namespace zelvreg::controls {

struct FontDescription {
  std::string name = "Segoe UI";
  double size = 9;  // points
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;

  bool operator==(const FontDescription&) const = default;
};

// Numbers of every width, and colors, are one kind. Text is UTF-8.
using PropertyValue = std::variant<std::int32_t, bool, std::string, FontDescription, Picture>;

class PropertyBag {
 public:
  void write(std::string_view key, PropertyValue value) {
    values.insert_or_assign(std::string(key), std::move(value));
  }

  // The value of a key; the default if the key is missing or its value is of another kind.
  template <class T>
  [[nodiscard]] T read(std::string_view key, T byDefault) const {
    const auto found = values.find(key);
    if (found != values.end()) {
      if (const T* value = std::get_if<T>(&found->second)) {
        return *value;
      }
    }
    return byDefault;
  }

  [[nodiscard]] bool holds(std::string_view key) const { return values.contains(key); }
  [[nodiscard]] std::size_t size() const { return values.size(); }

 private:
  std::map<std::string, PropertyValue, std::less<>> values;
};

// What a control learns from the form that it is on.
struct Ambient {
  bool userMode = true;  // false at design time
  FontDescription font;
};

}  // namespace zelvreg::controls

#endif
