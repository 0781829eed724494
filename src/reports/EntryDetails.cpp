#include "reports/EntryDetails.h"

#include <windows.h>

#include "registry/Hives.h"
#include "reports/EditorProcess.h"
#include "runtime/WindowsFolder.h"
#include "scan/Findings.h"
#include "text/Text.h"

namespace zelvreg {

void View2_ItemClick(Form42& form, std::size_t row) {
  const std::string& badValue = form.View2.text(row, badValueColumn);
  form.Label5.caption = badValue;
  form.selectedRow = row;
  form.lastClickedRow = row;
  form.Label7.caption = "The registration key \"" + fullKey(form, row) + "\\" + badValue +
                        "\" contains the application path to \"" + form.Label5.caption.get() +
                        "\". The path points to the missing target \"" +
                        form.View2.text(row, locationColumn) + "\" and can therefore be deleted.";
}

void View2_DblClick(Form42& form) {
  killprocess();
  const std::size_t row = form.selectedRow;
  const bool hasRow = row >= 1 && row <= form.View2.count();
  // The test of a row that is not there fails, which goes on.
  if (hasRow && trim(form.View2.text(row, rootNameColumn)).empty()) {
    return;
  }
  SaveRegString(HiveHandle::CurrentUser,
                "Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit", "LastKey",
                fullKey(form, row));
  WinExec((windowsFolder() + "\\regedit.exe").c_str(), SW_SHOWNORMAL);
}

void Command28_Click(Form42& form) {
  // Quoted, as a blank in the folder's name would end the program's.
  const std::string command =
      "\"" + form.programFolder + "\\zelvrege.exe\" " + fullKey(form, form.selectedRow);
  WinExec(command.c_str(), SW_SHOWNORMAL);
}

}  // namespace zelvreg
