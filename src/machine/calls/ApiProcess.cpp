// The Windows calls on the process, its environment, the time and memory.
#include <windows.h>

#include <cstdlib>
#include <cstring>

#include "machine/Machine.h"
#include "machine/base/CodePage.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Clock.h"
#include "machine/computer/Environment.h"

namespace {

using namespace zelvreg::machine;

thread_local DWORD lastError = 0;

constexpr UINT zeroFilled = 0x40;

}  // namespace

extern "C" {

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD code) { lastError = code; }

HANDLE GetCurrentProcess() { return INVALID_HANDLE_VALUE; }

BOOL IsWow64Process(HANDLE process, PBOOL wow64) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  if (process != GetCurrentProcess()) return failed(ERROR_INVALID_HANDLE);
  if (wow64 == nullptr) return failed(ERROR_INVALID_PARAMETER);
  *wow64 = machine->is64Bit() ? TRUE : FALSE;
  return TRUE;
}

UINT GetACP() {
  const Machine* machine = machineInForce();
  return machine == nullptr ? 0 : machine->codePage().number();
}

void GetLocalTime(SYSTEMTIME* time) {
  const Machine* machine = machineInForce();
  *time = machine == nullptr ? SYSTEMTIME{} : machine->clock().localTime();
}

ULONGLONG GetTickCount64() {
  const Machine* machine = machineInForce();
  return machine == nullptr ? 0 : machine->clock().tickCount();
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  const auto value = machine->environment().get(textOf(name));
  SetLastError(static_cast<DWORD>(value ? ERROR_SUCCESS : ERROR_ENVVAR_NOT_FOUND));
  return value ? giveText(*value, buffer, size) : 0;
}

DWORD ExpandEnvironmentStringsW(LPCWSTR source, LPWSTR buffer, DWORD size) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  const std::u16string_view given = textOf(source);
  // Most paths name no variable.
  if (given.find(u'%') == std::u16string_view::npos) {
    giveText(given, buffer, size);
    return static_cast<DWORD>(given.size() + 1);
  }
  const std::u16string expanded = machine->environment().expand(given);
  giveText(expanded, buffer, size);
  return static_cast<DWORD>(expanded.size() + 1);
}

HLOCAL LocalAlloc(UINT flags, SIZE_T size) {
  // Even a block of no bytes has an address of its own.
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    failed(ERROR_NOT_ENOUGH_MEMORY);
  } else if ((flags & zeroFilled) != 0) {
    std::memset(memory, 0, size);
  }
  return memory;
}

HLOCAL LocalFree(HLOCAL memory) {
  std::free(memory);
  return nullptr;
}
}
