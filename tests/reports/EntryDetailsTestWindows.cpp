// Only Windows runs the registry editor and has the management service.
#include "reports/EntryDetails.h"

#include <windows.h>

// This one needs <windows.h> before it.
#include <tlhelp32.h>

#include <cwchar>
#include <string>
#include <vector>

#include "keys/ManagementService.h"
#include "reports/EditorProcess.h"
#include "reports/RecordingServices.h"
#include "runtime/WindowsFolder.h"
#include "scan/Findings.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

const std::string editorKey =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit";
constexpr DWORD patience = 20000;  // milliseconds

using Ids = std::vector<DWORD>;

// The registry editors that run, in the system's order.
Ids editors() {
  Ids ids;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL isThere = Process32FirstW(snapshot, &entry); isThere != FALSE;
       isThere = Process32NextW(snapshot, &entry)) {
    if (_wcsicmp(entry.szExeFile, L"regedit.exe") == 0) {
      ids.push_back(entry.th32ProcessID);
    }
  }
  CloseHandle(snapshot);
  return ids;
}

class EditorTest : public fixture::ComputerFixture {
 protected:
  EditorTest() {
    emptyKey(editorKey);
    setText(editorKey, "LastKey", "before");
    endAll();
  }
  ~EditorTest() override { endAll(); }

  // One that starts another in its place may have just done so.
  static void endAll() {
    for (Ids running = editors(); !running.empty(); running = editors()) {
      for (const DWORD id : running) {
        HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
        TerminateProcess(process, 0);
        WaitForSingleObject(process, patience);
        CloseHandle(process);
      }
    }
  }
  static void startEditor() {
    std::u16string command = utf16(windowsFolder() + "\\regedit.exe");
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    ASSERT_NE(CreateProcessW(nullptr, roomIn(command), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startup, &started),
              FALSE);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
  }
  void choose(const char* rootName, const char* subKey) {
    ScannerRun run;
    addRow(form, run, {"location", "bad value", "2", rootName, subKey, "a"});
    View2_ItemClick(form, form.View2.count());
  }
  static std::string lastKey() { return storedText(editorKey, "LastKey"); }
};

TEST_F(EditorTest, TheFirstThatRunsIsTerminatedAndNoOther) {
  startEditor();
  startEditor();
  const Ids running = editors();
  ASSERT_GE(running.size(), 2U);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const ComPointer<IWbemServices> real = connectManagementService(L"root\\cimv2");
  ASSERT_NE(real, nullptr);
  fixture::RecordingServices services(*real);
  endEditor(services);
  ASSERT_EQ(services.calls.size(), 1U);
  EXPECT_EQ(services.calls[0].method, L"Terminate");
  const std::wstring handle = L"Win32_Process.Handle=\"" + std::to_wstring(running[0]) + L"\"";
  EXPECT_TRUE(services.calls[0].object.ends_with(handle));
}

TEST_F(EditorTest, WithoutARunningOneNothingIsTerminated) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const ComPointer<IWbemServices> real = connectManagementService(L"root\\cimv2");
  ASSERT_NE(real, nullptr);
  fixture::RecordingServices services(*real);
  endEditor(services);
  EXPECT_TRUE(services.calls.empty());
}

TEST_F(EditorTest, ADoubleClickStartsItAtTheKeyOfTheRow) {
  choose("HKEY_LOCAL_MACHINE", "Software\\There is no such key");
  View2_DblClick(form);
  EXPECT_EQ(lastKey(), "HKEY_LOCAL_MACHINE\\Software\\There is no such key");
  EXPECT_FALSE(editors().empty());
}

TEST_F(EditorTest, ARowWithoutARootStartsNone) {
  choose("  ", "a");
  View2_DblClick(form);
  EXPECT_EQ(lastKey(), "before");
  EXPECT_EQ(editors(), Ids());
}

}  // namespace
}  // namespace zelvreg
