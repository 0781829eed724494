#include "shell/StartUp.h"

#include "languages/LanguageFile.h"
#include "registry/View64.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "scan/Resolver.h"
#include "scan/ScanDriver.h"
#include "shell/CommandModes.h"
#include "shell/Languages.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

void placeLanguageMarker(Form42& form) {
  if (form.langIndex >= 0 && static_cast<std::size_t>(form.langIndex) < form.lbllanguage.size()) {
    form.imglangselect.top = form.lbllanguage[static_cast<std::size_t>(form.langIndex)]->top.get();
  }
}

// The colour of the suite, for the lines and the buttons of the title.
void applyColor(Form42& form) {
  constexpr std::uint32_t usualColor = 10118205;
  const std::string text = readSuiteColor(form);
  const auto color =
      trim(text).empty() ? usualColor : static_cast<std::uint32_t>(leadingNumber(text));
  form.Shape3.foreColor = color;
  form.Shape1.foreColor = color;
  for (Button* button : {&form.chameleonButton4, &form.chameleonButton23, &form.chameleonButton13,
                         &form.chameleonButton18}) {
    button->backColor = color;
    button->backOver = color;
  }
}

}  // namespace

void Form_Load(Form42& form) {
  bindClicks(form);
  if (form.programFolder.empty()) {
    form.programFolder = programFolder();
  }
  form.Is64BitOS = runsOn64BitWindows();
  loadavlang(form);
  changelangoru(form);
  compareWithSystem(form);
  placeLanguageMarker(form);
  if (!fileSystemObject::fileExists(languagePath(form, form.langFileName))) {
    form.langFileName = "zelvreg-english.lang";
  }
  applyColor(form);
  if (form.commandText == "d") {
    form.cmd_start.enabled = false;
  }
  form.Gif89a1.file = form.programFolder + "\\search.gif";
  form.wizardPage = 0;
  form.categoryFound = 0;
  form.totalFound = 0;
  createCategoryRows(form);
  restoreSelection(form);
  runCommandMode(form);
  form.orubutton4.click();
}

}  // namespace zelvreg
