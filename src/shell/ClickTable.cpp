// Which press runs which procedure.
#include <array>

#include "scan/Findings.h"
#include "scan/ScanDriver.h"
#include "scanners/Fonts.h"
#include "scanners/SharedDlls.h"
#include "shell/Languages.h"
#include "shell/StartUp.h"
#include "text/Numbers.h"

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
    // Ticks.
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
};

}  // namespace

void bindClicks(Form42& form) {
  for (const Binding& binding : table) {
    binding.entryPoint(form).bind([&form, procedure = binding.procedure] { procedure(form); });
  }
  form.Text4.onChange = [&form] {
    if (leadingNumber(form.Text4.text()) == 1) {
      runScan(form);
    }
  };
}

}  // namespace zelvreg
