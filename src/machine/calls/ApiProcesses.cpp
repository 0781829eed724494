// The Windows calls that list, end and start programs. Nothing is ever run: what was asked for is
// kept for inspection.
#include <windows.h>
// Both need <windows.h> before them.
#include <shellapi.h>
#include <tlhelp32.h>

#include <optional>
#include <string>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "machine/files/OpenFiles.h"
#include "unicode/Unicode.h"

namespace {

using namespace zelvreg;
using namespace zelvreg::machine;

constexpr std::uintptr_t startedWell = 33;  // above 32 means that the program was started

Processes* processes() {
  Machine* machine = machineInForce();
  return machine == nullptr ? nullptr : &machine->processes();
}

// Takes the entry after those that were given.
BOOL giveEntry(HANDLE snapshot, PROCESSENTRY32W* entry) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  OpenProcessList* list = machine->openFiles().processList(snapshot);
  if (list == nullptr || entry == nullptr) return failed(ERROR_INVALID_HANDLE);
  if (list->next >= list->names.size()) return failed(ERROR_NO_MORE_FILES);
  const std::u16string name = utf16(list->names[list->next++]);
  entry->th32ProcessID = static_cast<DWORD>(list->next);
  giveText(std::u16string_view(name).substr(0, MAX_PATH - 1), entry->szExeFile, MAX_PATH);
  return TRUE;
}

std::optional<std::string> given(LPCWSTR text) {
  return text == nullptr ? std::nullopt : std::optional(utf8(textOf(text)));
}

bool start(std::u16string_view commandLine) {
  Processes* all = processes();
  if (all == nullptr) return false;
  all->started.push_back(utf8(commandLine));
  return true;
}

}  // namespace

extern "C" {

HANDLE CreateToolhelp32Snapshot(DWORD, DWORD) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return INVALID_HANDLE_VALUE;
  return machine->openFiles().add(OpenProcessList{machine->processes().running, 0});
}

BOOL Process32FirstW(HANDLE snapshot, PROCESSENTRY32W* entry) { return giveEntry(snapshot, entry); }

BOOL Process32NextW(HANDLE snapshot, PROCESSENTRY32W* entry) { return giveEntry(snapshot, entry); }

// The handle of a process is its id, which needs no closing.
HANDLE OpenProcess(DWORD, BOOL, DWORD id) {
  const Processes* all = processes();
  if (all == nullptr || id == 0 || id > all->running.size()) {
    failed(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return reinterpret_cast<HANDLE>(std::uintptr_t{id});
}

BOOL TerminateProcess(HANDLE process, UINT) {
  Processes* all = processes();
  const auto id = reinterpret_cast<std::uintptr_t>(process);
  if (all == nullptr || id == 0 || id > all->running.size()) return failed(ERROR_INVALID_HANDLE);
  const auto place = all->running.begin() + static_cast<std::ptrdiff_t>(id - 1);
  all->ended.push_back(*place);
  all->running.erase(place);
  return TRUE;
}

BOOL CreateProcessW(LPCWSTR program, LPWSTR commandLine, const SECURITY_ATTRIBUTES*,
                    const SECURITY_ATTRIBUTES*, BOOL, DWORD, LPVOID, LPCWSTR,
                    const STARTUPINFOW* startup, PROCESS_INFORMATION* started) {
  if (startup == nullptr || started == nullptr) return failed(ERROR_INVALID_PARAMETER);
  if (!start(commandLine == nullptr ? textOf(program) : commandLine)) return FALSE;
  OpenFiles& handles = Machine::current()->openFiles();
  *started = {};
  started->hProcess = handles.add(StartedProgram());
  started->hThread = handles.add(StartedProgram());
  return TRUE;
}

HINSTANCE ShellExecuteW(HWND window, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR folder,
                        INT show) {
  std::u16string commandLine(textOf(file));
  const std::u16string_view rest = textOf(parameters);
  if (!rest.empty()) commandLine.append(u" ").append(rest);
  if (!start(commandLine)) return nullptr;
  Machine::current()->requests().opened.push_back({.owner = window,
                                                   .verb = given(verb),
                                                   .file = utf8(textOf(file)),
                                                   .parameters = given(parameters),
                                                   .folder = given(folder),
                                                   .showStyle = show});
  return reinterpret_cast<HINSTANCE>(startedWell);
}

HWND GetDesktopWindow() { return reinterpret_cast<HWND>(std::uintptr_t{0x10000}); }
}
