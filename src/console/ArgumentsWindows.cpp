#include <windows.h>
// shellapi needs windows.h before it.
#include <shellapi.h>

#include <span>

#include "console/Arguments.h"
#include "unicode/Unicode.h"

namespace zelvreg::console {

std::vector<std::string> typedArguments(int count, const char* const* arguments) {
  int typedCount = 0;
  LPWSTR* typed = CommandLineToArgvW(GetCommandLineW(), &typedCount);
  if (typed == nullptr) {
    return {arguments, arguments + count};
  }
  std::vector<std::string> texts;
  for (LPWSTR argument : std::span(typed, static_cast<std::size_t>(typedCount))) {
    texts.push_back(utf8(reinterpret_cast<const char16_t*>(argument)));
  }
  LocalFree(typed);
  return texts;
}

}  // namespace zelvreg::console
