#include "scan/AutomaticEnd.h"

#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "runtime/FileText.h"
#include "runtime/OwnText.h"
#include "scan/Findings.h"
#include "scan/SafeguardSources.h"
#include "scan/Settings.h"
#include "text/Numbers.h"

namespace zelvreg {
namespace {

constexpr int listMode = 1;
constexpr int listAndFixMode = 2;

// A suite has all rows repaired, unless a policy of the computer says otherwise.
void repairAll(Form42& form) {
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    form.View2.setChecked(row, true);
  }
  if (isKeptByPolicy(form, &Safeguards::careful)) {
    form.lookAgain.run();
    form.tickByConfidence.run();
  }
  form.orubutton2.click();
}

// A number as the runtime prints it to a file: a blank in place of a sign, the digits, a blank.
void writeTotal(const Form42& form) {
  replaceFileText(form.programFolder + "\\regst.txt", " " + decimal(form.totalFound) + " \r\n");
}

void writeLocations(const Form42& form) {
  std::string lines;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    lines += form.View2.text(row, locationColumn) + "\r\n";
  }
  replaceFileText(form.programFolder + "\\regtmp.txt", ownBytes(lines));
}

void answerRecheck() { keepSetting(settings::recheck, "rc", "1"); }

}  // namespace

bool endsItself(const Form42& form) {
  return form.autoMode == listMode || form.autoMode == listAndFixMode || form.recheckMode == 1;
}

void endAutomaticScan(Form42& form) {
  if (form.autoMode == listAndFixMode) {
    repairAll(form);
    writeTotal(form);
    endProcess(form);
  }
  if (form.autoMode == listMode) {
    writeLocations(form);
    writeTotal(form);
    endProcess(form);
  }
  if (form.recheckMode == 1) {
    if (form.View2.count() > 0 && form.recheckFix == 1) {
      repairAll(form);
    }
    answerRecheck();
    endProcess(form);
  }
}

}  // namespace zelvreg
