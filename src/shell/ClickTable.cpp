// Which click runs which procedure.
#include <array>

#include "evidence/SecondLook.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "repair/RepairDriver.h"
#include "reports/EntryDetails.h"
#include "reports/Report.h"
#include "scan/Findings.h"
#include "scan/ScanDriver.h"
#include "scanners/ApplicationPaths.h"
#include "scanners/DefaultIcons.h"
#include "scanners/FileClasses.h"
#include "scanners/FileExtensions.h"
#include "scanners/FirewallRules.h"
#include "scanners/Fonts.h"
#include "scanners/HelpFiles.h"
#include "scanners/KeptScanners.h"
#include "scanners/MuiCache.h"
#include "scanners/RecentLists.h"
#include "scanners/ServerFiles.h"
#include "scanners/SharedDlls.h"
#include "scanners/StartupPrograms.h"
#include "scanners/TypeLibraries.h"
#include "scanners/UninstallRecords.h"
#include "search/Search.h"
#include "shell/Languages.h"
#include "shell/Navigation.h"
#include "shell/ResultsFilter.h"
#include "shell/SafeguardPage.h"
#include "shell/SmallForms.h"
#include "shell/StartUp.h"
#include "shell/SuiteBridge.h"
#include "shell/ToolbarChoice.h"
#include "shell/WindowEvents.h"
#include "text/Numbers.h"
#include "undo/FixListBackup.h"
#include "undo/Journal.h"
#include "undo/UndoPage.h"

