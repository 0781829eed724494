#include "evidence/ViewPaths.h"

#include <string_view>

#include "evidence/CommandText.h"
#include "scan/Resolver.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// A 32-bit process sees its own folder as "System32", and the 64-bit one as "Sysnative".
constexpr std::string_view seen64 = "Sysnative";
constexpr std::string_view seen32 = "SysWOW64";

// What follows the folder of Windows; empty if the path does not lead there.
std::string_view below(std::string_view path, const std::string& windowsFolder) {
  const std::size_t size = windowsFolder.size();
  const bool isBelow = path.size() > size + 1 && isSeparator(path[size]) &&
                       (path.starts_with(windowsFolder) ||
                        lowerCase(path.substr(0, size)) == lowerCase(windowsFolder));
  return isBelow ? path.substr(size + 1) : std::string_view();
}

}  // namespace

ViewPaths viewPaths(const std::string& path, ProgramView view, const std::string& windowsFolder) {
  const std::string_view rest = below(path, windowsFolder);
  const auto end = nextSeparator(rest);
  if (rest.empty() || end == std::string_view::npos || !runsOn64BitWindows()) {
    return ViewPaths(path);
  }
  const std::string folder = lowerCase(rest.substr(0, end));
  bool isOf64 = view == ProgramView::Bits64;
  if (folder == "sysnative" || folder == "syswow64") {
    isOf64 = folder == "sysnative";
  } else if (folder != "system32") {
    return ViewPaths(path);
  }
  const auto in = [&](std::string_view name) {
    return windowsFolder + "\\" + std::string(name) + std::string(rest.substr(end));
  };
  return {in(isOf64 ? seen64 : seen32), in(isOf64 ? seen32 : seen64)};
}

}  // namespace zelvreg
