// A button: of the window, or one that is never shown and serves as an entry point.
#ifndef ZELVREG_WIDGETS_BUTTON_H
#define ZELVREG_WIDGETS_BUTTON_H

#include <functional>
#include <string>

#include "widgets/Control.h"

namespace zelvreg {

// Calls the procedure that is bound to it.
class EntryPoint {
 public:
  void bind(std::function<void()> procedure) { bound = std::move(procedure); }
  [[nodiscard]] bool isBound() const { return static_cast<bool>(bound); }

  // Without a bound procedure nothing happens.
  void run() const {
    if (bound) {
      bound();
    }
  }

 private:
  std::function<void()> bound;
};

class Button : public Control, public EntryPoint {
 public:
  Button() = default;
  explicit Button(std::string text) { caption = std::move(text); }

  Property<std::string, Change::Text> caption{*this, {}};
  // The color under the mouse.
  Property<std::uint32_t, Change::Look> backOver{*this, windowColor};

  // Does what a press does. The form's own code may also click a disabled or hidden button.
  void click() const { run(); }
};

}  // namespace zelvreg

#endif
