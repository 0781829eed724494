#include "machine/computer/Environment.h"

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

Environment::Environment(bool is64Bit, std::u16string_view user) {
  const std::u16string programs = is64Bit ? u"C:\\Program Files (x86)" : u"C:\\Program Files";
  const std::u16string profile = u"C:\\Users\\" + std::u16string(user);
  const std::u16string local = profile + u"\\AppData\\Local";
  set(u"WINDIR", u"C:\\Windows");
  set(u"SystemRoot", u"C:\\Windows");
  set(u"SystemDrive", u"C:");
  set(u"ProgramFiles", programs);
  set(u"CommonProgramFiles", programs + u"\\Common Files");
  if (is64Bit) {
    set(u"ProgramFiles(x86)", programs);
    set(u"ProgramW6432", u"C:\\Program Files");
    set(u"CommonProgramFiles(x86)", programs + u"\\Common Files");
    set(u"CommonProgramW6432", u"C:\\Program Files\\Common Files");
  }
  set(u"ProgramData", u"C:\\ProgramData");
  set(u"ALLUSERSPROFILE", u"C:\\ProgramData");
  set(u"USERPROFILE", profile);
  set(u"APPDATA", profile + u"\\AppData\\Roaming");
  set(u"LOCALAPPDATA", local);
  set(u"TEMP", local + u"\\Temp");
  set(u"TMP", local + u"\\Temp");
  set(u"USERNAME", user);
}

bool Environment::NameOrder::operator()(std::u16string_view first,
                                        std::u16string_view second) const {
  return compareNames(first, second) < 0;
}

void Environment::set(std::u16string_view name, std::u16string_view value) {
  valueOf.insert_or_assign(std::u16string(name), std::u16string(value));
}

std::optional<std::u16string_view> Environment::get(std::u16string_view name) const {
  const auto found = valueOf.find(name);
  if (found == valueOf.end()) return std::nullopt;
  return found->second;
}

std::u16string Environment::expand(std::u16string_view text) const {
  std::u16string result;
  for (;;) {
    const std::size_t start = text.find(u'%');
    result += text.substr(0, start);
    if (start == std::u16string_view::npos) return result;
    text.remove_prefix(start);
    const std::size_t end = text.find(u'%', 1);
    const auto value =
        end == std::u16string_view::npos ? std::nullopt : get(text.substr(1, end - 1));
    if (value) {
      result += *value;
      text.remove_prefix(end + 1);
    } else {
      // The closing sign of a name that is not known may open the next one.
      const std::size_t kept = end == std::u16string_view::npos ? text.size() : end;
      result += text.substr(0, kept);
      text.remove_prefix(kept);
    }
  }
}

}  // namespace zelvreg::machine
