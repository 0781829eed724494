#include "scan/ScanPanel.h"

#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "scan/Findings.h"

namespace zelvreg {
namespace {

// Places in twips, and the dark red of a result.
constexpr int categoryListHeight = 4208;
constexpr int progressPanelTop = 60;
constexpr std::uint32_t foundColor = 192;

}  // namespace

void openScanPanel(Form42& form) {
  form.filterPass.category = 0;
  form.FilterBox.setText("");
  form.View1.height = categoryListHeight;
  form.Gif89a1.visible = true;
  form.Frame8.top = progressPanelTop;
  form.Frame8.visible = true;
  form.wizardPage = 2;
  form.Label3.visible = true;
  form.Bar1.setValue(0);
  form.Picture1.visible = false;
  form.Frame1.visible = true;
  form.Frame7.visible = false;
  form.Frame3.visible = false;
  form.Frame2.visible = false;
  form.chameleonButton11.enabled = false;
  form.Label4.visible = true;
  form.chameleonButton1.enabled = false;
  form.chameleonButton7.enabled = false;
  form.orubutton1.enabled = false;
  form.orubutton4.enabled = false;
  form.chameleonButton10.enabled = false;
}

void showResultsPage(Form42& form) {
  form.Frame2.left = form.Frame1.left;
  form.Frame2.top = form.Frame1.top;
  form.Frame1.visible = false;
  form.Frame2.visible = true;
  form.Frame7.visible = false;
  form.Frame3.visible = false;
}

void openResults(Form42& form) {
  form.chameleonButton1.enabled = true;
  form.chameleonButton7.enabled = true;
  form.orubutton4.enabled = true;
  showResultsPage(form);
  form.Label10.caption = readLanguageText(form, "Form42", "Label10") + " " + rowCountText(form);
  form.chameleonButton11.enabled = true;
  form.orubutton1.enabled = true;
  form.Picture1.visible = true;
}

void closeScanPanel(Form42& form) {
  form.lookAgain.run();
  const bool hasFindings = form.View2.count() > 0;
  form.Text2.setText("0");
  form.Label3.caption = problemsFoundText(form);
  form.Label3.refresh();
  form.Label4.caption = totalFoundCaption(form);
  if (hasFindings) {
    form.chameleonButton9.enabled = true;
    form.orubutton2.enabled = true;
  }
  form.testedRow.reset();
  openResults(form);
  form.Gif89a1.visible = false;
  form.Frame8.visible = false;
  if (hasFindings) {
    form.chameleonButton16.click();
    form.tickByConfidence.run();
    enableFindingCommands(form, true);
    form.Shape1.foreColor = foundColor;
  }
  enableIdleCommands(form, true);
}

void enableFindingCommands(Form42& form, bool enabled) {
  form.cmd_fix.enabled = enabled;
  form.cmd_all.enabled = enabled;
  form.cmd_non.enabled = enabled;
  form.cmd_report.enabled = enabled;
}

void enableIdleCommands(Form42& form, bool enabled) {
  form.cmd_search.enabled = enabled;
  form.cmd_exclud.enabled = enabled;
  form.cmd_start.enabled = enabled;
  form.cmd_cancel.enabled = !enabled;
}

}  // namespace zelvreg
