#include "runtime/Environment.h"

#include <windows.h>

#include <array>

namespace zelvreg {

std::string environmentVariable(const char* name) {
  // Almost every variable fits here, so that one call does.
  std::array<char, 256> usual;
  const DWORD size = GetEnvironmentVariableA(name, usual.data(), static_cast<DWORD>(usual.size()));
  if (size < usual.size()) {
    return {usual.data(), size};
  }
  std::string text(size, '\0');
  text.resize(GetEnvironmentVariableA(name, text.data(), size));
  return text;
}

std::string programFolder() {
  // The longest path that the narrow call can give.
  std::array<char, 32768> path{};
  const DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::string program(path.data(), length);
  return program.substr(0, program.find_last_of('\\'));
}

}  // namespace zelvreg
