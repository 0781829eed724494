// Gives a form its outline, lets the user drag it by its client area, and shows its system menu.
#ifndef ZELVREG_CONTROLS_TRANS_FORM_H
#define ZELVREG_CONTROLS_TRANS_FORM_H

#include <windows.h>

#include <functional>
#include <string>

#include "controls/FormShape.h"
#include "controls/GdiObjects.h"

namespace zelvreg::controls {

// Shows a message and waits until the user has read it.
using ShowMessage = std::function<void(const std::string& title, const std::string& text)>;

// The control itself is invisible. A form may have only one: a second one shows a message, and as
// long as there are two, neither does anything. The form must outlive the control, or destroy its
// window.
class TransForm {
 public:
  // An empty `showMessage` means a message box of the system.
  explicit TransForm(HWND form, bool userMode = true, ShowMessage showMessage = {});
  TransForm(const TransForm&) = delete;
  TransForm& operator=(const TransForm&) = delete;
  ~TransForm();

  [[nodiscard]] const FormShape& shape() const { return settings; }
  void setMaskColor(std::uint32_t value);
  void setTransparent(bool value);
  void setAutoDrag(bool value);
  void read(const PropertyBag& bag);
  void save(PropertyBag& bag) const { writeFormShape(settings, bag); }

  // Shapes the form. Call it once at first, and again after each change of the size or the ground.
  // The form is asked to paint by WM_ERASEBKGND and WM_PRINTCLIENT; pixels in MaskColor are cut
  // out. At design time nothing happens.
  void Refresh();

  // At the cursor if it is over the form's client area, else at that area's upper left corner.
  // Waits until the user has chosen; what was chosen is posted to the form.
  void PopupSysMenu() const;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  [[nodiscard]] bool isAlone() const;
  [[nodiscard]] RegionHandle maskedOutline() const;

  HWND parent;
  bool isRunning;
  FormShape settings;
  bool isShaped = false;
  // The outline that the form had of its own, or null.
  RegionHandle before;
};

}  // namespace zelvreg::controls

#endif
