#include "roots/Roots.h"

#include <type_traits>

namespace zelvreg {
namespace {

// The names are ASCII, so no other letter has a case that matters.
constexpr char32_t lower(char32_t character) {
  return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
}

// Neither text is converted: a unit of another character is no letter of a name.
template <typename Text>
HiveHandle rootWhose(std::string_view Root::*member, Text name) {
  const auto isUnitOf = [](char expected, auto unit) {
    return lower(static_cast<unsigned char>(expected)) ==
           lower(static_cast<std::make_unsigned_t<decltype(unit)>>(unit));
  };
  const auto* found = std::ranges::find_if(roots, [&](const Root& root) {
    return !name.empty() && std::ranges::equal(root.*member, name, isUnitOf);
  });
  return found == roots.end() ? HiveHandle::Unknown : found->hive;
}

}  // namespace

std::string keyPath(HiveHandle root, std::string_view key) {
  const std::string_view name = longName(root);
  std::string path;
  path.reserve(name.size() + 1 + key.size());
  path.append(name).append("\\").append(key);
  return path;
}

HiveHandle rootWithLongName(std::string_view name) { return rootWhose(&Root::name, name); }

HiveHandle rootWithLongName(std::u16string_view name) { return rootWhose(&Root::name, name); }

HiveHandle rootWithShortName(std::string_view name) { return rootWhose(&Root::shortName, name); }

}  // namespace zelvreg
