#include "machine/files/NamePattern.h"

namespace zelvreg::machine {

namespace {

bool fits(std::u16string_view name, std::u16string_view pattern) {
  // Where to go on when the last "*" has to take one character more.
  std::u16string_view nameBehindStar;
  std::u16string_view patternBehindStar;
  bool hasStar = false;
  for (;;) {
    const char16_t wanted = pattern.empty() ? u'\0' : pattern[0];
    if (wanted == u'*') {
      pattern.remove_prefix(1);
      nameBehindStar = name;
      patternBehindStar = pattern;
      hasStar = true;
    } else if (wanted == u'?' && (name.empty() || name[0] == u'.')) {
      pattern.remove_prefix(1);
    } else if (!pattern.empty() && !name.empty() && (wanted == u'?' || wanted == name[0])) {
      pattern.remove_prefix(1);
      name.remove_prefix(1);
    } else if (pattern.empty() && name.empty()) {
      return true;
    } else if (hasStar && !nameBehindStar.empty()) {
      nameBehindStar.remove_prefix(1);
      name = nameBehindStar;
      pattern = patternBehindStar;
    } else {
      return false;
    }
  }
}

}  // namespace

bool fitsPattern(std::u16string_view name, std::u16string_view pattern) {
  return fits(name, pattern == u"*.*" ? u"*" : pattern);
}

}  // namespace zelvreg::machine
