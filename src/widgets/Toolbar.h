// A row of small picture buttons.
#ifndef ZELVREG_WIDGETS_TOOLBAR_H
#define ZELVREG_WIDGETS_TOOLBAR_H

#include <string>
#include <vector>

#include "widgets/Control.h"

namespace zelvreg {

struct ToolbarButton {
  // The picture's key in the tool bar's image list; empty for a gap between groups.
  std::string image;
  std::string toolTip;
};

// A press gives the number of the button, from 1; gaps count, too.
struct Toolbar : Control {
  explicit Toolbar(std::vector<ToolbarButton> toolbarButtons)
      : buttons(std::move(toolbarButtons)) {}

  std::vector<ToolbarButton> buttons;
};

}  // namespace zelvreg

#endif
