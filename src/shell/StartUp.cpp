#include "shell/StartUp.h"

#include "languages/LanguageFile.h"
#include "runtime/Environment.h"
#include "runtime/FileSystemObject.h"
#include "scan/Resolver.h"
#include "scan/ScanDriver.h"
#include "shell/Languages.h"

namespace zelvreg {
namespace {

void placeLanguageMarker(Form42& form) {
  if (form.langIndex >= 0 && static_cast<std::size_t>(form.langIndex) < form.lbllanguage.size()) {
    form.imglangselect.top = form.lbllanguage[static_cast<std::size_t>(form.langIndex)]->top.get();
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
  form.wizardPage = 0;
  form.categoryFound = 0;
  form.totalFound = 0;
  createCategoryRows(form);
  restoreSelection(form);
}

}  // namespace zelvreg
