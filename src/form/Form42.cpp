#include "form/Form42.h"

namespace zelvreg {
namespace {

// Column widths are in the form's own unit; the window starts with them.
std::vector<ColumnHeader> categoryColumns() {
  return {{"what to scan", 5000, Alignment::Left},
          {"Description", 9000, Alignment::Left},
          {"# Problems", 1500, Alignment::Right},
          {"", 1800, Alignment::Left}};
}

std::vector<ColumnHeader> findingColumns() {
  return {{"Invalid Data Location", 10583, Alignment::Left},
          {"Bad Reference Value", 7056, Alignment::Left},
          {"", 0, Alignment::Left},
          {"Registry Key", 3881, Alignment::Left},
          {"Registry Sub Key", 15875, Alignment::Left}};
}

std::vector<ToolbarButton> commandButtons() {
  return {{"search", "Search Location"},
          {"exclude", "Exclusions"},
          {},
          {"start", "Start"},
          {"fix", "Fix Selected"},
          {"cancel", "Cancel"},
          {},
          {"all", "Select All"},
          {"none", "Select None"},
          {},
          {"report", "Create Report"}};
}

ImageList imagesOf(const std::vector<ToolbarButton>& buttons) {
  ImageList images;
  for (const ToolbarButton& button : buttons) {
    if (!button.image.empty()) {
      images.keys.push_back(button.image);
    }
  }
  return images;
}

}  // namespace

Form42::Form42()
    : imgtoolbar(imagesOf(commandButtons())),
      Toolbar1(commandButtons()),
      ImageList1{{"cl", "ch", "ex", "d", "e", "h", "i", "g", "j", "f", "m", "l", "c", "b", "a",
                  "re", "ru", "mr", "mui"}},
      View1(ImageList1, messages, categoryColumns()),
      View2(ImageList1, messages, findingColumns()),
      View3(ImageList1, messages, {{"Date and Time Of Creation", 10000, Alignment::Left}}),
      View4(ImageList1, messages, {{"Registration Key", 10000, Alignment::Left}}) {
  Label2[0].caption = "Select Areas Of registry To Scan For Invalid Informations.";
  Label2[1].caption = "Registry Scan Options";
  Label2[3].caption = "Searching for invalid Registry information:";
  Label2[4].caption =
      "This processes could take several minutes depending on your registry file size, So please "
      "be patient while it is running.";
  Label2[5].caption = "Searching Progress";
  Label8[6].caption = "Select Areas Of registry To Scan For Invalid Informations.";
  Label1.caption = "Fix Registry Problems";
  Frame3.caption = "Undo Options";
  Frame7.caption = "Exclude part of registry keys that start with.";
  Label2[2].caption = "Exclude part of registry keys that start with.";
  Frame5.caption = "Search Mode";
  Form1.Label222[1].caption = "Exclude Registry Key From Scan";
  Form1.Label1.caption = "Type the key that is to be left out of every scan:";
  frmabout.window.height = 4650;
  frmabout.Label222[1].caption = "About";
  frmabout.Label2[0].caption = "Finds and removes dead entries of the Windows registry.";
  frmabout.Label2[1].caption = "Translate this program";
  frmabout.Label2[2].caption = "Web site";
  frmabout.Label2[3].caption = "Support";
  Command28.caption = "Details";
  Command21.caption = "Undo Options";
  chameleonButton4.toolTip = "Exit";
  repeatCaptions();
  // The tool tips of these two do not say what they do, but users know them.
  chameleonButton13.toolTip = "Close";
  chameleonButton18.toolTip = "Minimize";
  chameleonButton12.toolTip = "Cancel this operation";
  lbllanguage.push_back(std::make_unique<Label>("English"));
  pictrlang.visible = false;
  for (Button& bar : CategoryBars) {
    bar.visible = false;
  }
  OutcomeText.visible = false;
  UndoRepair.visible = false;
  // Shown while a scan runs.
  Frame8.visible = false;
  Gif89a1.visible = false;
  cmd_fix.enabled = false;
  cmd_all.enabled = false;
  cmd_non.enabled = false;
  cmd_report.enabled = false;
  cmd_cancel.enabled = false;
}

void Form42::repeatCaptions() {
  // A button without a caption of its own, which does the same as this menu entry.
  chameleonButton9.toolTip = g.caption;
  // Long captions that a narrow button cuts off.
  for (Button* button : {&orubutton4, &chameleonButton1, &chameleonButton7, &orubutton1,
                         &chameleonButton15, &orubutton2}) {
    button->toolTip = button->caption;
  }
}

}  // namespace zelvreg
