#include "Plan.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace zelvreg::faults {

bool Plan::takeOne(const std::string& value) {
  const std::size_t first = value.find(':');
  const std::size_t second = value.find(':', first + 1);
  if (first == std::string::npos || second == std::string::npos) {
    return false;
  }
  const std::uint64_t number = std::strtoull(value.c_str() + first + 1, nullptr, 10);
  deeds[{value.substr(0, first), number}] = value.substr(second + 1);
  return number > 0;
}

bool Plan::take(const std::string& option, const std::string& value) {
  if (option == "--at") {
    return takeOne(value);
  }
  if (option == "--room") {
    room = std::strtoull(value.c_str(), nullptr, 10);
    return true;
  }
  const std::size_t colon = value.find(':');
  if (option != "--gone" || colon == std::string::npos) {
    return false;
  }
  goneFrom = std::strtoull(value.c_str(), nullptr, 10);
  goneWith = std::strtoll(value.c_str() + colon + 1, nullptr, 10);
  return goneFrom > 0 && goneWith > 0;
}

// What fits is still written, as a disk does.
Deed Plan::onFullDisk(const FileCall& call) {
  if (!call.takesSpace) {
    return {};
  }
  if (*room == 0) {
    return {.what = Deed::What::Fail, .number = ENOSPC};
  }
  const std::uint64_t taken = std::min(*room, call.bytes);
  *room -= taken;
  if (taken == call.bytes || call.sizeArgument < 0) {
    return {};
  }
  return {.what = Deed::What::Shorten, .number = static_cast<std::int64_t>(taken)};
}

Deed Plan::next(const FileCall& call, std::uint64_t number) {
  if (call.isOnDisk && ++callsOnDisk >= goneFrom) {
    return {.what = Deed::What::Fail, .number = goneWith};
  }
  const auto found = deeds.find({call.kind, number});
  if (found == deeds.end()) {
    return room ? onFullDisk(call) : Deed{};
  }
  const std::string& deed = found->second;
  if (deed == "short") {
    if (call.sizeArgument < 0 || call.bytes < 2) {
      return {};
    }
    return {.what = Deed::What::Shorten, .number = static_cast<std::int64_t>(call.bytes / 2)};
  }
  if (deed == "end") {
    return {.what = Deed::What::End};
  }
  if (deed == "before") {
    return {.what = Deed::What::KillBefore};
  }
  if (deed == "after") {
    return {.what = Deed::What::KillAfter};
  }
  if (deed == "alone") {
    return {.what = Deed::What::KillOne};
  }
  return {.what = Deed::What::Fail, .number = std::strtoll(deed.c_str(), nullptr, 10)};
}

}  // namespace zelvreg::faults
