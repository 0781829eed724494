#include "desktop/FontChoice.h"

#include <algorithm>
#include <array>

namespace zelvreg::desktop {
namespace {

// The usual font has no letters of these scripts. The newer of two systems comes first.
struct ScriptFace {
  int charset;
  const char* name;
};

constexpr std::array scriptFaces{
    ScriptFace{128, "Yu Gothic UI"},          ScriptFace{128, "Meiryo UI"},
    ScriptFace{128, "MS UI Gothic"},          ScriptFace{129, "Malgun Gothic"},
    ScriptFace{134, "Microsoft YaHei UI"},    ScriptFace{134, "Microsoft YaHei"},
    ScriptFace{136, "Microsoft JhengHei UI"}, ScriptFace{136, "Microsoft JhengHei"},
    ScriptFace{222, "Leelawadee UI"},
};

}  // namespace

std::vector<std::string> facesFor(const Font& font) {
  std::vector<std::string> names{font.name};
  const Font usual;
  if (font.name != usual.name) {
    names.push_back(usual.name);
  }
  for (const ScriptFace& each : scriptFaces) {
    if (each.charset == font.charset) {
      names.emplace_back(each.name);
    }
  }
  return names;
}

}  // namespace zelvreg::desktop
