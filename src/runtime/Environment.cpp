#include "runtime/Environment.h"

#include <windows.h>

#include <array>

#include "text/Wide.h"

namespace zelvreg {

std::string environmentVariable(const char* name) {
  // Almost every variable fits here, so that one call does.
  std::array<char16_t, 256> usual;
  const Wide wideName(name);
  const DWORD size =
      GetEnvironmentVariableW(wideName.get(), roomIn(usual), static_cast<DWORD>(usual.size()));
  if (size < usual.size()) {
    return utf8({usual.data(), size});
  }
  std::u16string text(size, u'\0');
  text.resize(GetEnvironmentVariableW(wideName.get(), roomIn(text), size));
  return utf8(text);
}

std::string modulePath() {
  // The longest path that the system knows.
  std::array<char16_t, 32768> path;
  const DWORD length = GetModuleFileNameW(nullptr, roomIn(path), static_cast<DWORD>(path.size()));
  return utf8({path.data(), length});
}

std::string programFolder() {
  const std::string program = modulePath();
  return program.substr(0, program.find_last_of('\\'));
}

}  // namespace zelvreg
