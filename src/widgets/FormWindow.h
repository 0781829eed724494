// A form as a window, with its shadow, its icon in the notification area, its menus and its colors.
#ifndef ZELVREG_WIDGETS_FORM_WINDOW_H
#define ZELVREG_WIDGETS_FORM_WINDOW_H

#include <cstdint>
#include <string>

#include "widgets/Button.h"
#include "widgets/Control.h"

namespace zelvreg {

// The numbers are those of the form's property.
enum class WindowState : std::uint8_t { Normal = 0, Minimized = 1, Maximized = 2 };

class FormWindow : public Control {
 public:
  FormWindow(int formWidth, int formHeight) {
    width = formWidth;
    height = formHeight;
  }

  Property<WindowState, Change::Look> windowState{*this, WindowState::Normal};
};

// The usable size of the screen, in twips. The front end sets it; without one it is a screen of
// 1024 by 768 pixels.
struct Screen {
  int width = 15360;
  int height = 11520;
};

// The soft shadow around a form.
class DropShadow : public Control {
 public:
  DropShadow() { visible = false; }

  // `depth` is its width in pixels at 96 dpi.
  void draw(std::uint32_t shadowColor, int shadowDepth) {
    foreColor = shadowColor;
    depth = shadowDepth;
    visible = true;
  }
  void remove() { visible = false; }

  Property<int, Change::Look> depth{*this, 0};
};

// An icon in the notification area; a press on it is its click.
class TrayIcon : public Control, public EntryPoint {
 public:
  explicit TrayIcon(std::string text) {
    toolTip = std::move(text);
    visible = false;
  }

  void click() const { run(); }
};

// Who draws the form's menus.
enum class MenuDrawing : std::uint8_t { System, InSystemCharset, InOwnCharset };

class FormMenus : public Control {
 public:
  Property<MenuDrawing, Change::Look> drawing{*this, MenuDrawing::System};
};

// The colors that the user wants.
enum class ThemeChoice : std::uint8_t { AsWindows, Light, Dark };

class FormTheme : public Control {
 public:
  Property<ThemeChoice, Change::Look> choice{*this, ThemeChoice::AsWindows};
};

}  // namespace zelvreg

#endif
