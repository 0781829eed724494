#include "shell/Navigation.h"

#include <array>

#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/ScanDriver.h"
#include "scan/ScanPanel.h"
#include "search/Search.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

constexpr int categoryListRoom = 3500;  // twips below the top of the progress panel

void leaveResults(Form42& form) {
  form.cmd_start.enabled = true;
  enableFindingCommands(form, false);
}

}  // namespace

void orubutton4_Click(Form42& form) {
  form.View1.height = form.Frame8.top.get() + categoryListRoom;
  form.wizardPage = 0;
  form.chameleonButton10.enabled = true;
  form.chameleonButton11.enabled = true;
  form.Frame1.visible = true;
  form.Frame3.visible = false;
  form.Frame7.visible = false;
  form.Frame2.visible = false;
  form.Picture1.visible = false;
  form.cancelRequested = true;
}

void chameleonButton7_Click(Form42& form) {
  form.wizardPage = 1;
  form.chameleonButton10.enabled = true;
  form.chameleonButton11.enabled = true;
  form.Frame2.visible = false;
  form.Picture1.visible = false;
  loadExclusions(form);
  form.Frame7.left = form.Frame1.left;
  form.Frame7.top = form.Frame1.top;
  form.Frame1.visible = false;
  form.Frame3.visible = false;
  form.Frame7.visible = true;
}

void chameleonButton10_Click(Form42& form) {
  if (form.wizardPage == 0) {
    form.wizardPage = 1;
    form.chameleonButton7.click();
    form.chameleonButton11.enabled = true;
  } else if (form.wizardPage == 1) {
    form.wizardPage = 2;
    runScan(form);
    form.chameleonButton10.enabled = false;
  }
}

void chameleonButton11_Click(Form42& form) {
  if (form.wizardPage == 2) {
    form.wizardPage = 1;
    form.chameleonButton7.click();
    form.chameleonButton10.enabled = true;
  } else if (form.wizardPage == 1) {
    form.wizardPage = 0;
    form.orubutton4.click();
    form.chameleonButton11.enabled = false;
  }
}

void cmd_search_Click(Form42& form) {
  leaveResults(form);
  form.orubutton4.click();
}

void cmd_exclud_Click(Form42& form) {
  leaveResults(form);
  form.chameleonButton7.click();
}

const Button* commandOfToolbar(const Form42& form, std::size_t index) {
  const std::array<const Button*, 12> commands{
      nullptr,         &form.cmd_search, &form.cmd_exclud, nullptr,
      &form.cmd_start, &form.cmd_fix,    &form.cmd_cancel, nullptr,
      &form.cmd_all,   &form.cmd_non,    nullptr,          &form.cmd_report};
  return index < commands.size() ? commands[index] : nullptr;
}

void Toolbar1_ButtonClick(Form42& form, std::size_t index) {
  if (const Button* command = commandOfToolbar(form, index)) {
    command->click();
  }
}

void chameleonButton4_Click(Form42& form) {
  form.menus.drawing = MenuDrawing::System;
  form.shadow.remove();
  saveSelection(form);
  form.cancelRequested = true;
  endProcess(form);
}

void cmdFind_Click(Form42& form) {
  if (form.Frame8.visible) {
    return;
  }
  form.decideSafeguards.run();
  form.isProviderSilent = false;
  openScanPanel(form);
  enableIdleCommands(form, false);
  form.cancelRequested = false;
  form.testedRow = 0;
  cmdFind(form);
  closeScanPanel(form);
}

void View1_ItemClick(Form42& form, std::size_t row) { form.lastClickedRow = row; }

void View1_DblClick(Form42& form) {
  if (leadingNumber(form.View1.text(form.lastClickedRow, problemsColumn)) <= 0 ||
      form.Gif89a1.visible) {
    return;
  }
  enableFindingCommands(form, true);
  openResults(form);
}

}  // namespace zelvreg
