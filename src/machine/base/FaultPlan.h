// Makes the n-th call of a kind fail, so that every road past a failing call can be driven.
#ifndef ZELVREG_MACHINE_BASE_FAULT_PLAN_H
#define ZELVREG_MACHINE_BASE_FAULT_PLAN_H

#include <windows.h>

#include <array>
#include <cstdint>
#include <map>
#include <optional>

namespace zelvreg::machine {

// The kinds of call that can fail; all forms of one call count as one kind.
enum class ApiCall : std::uint8_t {
  RegOpenKey,
  RegCreateKey,
  RegEnumKey,
  RegEnumValue,
  RegQueryValue,
  RegSetValue,
  RegDeleteKey,
  RegDeleteValue,
  RegGetKeySecurity,
  RegSetKeySecurity,
  LookupAccountName,
  GetFileSecurity,
  SetFileSecurity,
  CreateFile,
  ReadFile,
  WriteFile,
  DeleteFile,
  MoveFile,
  CreateDirectory,
  GetFileAttributes,
  SetFileAttributes,
  FindFirstFile,
  PrivateProfile,
  CreateFileMapping,
  MapViewOfFile,
  Count,
};

class FaultPlan {
 public:
  // Call number `n` of this kind, counted from 1 and from this moment on, answers `code` and does
  // nothing else. Several may be planned for one kind.
  void fail(ApiCall call, std::uint64_t n, LONG code);

  // The same for call number `n` and every later one, until clear().
  void failFrom(ApiCall call, std::uint64_t n, LONG code);

  // Forgets what is planned and starts every count anew.
  void clear();

  // How many calls of this kind there were since the last clear().
  [[nodiscard]] std::uint64_t calls(ApiCall call) const;

  // For the calls themselves: counts one, and gives the code it must answer if that one is planned
  // to fail.
  [[nodiscard]] std::optional<LONG> next(ApiCall call) {
    Kind& kind = kinds[static_cast<std::size_t>(call)];
    ++kind.calls;
    // Every call asks, and only tests plan a fault.
    const bool isSound = kind.calls <= kind.lastSound && kind.planned.empty();
    return isSound ? std::nullopt : fault(kind);
  }

 private:
  struct Kind {
    std::uint64_t calls = 0;
    std::map<std::uint64_t, LONG> planned;
    std::uint64_t lastSound = UINT64_MAX;  // after it every call fails with `lasting`
    LONG lasting = ERROR_SUCCESS;
  };
  static std::optional<LONG> fault(Kind& kind);

  std::array<Kind, static_cast<std::size_t>(ApiCall::Count)> kinds;
};

}  // namespace zelvreg::machine

#endif
