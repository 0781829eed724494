// The two small forms that the main form opens, as plain state. `show` is the front end's: it lets
// the user work on the form, which ends when it is closed.
#ifndef ZELVREG_FORM_SMALL_FORMS_H
#define ZELVREG_FORM_SMALL_FORMS_H

#include <array>
#include <functional>

#include "widgets/Button.h"
#include "widgets/FormWindow.h"
#include "widgets/SimpleControls.h"

namespace zelvreg {

// The dialog in which an exclusion is typed: Text1 is the entry, Text2 the row of View4 that is
// edited, empty or 0 for a new one.
struct ExclusionDialog {
  FormWindow window{7200, 2700};
  DropShadow shadow;
  // The last is the title.
  std::array<Label, 2> Label222;
  TextBox Text1;
  TextBox Text2;
  Button orubutton1{"Add Key"};
  Button orubutton10{"Cancel"};
  Button chameleonButton3;
  Label Label1;
  bool isOpen = false;
  // Runs before the dialog is shown.
  EntryPoint load;
  std::function<void(ExclusionDialog&)> show;
};

// Version, maker and links. The last of Label222 is the title, that of Label2 the legal line.
struct AboutDialog {
  FormWindow window{7200, 5400};
  DropShadow shadow;
  std::array<Label, 2> Label222;
  std::array<Label, 5> Label2;
  Label Label3;
  LinkLabel Label4;
  LinkLabel Label5;
  LinkLabel Label6;
  Button chameleonButton3;
  bool isOpen = false;
  std::function<void(AboutDialog&)> show;
};

}  // namespace zelvreg

#endif
