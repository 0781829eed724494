// The controls that hold one value.
#ifndef ZELVREG_WIDGETS_SIMPLE_CONTROLS_H
#define ZELVREG_WIDGETS_SIMPLE_CONTROLS_H

#include <functional>
#include <string>

#include "widgets/Button.h"
#include "widgets/Control.h"

namespace zelvreg {

class Label : public Control {
 public:
  Label() = default;
  explicit Label(std::string text) { caption = std::move(text); }

  Property<std::string, Change::Text> caption{*this, {}};
  Property<std::string, Change::Text> tag{*this, {}};
};

// A label that can be pressed.
class LinkLabel : public Label, public EntryPoint {
 public:
  void click() const { run(); }
};

class Frame : public Control {
 public:
  Property<std::string, Change::Text> caption{*this, {}};
};

// A picture, a picture box or a colored line; `file` is empty if the form draws it itself.
class Picture : public Control {
 public:
  Property<std::string, Change::Look> file{*this, {}};
};

class TextBox : public Control {
 public:
  [[nodiscard]] const std::string& text() const { return content; }
  void setText(std::string text) {
    content = std::move(text);
    changed(Change::Text);
    if (onChange) {
      onChange();
    }
  }

  // Runs after each change of the text.
  std::function<void()> onChange;

 private:
  std::string content;
};

class CheckBox : public Control, public EntryPoint {
 public:
  explicit CheckBox(std::string text = {}) { caption = std::move(text); }

  Property<std::string, Change::Text> caption{*this, {}};
  Property<bool, Change::Value> value{*this, false};
  // Whether it is disabled because an administrator has decided it.
  Property<bool, Change::Value> isLocked{*this, false};

  // Runs after a press, with the new value set.
  void click() const { run(); }
};

// One of a group of which only one is on. The front end and the form's code turn the others off.
class OptionButton : public Control {
 public:
  explicit OptionButton(std::string text = {}) { caption = std::move(text); }

  Property<std::string, Change::Text> caption{*this, {}};
  Property<bool, Change::Value> value{*this, false};
};

class ProgressBar : public Control {
 public:
  [[nodiscard]] int maximum() const { return most; }
  [[nodiscard]] int value() const { return current; }

  // A maximum that is not above 0 is refused: the old one stays.
  void setMaximum(int maximum) {
    if (maximum > 0) {
      most = maximum;
      changed(Change::Value);
    }
  }
  // A value outside 0 to maximum() is refused: the old one stays.
  void setValue(int value) {
    if (value >= 0 && value <= most) {
      current = value;
      changed(Change::Value);
    }
  }

 private:
  int most = 100;
  int current = 0;
};

}  // namespace zelvreg

#endif
