// The button that all commands have: a button of the system that draws itself.
#ifndef ZELVREG_CONTROLS_CHAMELEON_BUTTON_H
#define ZELVREG_CONTROLS_CHAMELEON_BUTTON_H

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "controls/ButtonLook.h"
#include "controls/ButtonProperties.h"
#include "controls/GdiObjects.h"

namespace zelvreg::controls {

// Its window is of the system's own button class, so Tab, Space, Enter, access keys and screen
// readers work as with any other. The parent paints the ground of round or transparent buttons: it
// is sent WM_ERASEBKGND, then WM_PRINTCLIENT, with the origin where its client area begins.
class chameleonButton {
 public:
  static constexpr std::string_view Version = "2.0.6";

  // Makes a child of `parent`, hidden and without a size, with the identifier `id`. If the parent
  // destroys the window, the control keeps its state.
  chameleonButton(HWND parent, int id, const Ambient& ambient = {}, int dpi = 96);
  chameleonButton(const chameleonButton&) = delete;
  chameleonButton& operator=(const chameleonButton&) = delete;
  ~chameleonButton();

  // Null after the window was destroyed.
  [[nodiscard]] HWND hwnd() const { return window; }

  [[nodiscard]] const ButtonProperties& properties() const { return design.get(); }
  // Sets any property, repaints and marks its key as changed:
  //   button.set(&ButtonProperties::Caption, "&Next");
  template <class T>
  void set(T ButtonProperties::*field, std::type_identity_t<T> value) {
    apply(design.set(field, std::move(value)));
  }
  void setFontBold(bool value);
  void setFontItalic(bool value);
  void setFontUnderline(bool value);
  void setFontSize(double points);
  void setFontName(std::string name);

  void read(const PropertyBag& bag);
  void save(PropertyBag& bag) { design.save(bag); }
  [[nodiscard]] const ButtonDesign& state() const { return design; }

  // UTF-8; the empty text removes the tip.
  void setToolTip(const std::string& text);
  // The one button that the user would press next.
  void setDefault(bool value);
  void setPalette(const Palette& shared);
  void setDpi(int value);
  // In pixels of the parent.
  void place(const Rectangle& where);

  // While it is set nothing is repainted.
  bool DisableRefresh = false;
  // Paints it at once.
  void Refresh();

  [[nodiscard]] bool isHovered() const { return isOver; }
  // Whether a form at design time shows its ground through the control.
  [[nodiscard]] bool isTransparent() const { return hasTransparency; }

  // Paints it as it is now, at the origin of a device context of at least its size.
  void paint(HDC target) const;

  // Any may be empty. `onClick` may destroy the control.
  std::function<void()> onClick;
  std::function<void()> onMouseOut;
  std::function<void(int key)> onKeyDown;
  std::function<void(int key)> onKeyUp;
  // The button (1 left, 2 right, 0 for a move) and the place in pixels of the control.
  std::function<void(int button, int x, int y)> onMouseDown;
  std::function<void(int button, int x, int y)> onMouseMove;
  std::function<void(int button, int x, int y)> onMouseUp;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  static LRESULT CALLBACK parentProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR reference);
  static chameleonButton* of(HWND window);

  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> answer(UINT message, WPARAM wParam);
  void tellKey(UINT message, WPARAM wParam) const;
  void tellMouse(UINT message, LPARAM lParam) const;
  void follow(UINT message) const;
  void apply(std::string_view key);
  void applyType();
  void applyOutline() const;
  void applyFont();
  void applyTipColors() const;
  void repaint() const;
  void clicked();
  void mouseEntered();
  void setOver(bool value);
  void overTimerTick();
  bool showCursor();
  [[nodiscard]] bool cursorIsOn() const;
  [[nodiscard]] Size size() const;
  [[nodiscard]] ButtonState stateNow() const;

  template <class Change>
  void changeFont(const Change& change) {
    FontDescription font = properties().Font;
    change(font);
    set(&ButtonProperties::Font, font);
  }

  HWND window = nullptr;
  HWND tip = nullptr;
  HCURSOR mouseIcon = nullptr;
  ButtonDesign design;
  Ambient form;
  Palette palette;
  FontHandle font;
  int dpi;
  bool isOver = false;
  bool isDefault = false;
  bool isDialogDefault = false;
  bool hasTransparency = false;
};

}  // namespace zelvreg::controls

#endif
