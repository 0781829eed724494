#include "reports/EntryDetails.h"

#include <windows.h>

#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "registry/Hives.h"
#include "reports/EditorProcess.h"
#include "runtime/WindowsFolder.h"
#include "scan/Findings.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// Quoted, because a blank in the name of a folder would end the path of the program.
void start(const std::string& program, const std::string& arguments = {}) {
  std::u16string commandLine = utf16(untilNul("\"" + program + "\"" + arguments));
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION started{};
  if (CreateProcessW(nullptr, roomIn(commandLine), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &started) != FALSE) {
    CloseHandle(started.hProcess);
    CloseHandle(started.hThread);
  }
}

}  // namespace

std::string evidenceText(const Form42& form, std::size_t row) {
  const Evidence* evidence = evidenceOf(form, row);
  return evidence == nullptr
             ? std::string()
             : wordOf(form, evidence->confidence) + ". " + sentenceOf(form, *evidence);
}

void View2_ItemClick(Form42& form, std::size_t row) {
  const std::string& badValue = form.View2.text(row, badValueColumn);
  form.Label5.caption = badValue;
  form.selectedRow = row;
  form.lastClickedRow = row;
  form.Label7.caption = textOf(
      form, "entry-details",
      {fullKey(form, row), badValue, translated(form, form.View2.text(row, locationColumn))});
  form.EvidenceText.caption = evidenceText(form, row);
}

void View2_DblClick(Form42& form) {
  killprocess();
  const std::size_t row = form.selectedRow;
  const bool hasRow = row >= 1 && row <= form.View2.count();
  // For a row that does not exist this test fails, and the next statement runs.
  if (hasRow && trim(form.View2.text(row, rootNameColumn)).empty()) {
    return;
  }
  SaveRegString(HiveHandle::CurrentUser,
                "Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit", "LastKey",
                fullKey(form, row));
  start(windowsFolder() + "\\regedit.exe");
}

void Command28_Click(Form42& form) {
  start(form.programFolder + "\\zelvrege.exe", " " + fullKey(form, form.selectedRow));
}

}  // namespace zelvreg
