// The window exists only on Windows.
#include "desktop/MainWindow.h"
#include "scan/CategoryTable.h"
#include "scan/OwnPaths.h"
#include "shell/StartUp.h"
#include "soak/Rounds.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string startup = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";

class WindowSoakTest : public fixture::ComputerFixture {
 protected:
  WindowSoakTest() {
    form.programFolder = "C:\\SoakTest";
    makeFolder(form.programFolder);
    emptyKey(startup);
    for (const char* name : {"soak 1", "soak 2", "soak 3"}) {
      setText(startup, name, "C:\\Gone\\gone.exe");
    }
  }
  ~WindowSoakTest() override { emptyKey(startup); }

  // As a user does it: ticks, start, tick all, repair, undo what was repaired.
  void goRound() {
    for (std::size_t row = 1; row <= form.View1.count(); ++row) {
      form.View1.setChecked(row, categoryAt(row).optionName == "startup");
    }
    form.cmd_start.click();
    ASSERT_GE(form.View2.count(), 3U);
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      form.View2.setChecked(row, true);
    }
    form.cmd_fix.click();
    ASSERT_EQ(storedText(startup, "soak 1"), "(none)");
    const std::string undone = exportPath(form, form.exportStem);
    form.UndoRepair.click();
    ASSERT_NE(storedText(startup, "soak 1"), "(none)");
    DeleteFileW(Wide(undone).get());
  }
};

TEST_F(WindowSoakTest, ThePagesHoldNoMoreAfterManyScansRepairsAndUndos) {
  const desktop::MainWindow window(form);
  bindClicks(form);
  form.dialogs.show = [](const UserMessage&) { return Answer::Yes; };
  Form_Load(form);
  ShowWindow(window.hwnd(), SW_SHOW);
  fixture::goRounds(8, [&] {
    goRound();
    // What waits is drawn now, not once for all rounds.
    RedrawWindow(window.hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    form.messages.doEvents();
  });
}

}  // namespace
}  // namespace zelvreg
