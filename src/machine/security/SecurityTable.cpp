#include "machine/security/SecurityTable.h"

#include <string_view>
#include <utility>

namespace zelvreg::machine {
namespace {

std::size_t hashOf(const Bytes& bytes) {
  return std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

std::size_t hashOf(const SecurityDescriptor& descriptor) {
  constexpr std::size_t odd = 31;
  return ((hashOf(descriptor.dacl) * odd + hashOf(descriptor.owner)) * odd +
          hashOf(descriptor.group)) *
             odd +
         descriptor.control;
}

}  // namespace

SecurityTable::SecurityTable() { entries.push_back({.descriptor = defaultKeySecurity()}); }

const SecurityDescriptor& SecurityTable::at(Number number) const {
  return entries[number].descriptor;
}

SecurityTable::Number SecurityTable::keep(SecurityDescriptor descriptor) {
  const std::size_t hash = hashOf(descriptor);
  const auto [first, last] = numbers.equal_range(hash);
  for (auto known = first; known != last; ++known) {
    if (at(known->second) == descriptor) {
      return known->second;
    }
  }
  const auto number = static_cast<Number>(entries.size());
  entries.push_back({.descriptor = std::move(descriptor)});
  numbers.emplace(hash, number);
  return number;
}

ACCESS_MASK SecurityTable::grantedTo(const Token& token, Number number, ACCESS_MASK desired) {
  Entry& entry = entries[number];
  if (entry.token != &token) {
    entry.given = rightsGiven(entry.descriptor, token, keyRights);
    entry.token = &token;
  }
  return grantedOf(entry.given, desired, keyRights);
}

}  // namespace zelvreg::machine
