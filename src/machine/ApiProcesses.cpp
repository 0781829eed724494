// The Windows calls that list, end and start programs. Nothing is ever run: what was asked for is
// kept for inspection.
#include <windows.h>
// Both stand on the one before.
#include <shellapi.h>
#include <tlhelp32.h>

#include <algorithm>

#include "machine/ApiSupport.h"
#include "machine/Machine.h"
#include "machine/OpenFiles.h"
#include "machine/Processes.h"

namespace {

using namespace zelvreg::machine;

constexpr UINT startedWell = 33;  // above 32 means that the program was started

Processes* processes() {
  Machine* machine = machineInForce();
  return machine == nullptr ? nullptr : &machine->processes();
}

// Takes the entry behind those that were given.
BOOL giveEntry(HANDLE snapshot, PROCESSENTRY32* entry) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  OpenProcessList* list = machine->openFiles().processList(snapshot);
  if (list == nullptr || entry == nullptr) return failed(ERROR_INVALID_HANDLE);
  if (list->next >= list->names.size()) return failed(ERROR_NO_MORE_FILES);
  const std::string& name = list->names[list->next++];
  entry->th32ProcessID = static_cast<DWORD>(list->next);
  const std::size_t length = std::min(name.size(), sizeof entry->szExeFile - 1);
  std::copy_n(name.begin(), length, entry->szExeFile);
  entry->szExeFile[length] = '\0';
  return TRUE;
}

UINT start(std::string commandLine) {
  Processes* all = processes();
  if (all == nullptr) return 0;
  all->started.push_back(std::move(commandLine));
  return startedWell;
}

}  // namespace

extern "C" {

HANDLE CreateToolhelp32Snapshot(DWORD, DWORD) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return INVALID_HANDLE_VALUE;
  return machine->openFiles().add(OpenProcessList{machine->processes().running, 0});
}

BOOL Process32First(HANDLE snapshot, PROCESSENTRY32* entry) { return giveEntry(snapshot, entry); }

BOOL Process32Next(HANDLE snapshot, PROCESSENTRY32* entry) { return giveEntry(snapshot, entry); }

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

UINT WinExec(LPCSTR commandLine, UINT) { return start(commandLine); }

HINSTANCE ShellExecuteA(HWND, LPCSTR, LPCSTR file, LPCSTR parameters, LPCSTR, INT) {
  const std::string rest = parameters == nullptr || *parameters == '\0' ? "" : " ";
  const UINT answer = start(file + rest + (parameters == nullptr ? "" : parameters));
  return reinterpret_cast<HINSTANCE>(std::uintptr_t{answer});
}

HWND GetDesktopWindow() { return reinterpret_cast<HWND>(std::uintptr_t{0x10000}); }
}
