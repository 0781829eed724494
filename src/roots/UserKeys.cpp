#include "roots/UserKeys.h"

namespace zelvreg {

bool isSidText(std::string_view text) {
  return text.starts_with("S-1-") && text.size() > 4 &&
         text.find_first_not_of("0123456789-", 1) == std::string_view::npos;
}

bool isPersonsSid(std::string_view sid) {
  return sid.starts_with("S-1-5-21-") || sid.starts_with("S-1-12-1-");
}

const char* whyProfileIsLost(std::uint32_t state) {
  constexpr std::uint32_t mandatory = 0x1;
  constexpr std::uint32_t temporary = 0x800;
  return (state & temporary) != 0   ? profileFaults::isTemporary
         : (state & mandatory) != 0 ? profileFaults::isMandatory
                                    : nullptr;
}

std::string inventedSid(std::u16string_view upperCaseName, const std::set<std::string>& taken) {
  std::uint32_t hash = 2166136261U;
  for (const char16_t unit : upperCaseName) {
    hash = (hash ^ unit) * 16777619U;
  }
  std::string sid;
  do {
    constexpr std::uint32_t lowest = 1'000'000'000;
    sid = "S-1-5-21-1-1-1-" + std::to_string(lowest + hash++ % lowest);
  } while (taken.contains(sid));
  return sid;
}

}  // namespace zelvreg
