#include "shell/StartUp.h"

#include "form/Form42.h"
#include "languages/readlangfile.h"
#include "runtime/DateTime.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "scan/SafeguardSources.h"
#include "scan/ScanDriver.h"
#include "shell/CommandModes.h"
#include "shell/Languages.h"
#include "shell/SuiteColor.h"
#include "shell/ThemeChoice.h"
#include "shell/ToolbarChoice.h"
#include "shell/WindowEvents.h"

namespace zelvreg {
namespace {

void placeLanguageMarker(Form42& form) {
  if (form.langIndex >= 0 && static_cast<std::size_t>(form.langIndex) < form.lbllanguage.size()) {
    form.imglangselect.top = form.lbllanguage[static_cast<std::size_t>(form.langIndex)]->top.get();
  }
}

// The color of the suite, for the lines and the buttons of the title.
void applyColor(Form42& form) {
  const std::uint32_t color = suiteColor(form);
  form.Shape3.foreColor = color;
  form.Shape1.foreColor = color;
  for (Button* button : {&form.chameleonButton4, &form.chameleonButton23, &form.chameleonButton13,
                         &form.chameleonButton18}) {
    giveColor(*button, color);
  }
}

}  // namespace

void Form_Load(Form42& form) {
  bindClicks(form);
  form.decideSafeguards.bind([&form] { decideSafeguards(form); });
  form.decideSafeguards.run();
  if (form.programFolder.empty()) {
    form.programFolder = programFolder();
  }
  form.Is64BitOS = runsOn64BitWindows();
  loadThemeChoice(form);
  loadToolbarChoice(form);
  loadavlang(form);
  changelangoru(form);
  compareWithSystem(form);
  placeLanguageMarker(form);
  if (!fileSystemObject::fileExists(languagePath(form, form.langFileName), Shares::Asked)) {
    form.langFileName = "zelvreg-english.lang";
  }
  applyColor(form);
  if (form.commandText == "d") {
    form.cmd_start.enabled = false;
  }
  const std::string year = std::to_string(localDateTime().year);
  form.Label12[2].caption = year;
  form.Label12[3].caption = year;
  form.Gif89a1.file = form.programFolder + "\\search.gif";
  form.leftOfImage44 = form.Image44[5].left;
  form.wizardPage = 0;
  form.categoryFound = 0;
  clearTotal(form);
  for (ListView* list : {&form.View1, &form.View2, &form.View3, &form.View4}) {
    list->hasFlatHeader = true;
  }
  centerOnScreen(form.window, form.screen);
  form.Command24.click();
  createCategoryRows(form);
  restoreSelection(form);
  runCommandMode(form);
  form.Timer1.enable(true);
  form.orubutton4.click();
}

}  // namespace zelvreg
