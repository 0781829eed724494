#include "support/FaultyCalls.h"

// This one stands on windows.h.
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace zelvreg::fixture {
namespace {

using machine::ApiCall;

machine::FaultPlan* planInForce = nullptr;
DWORD threadOfPlan = 0;

std::optional<LONG> faultOf(ApiCall kind) {
  return planInForce != nullptr && GetCurrentThreadId() == threadOfPlan ? planInForce->next(kind)
                                                                        : std::nullopt;
}

// What a call gives that has failed follows from its type: the registry's give the code itself.
template <typename Result>
Result failure(LONG code) {
  if constexpr (std::is_same_v<Result, LONG>) {
    return code;
  } else {
    SetLastError(static_cast<DWORD>(code));
    if constexpr (std::is_same_v<Result, HANDLE>) {
      return INVALID_HANDLE_VALUE;
    } else if constexpr (std::is_same_v<Result, DWORD>) {
      return INVALID_FILE_ATTRIBUTES;
    } else {
      static_assert(std::is_same_v<Result, BOOL>);
      return FALSE;
    }
  }
}

// The name of a call as an argument of a template, so that each has a stand-in of its own.
template <std::size_t size>
struct Name {
  std::array<char, size> text{};
  // NOLINTNEXTLINE(google-explicit-constructor): it is written as a text.
  constexpr Name(const char (&given)[size]) { std::copy_n(given, size, text.begin()); }
};

// Where a call leads in the end.
template <Name name>
ULONG_PTR original = 0;

template <Name name, ApiCall kind, typename Result, typename... Arguments>
Result WINAPI askFirst(Arguments... arguments) {
  const auto fault = faultOf(kind);
  using Function = Result(WINAPI*)(Arguments...);
  return fault ? failure<Result>(*fault) : reinterpret_cast<Function>(original<name>)(arguments...);
}

struct StandIn {
  std::string_view name;
  ULONG_PTR function;
  ULONG_PTR* original;
};

template <Name name, ApiCall kind, typename Result, typename... Arguments>
StandIn standIn(Result(WINAPI* /*call*/)(Arguments...)) {
  return {.name = {name.text.data(), name.text.size() - 1},
          .function = reinterpret_cast<ULONG_PTR>(&askFirst<name, kind, Result, Arguments...>),
          .original = &original<name>};
}

const auto& standIns() {
  static const std::array all{
      standIn<"RegOpenKeyExW", ApiCall::RegOpenKey>(RegOpenKeyExW),
      standIn<"RegCreateKeyExW", ApiCall::RegCreateKey>(RegCreateKeyExW),
      standIn<"RegEnumKeyExW", ApiCall::RegEnumKey>(RegEnumKeyExW),
      standIn<"RegEnumKeyW", ApiCall::RegEnumKey>(RegEnumKeyW),
      standIn<"RegEnumValueW", ApiCall::RegEnumValue>(RegEnumValueW),
      standIn<"RegQueryValueExW", ApiCall::RegQueryValue>(RegQueryValueExW),
      standIn<"RegSetValueExW", ApiCall::RegSetValue>(RegSetValueExW),
      standIn<"RegDeleteKeyW", ApiCall::RegDeleteKey>(RegDeleteKeyW),
      standIn<"RegDeleteKeyExW", ApiCall::RegDeleteKey>(RegDeleteKeyExW),
      standIn<"SHDeleteKeyW", ApiCall::RegDeleteKey>(SHDeleteKeyW),
      standIn<"RegDeleteValueW", ApiCall::RegDeleteValue>(RegDeleteValueW),
      standIn<"RegGetKeySecurity", ApiCall::RegGetKeySecurity>(RegGetKeySecurity),
      standIn<"RegSetKeySecurity", ApiCall::RegSetKeySecurity>(RegSetKeySecurity),
      standIn<"LookupAccountNameW", ApiCall::LookupAccountName>(LookupAccountNameW),
      standIn<"GetFileSecurityW", ApiCall::GetFileSecurity>(GetFileSecurityW),
      standIn<"SetFileSecurityW", ApiCall::SetFileSecurity>(SetFileSecurityW),
      standIn<"CreateFileW", ApiCall::CreateFile>(CreateFileW),
      standIn<"ReadFile", ApiCall::ReadFile>(ReadFile),
      standIn<"WriteFile", ApiCall::WriteFile>(WriteFile),
      // What was written may only now be found to have no room.
      standIn<"FlushFileBuffers", ApiCall::WriteFile>(FlushFileBuffers),
      standIn<"DeleteFileW", ApiCall::DeleteFile>(DeleteFileW),
      standIn<"MoveFileExW", ApiCall::MoveFile>(MoveFileExW),
      standIn<"CreateDirectoryW", ApiCall::CreateDirectory>(CreateDirectoryW),
      standIn<"GetFileAttributesW", ApiCall::GetFileAttributes>(GetFileAttributesW),
      standIn<"SetFileAttributesW", ApiCall::SetFileAttributes>(SetFileAttributesW),
      standIn<"FindFirstFileW", ApiCall::FindFirstFile>(FindFirstFileW),
      standIn<"FindNextFileW", ApiCall::FindFirstFile>(FindNextFileW),
  };
  return all;
}

template <typename Part>
Part* partOfProgram(ULONG_PTR offset) {
  return reinterpret_cast<Part*>(reinterpret_cast<ULONG_PTR>(GetModuleHandleW(nullptr)) + offset);
}

// Calls `work` with the name of each function that this program imports and the place that leads
// to it.
template <typename Work>
void forEachImport(const Work& work) {
  const auto offset = static_cast<ULONG_PTR>(partOfProgram<IMAGE_DOS_HEADER>(0)->e_lfanew);
  const IMAGE_DATA_DIRECTORY& imports =
      partOfProgram<IMAGE_NT_HEADERS>(offset)
          ->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* library = partOfProgram<IMAGE_IMPORT_DESCRIPTOR>(imports.VirtualAddress);
  for (; library->Name != 0; ++library) {
    const auto* named = partOfProgram<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
    auto* place = partOfProgram<IMAGE_THUNK_DATA>(library->FirstThunk);
    for (; named->u1.AddressOfData != 0; ++named, ++place) {
      if (!IMAGE_SNAP_BY_ORDINAL(named->u1.Ordinal)) {
        const auto* import = partOfProgram<IMAGE_IMPORT_BY_NAME>(named->u1.AddressOfData);
        work(reinterpret_cast<const char*>(import->Name), place->u1.Function);
      }
    }
  }
}

template <typename Place>
void lead(Place& place, ULONG_PTR function) {
  DWORD before = 0;
  VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before);
  place = function;
  VirtualProtect(&place, sizeof place, before, &before);
}

const StandIn* standInFor(std::string_view name) {
  const auto found = std::ranges::find(standIns(), name, &StandIn::name);
  return found == standIns().end() ? nullptr : &*found;
}

}  // namespace

FaultyCalls::FaultyCalls(machine::FaultPlan& plan) {
  forEachImport([](std::string_view name, auto& place) {
    if (const StandIn* other = standInFor(name)) {
      *other->original = place;
      lead(place, other->function);
    }
  });
  planInForce = &plan;
  threadOfPlan = GetCurrentThreadId();
}

FaultyCalls::~FaultyCalls() {
  planInForce = nullptr;
  forEachImport([](std::string_view name, auto& place) {
    if (const StandIn* other = standInFor(name)) {
      lead(place, *other->original);
    }
  });
}

}  // namespace zelvreg::fixture
