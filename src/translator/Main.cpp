// The program for translators.
#include <windows.h>

// This one needs <windows.h> before it.
#include <shellapi.h>

#include <string>

#include "desktop/ProcessStart.h"
#include "form/Form42.h"
#include "runtime/Environment.h"
#include "shell/Languages.h"
#include "shell/ThemeChoice.h"
#include "translator/TranslatorWindow.h"
#include "unicode/Unicode.h"

namespace {

// The first argument; empty if there is none.
std::string fileOf(LPWSTR commandLine) {
  if (*commandLine == L'\0') {
    return {};
  }
  int count = 0;
  LPWSTR* arguments = CommandLineToArgvW(commandLine, &count);
  std::string file;
  if (arguments != nullptr && count > 0) {
    file = zelvreg::utf8(reinterpret_cast<const char16_t*>(arguments[0]));
  }
  LocalFree(arguments);
  return file;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*before*/, LPWSTR commandLine,
                    int /*show*/) {
  zelvreg::desktop::beginProcess();
  zelvreg::Form42 form;
  form.programFolder = zelvreg::programFolder();
  zelvreg::loadThemeChoice(form);
  zelvreg::changelangoru(form);
  zelvreg::desktop::TranslatorWindow window(form);
  window.run(fileOf(commandLine));
  return 0;
}
