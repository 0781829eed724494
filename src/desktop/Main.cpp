// The program with a window.
#include <windows.h>

#include "desktop/MainWindow.h"
#include "desktop/ProcessStart.h"
#include "form/Form42.h"
#include "form/ProcessEnd.h"
#include "runtime/SingleInstance.h"
#include "shell/CommandModes.h"
#include "shell/StartUp.h"
#include "unicode/Unicode.h"

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*before*/, LPWSTR commandLine,
                    int /*show*/) {
  zelvreg::desktop::beginProcess();
  const zelvreg::SingleInstance instance;
  if (!instance.isFirst()) {
    return 0;
  }
  zelvreg::Form42 form;
  zelvreg::readCommandLine(form, zelvreg::utf8(reinterpret_cast<char16_t*>(commandLine)));
  zelvreg::desktop::MainWindow window(form);
  zelvreg::Form_Load(form);
  window.addLanguages();
  window.run();
}
