// The Windows calls by which a program reaches the window of the suite, which is there or not as
// machine.ini says: finding it, sending it a message, and the block of memory that it reads then.
#include <windows.h>

#include <algorithm>

#include "machine/Machine.h"
#include "machine/calls/ApiSupport.h"
#include "machine/computer/Requests.h"
#include "machine/files/OpenFiles.h"

namespace {

using namespace zelvreg::machine;

constexpr std::u16string_view suiteTitle = u"Zelvane Tuner";
constexpr LONG invalidWindow = 1400;
constexpr LONG invalidAddress = 487;

HWND suiteWindow() { return reinterpret_cast<HWND>(std::uintptr_t{0x10010}); }

}  // namespace

extern "C" {

HWND FindWindowW(LPCWSTR, LPCWSTR title) {
  const Machine* machine = machineInForce();
  if (machine == nullptr) return nullptr;
  const bool isSuite = title != nullptr && title == suiteTitle;
  if (isSuite && machine->hasSuite()) return suiteWindow();
  SetLastError(static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
  return nullptr;
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM first, LPARAM second) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  if (window != suiteWindow() || !machine->hasSuite()) return failed(invalidWindow);
  // The first parameter of its one message is the length of the text.
  if (const SharedBlock* block = machine->openFiles().newestBlock()) {
    const std::size_t length = std::min<std::size_t>(first, block->bytes.size());
    // The second one points to a window's handle.
    const auto* told = reinterpret_cast<const HWND*>(second);
    machine->requests().suiteMessages.push_back(
        {.number = message,
         .text = std::string(block->bytes.data(), length),
         .flushed = block->flushed,
         .parameter = told == nullptr ? std::nullopt : std::optional(*told)});
  }
  return 0;
}

HANDLE CreateFileMappingW(HANDLE file, const SECURITY_ATTRIBUTES*, DWORD, DWORD sizeHigh,
                          DWORD sizeLow, LPCWSTR) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return nullptr;
  if (const auto fault = machine->faults().next(ApiCall::CreateFileMapping)) {
    failed(*fault);
    return nullptr;
  }
  // Only memory that no file backs is known here.
  if (file != INVALID_HANDLE_VALUE || sizeHigh != 0 || sizeLow == 0) {
    failed(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  return machine->openFiles().add(SharedBlock{.bytes = std::vector<char>(sizeLow)});
}

LPVOID MapViewOfFile(HANDLE mapping, DWORD, DWORD, DWORD, std::size_t size) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return nullptr;
  SharedBlock* block = machine->openFiles().block(mapping);
  auto fault = machine->faults().next(ApiCall::MapViewOfFile);
  if (block == nullptr) fault = ERROR_INVALID_HANDLE;
  if (!fault && size > block->bytes.size()) fault = ERROR_ACCESS_DENIED;
  if (!fault) return block->bytes.data();
  failed(*fault);
  return nullptr;
}

BOOL FlushViewOfFile(LPCVOID view, std::size_t size) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  SharedBlock* block = machine->openFiles().blockAt(view);
  if (block == nullptr) return failed(invalidAddress);
  block->flushed = size == 0 ? block->bytes.size() : size;
  return TRUE;
}

BOOL UnmapViewOfFile(LPCVOID view) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return FALSE;
  return machine->openFiles().blockAt(view) != nullptr ? TRUE : failed(invalidAddress);
}

SIZE_T VirtualQuery(LPCVOID memory, PMEMORY_BASIC_INFORMATION region, SIZE_T size) {
  Machine* machine = machineInForce();
  if (machine == nullptr) return 0;
  SharedBlock* block = machine->openFiles().blockAt(memory);
  if (block == nullptr || size < sizeof *region) {
    failed(ERROR_INVALID_PARAMETER);
    return 0;
  }
  *region = {.BaseAddress = block->bytes.data(),
             .AllocationBase = block->bytes.data(),
             .AllocationProtect = PAGE_READWRITE,
             .RegionSize = block->bytes.size(),
             .State = MEM_COMMIT,
             .Protect = PAGE_READWRITE,
             .Type = MEM_MAPPED};
  return sizeof *region;
}
}