namespace zelvreg {
namespace {

struct Binding {
  EntryPoint& (*entryPoint)(Form42& form);
  void (*procedure)(Form42& form);
};

template <auto member>
EntryPoint& of(Form42& form) {
  return form.*member;
}

void saveSelectionOf(Form42& form) { saveSelection(form); }

constexpr std::array table{
    // A scan.
    Binding{of<&Form42::cmd_start>, cmd_start_Click},
    Binding{of<&Form42::cmd_cancel>, cmd_cancel_Click},
    Binding{of<&Form42::chameleonButton12>, chameleonButton12_Click},
    Binding{of<&Form42::orubutton1>, runScan},
    Binding{of<&Form42::orubutton3>, runScan},
    Binding{of<&Form42::orubutton18>, saveSelectionOf},
    Binding{of<&Form42::lookAgain>, lookAgain},
    Binding{of<&Form42::tickByConfidence>, tickByConfidence},
    // The pages.
    Binding{of<&Form42::orubutton4>, openScanOptions},
    Binding{of<&Form42::chameleonButton7>, chameleonButton7_Click},
    Binding{of<&Form42::chameleonButton10>, chameleonButton10_Click},
    Binding{of<&Form42::chameleonButton11>, chameleonButton11_Click},
    Binding{of<&Form42::cmd_search>, cmd_search_Click},
    Binding{of<&Form42::cmd_exclud>, cmd_exclud_Click},
    Binding{of<&Form42::chameleonButton4>, chameleonButton4_Click},
    // The window.
    Binding{of<&Form42::chameleonButton23>, chameleonButton23_Click},
    Binding{of<&Form42::MaximizeButton>, MaximizeButton_Click},
    Binding{of<&Form42::ToolbarBox>, ToolbarBox_Click},
    Binding{of<&Form42::chameleonButton18>, chameleonButton18_Click},
    Binding{of<&Form42::TrayArea1>, TrayArea1_Click},
    // Repair.
    Binding{of<&Form42::cmd_fix>, cmd_fix_Click},
    Binding{of<&Form42::chameleonButton15>, chameleonButton15_Click},
    Binding{of<&Form42::i>, chameleonButton15_Click},
    Binding{of<&Form42::orubutton2>, runRepair},
    // Undo.
    Binding{of<&Form42::chameleonButton1>, openUndoOptions},
    Binding{of<&Form42::chameleonButton2>, chameleonButton2_Click},
    Binding{of<&Form42::chameleonButton3>, chameleonButton3_Click},
    Binding{of<&Form42::UndoRepair>, undoLastRepair},
    Binding{of<&Form42::Check1>, Check1_Click},
    Binding{of<&Form42::Command21>, writeJournal},
    Binding{of<&Form42::Command30>, Command30_Click},
    Binding{of<&Form42::Command31>, Command31_Click},
    // Exclusions.
    Binding{of<&Form42::chameleonButton5>, chameleonButton5_Click},
    Binding{of<&Form42::chameleonButton6>, chameleonButton6_Click},
    Binding{of<&Form42::chameleonButton8>, chameleonButton8_Click},
    Binding{of<&Form42::chameleonButton9>, chameleonButton9_Click},
    Binding{of<&Form42::g>, chameleonButton9_Click},
    Binding{of<&Form42::Command29>, Command29},
    // Report and details.
    Binding{of<&Form42::cmd_report>, saverep},
    Binding{of<&Form42::chameleonButton14>, View2_DblClick},
    Binding{of<&Form42::e>, View2_DblClick},
    Binding{of<&Form42::Command28>, Command28_Click},
    // The registry search.
    Binding{of<&Form42::Command24>, Command24},
    Binding{of<&Form42::cmdFind>, cmdFind_Click},
    // Ticks.
    Binding{of<&Form42::b>, chameleonButton16_Click},
    Binding{of<&Form42::c>, chameleonButton17_Click},
    Binding{of<&Form42::cmd_all>, chameleonButton16_Click},
    Binding{of<&Form42::cmd_non>, chameleonButton17_Click},
    Binding{of<&Form42::chameleonButton16>, chameleonButton16_Click},
    Binding{of<&Form42::chameleonButton17>, chameleonButton17_Click},
    Binding{of<&Form42::chameleonButton21>, chameleonButton21_Click},
    Binding{of<&Form42::chameleonButton22>, chameleonButton22_Click},
    // Language.
    Binding{of<&Form42::chameleonButton13>, chameleonButton13_Click},
    // Scanners, in the order of the rows.
    Binding{of<&Form42::Command1>, Command1},
    Binding{of<&Form42::Command2>, Command2},
    Binding{of<&Form42::Command5>, Command5},
    Binding{of<&Form42::Command7>, Command7},
    Binding{of<&Form42::Command10>, Command10},
    Binding{of<&Form42::Command12>, Command12},
    Binding{of<&Form42::cln71>, cln71},
    Binding{of<&Form42::cln7>, cln7},
    Binding{of<&Form42::cln72>, cln72},
    Binding{of<&Form42::cln8>, cln8},
    Binding{of<&Form42::cln9>, cln9},
    Binding{of<&Form42::cln10>, cln10},
    Binding{of<&Form42::Command32>, Command32},
    Binding{of<&Form42::fileext>, fileext},
    Binding{of<&Form42::uninstall>, uninstall},
    Binding{of<&Form42::uninstall32>, uninstall32},
    Binding{of<&Form42::runMRU>, runMRU},
    Binding{of<&Form42::MRUhist>, MRUhist},
    Binding{of<&Form42::MuiCache>, MuiCache},
    // Scanners that no row runs.
    Binding{of<&Form42::Command14>, Command14},
    Binding{of<&Form42::Command16>, Command16},
    Binding{of<&Form42::Command18>, Command18},
    Binding{of<&Form42::Command19>, Command19},
};

}  // namespace

void bindClicks(Form42& form) {
  for (const Binding& binding : table) {
    binding.entryPoint(form).bind([&form, procedure = binding.procedure] { procedure(form); });
  }
  bindSmallForms(form);
  bindSafeguardBoxes(form);
  form.Text6.onChange = [&form] { Text6_Change(form); };
  for (std::size_t category = 1; category <= form.CategoryBars.size(); ++category) {
    form.CategoryBars[category - 1].bind([&form, category] { filterByCategory(form, category); });
  }
  form.FilterBox.onChange = [&form] { filterResults(form); };
  form.Timer1.interval = 10;
  form.Timer1.onTick = [&form] { Timer1_Timer(form); };
  form.Timer2.interval = 1000;
  form.Timer2.onTick = [&form] { Timer2_Timer(form); };
  form.Text4.onChange = [&form] {
    if (leadingNumber(form.Text4.text()) == 1) {
      runScan(form);
    }
  };
}

}  // namespace zelvreg
