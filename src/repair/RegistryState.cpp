#include "repair/RegistryState.h"

#include <algorithm>
#include <utility>

#include "roots/UserKeys.h"

namespace zelvreg {
namespace {

bool beginsWithName(const std::u16string& path, const std::u16string& name) {
  const bool isLonger = path.size() > name.size() && path[name.size()] == u'\\';
  return (isLonger || path.size() == name.size()) &&
         isSameKey({HiveHandle::Users, path.substr(0, name.size())}, {HiveHandle::Users, name});
}

// True also if it cannot be read.
bool isLink(const TruePlace& key) {
  return WideKey(key.hive, key.path, KEY_QUERY_VALUE, REG_OPTION_OPEN_LINK)
             .presenceOf(u"SymbolicLinkValue") != Presence::Absent;
}

bool isLinkToClasses(const TruePlace& key) {
  const std::u16string classes = u"Software\\Classes";
  const std::size_t start = key.hive == HiveHandle::Users ? key.path.find(u'\\') + 1 : 0;
  return isSameKey({key.hive, key.path.substr(start)}, {key.hive, classes});
}

}  // namespace

// The current user's keys and classes have two paths each.
std::u16string RegistryState::identityOf(const TruePlace& key) const {
  if (key.hive != HiveHandle::Users) {
    return key.fullPath();
  }
  if (!userKey) {
    userKey = currentUserKey();
  }
  const std::pair<std::u16string, std::u16string> spellings[] = {
      {*userKey + std::u16string(userClassesSuffix), u"Software\\Classes"}, {*userKey, u""}};
  for (const auto& [from, to] : spellings) {
    if (!userKey->empty() && beginsWithName(key.path, from)) {
      const std::u16string rest = key.path.substr(std::min(from.size() + 1, key.path.size()));
      return TruePlace{HiveHandle::CurrentUser,
                       to.empty() || rest.empty() ? to + rest : to + u"\\" + rest}
          .fullPath();
    }
  }
  return key.fullPath();
}

// No name of a key holds a NUL.
std::u16string RegistryState::identityOf(const TruePlace& key, const std::u16string& value) const {
  return identityOf(key) + u'\0' + value;
}

bool RegistryState::hasKey(const TruePlace& key) const {
  return !isKeyGone(key) &&
         WideKey(key.hive, key.path, KEY_QUERY_VALUE).presence() != Presence::Absent;
}

bool RegistryState::hasValue(const TruePlace& key, const std::u16string& name) const {
  return !isKeyGone(key) && !isValueGone(key, name) &&
         WideKey(key.hive, key.path, KEY_QUERY_VALUE).presenceOf(name) != Presence::Absent;
}

std::optional<WideValue> RegistryState::value(const TruePlace& key,
                                              const std::u16string& name) const {
  if (isKeyGone(key) || isValueGone(key, name)) {
    return std::nullopt;
  }
  return WideKey(key.hive, key.path, KEY_QUERY_VALUE).value(name);
}

std::optional<std::vector<WideValue>> RegistryState::values(const TruePlace& key) const {
  const WideKey open(key.hive, key.path, KEY_QUERY_VALUE, REG_OPTION_OPEN_LINK);
  auto values = open.isOpen() ? open.values() : std::nullopt;
  if (values) {
    std::erase_if(*values, [&](const WideValue& value) { return isValueGone(key, value.name); });
  }
  return values;
}

std::optional<std::vector<std::u16string>> RegistryState::subkeys(const TruePlace& key) const {
  const WideKey open(key.hive, key.path, KEY_ENUMERATE_SUB_KEYS, REG_OPTION_OPEN_LINK);
  auto names = open.isOpen() ? open.subkeys() : std::nullopt;
  if (names) {
    std::erase_if(*names, [&](const std::u16string& name) {
      return goneKeys.contains(identityOf(below(key, name)));
    });
  }
  return names;
}

bool RegistryState::isBehindUsersLink(const TruePlace& key) {
  if (key.hive == HiveHandle::LocalMachine) {
    return false;
  }
  for (std::size_t end = 0; end < key.path.size();) {
    end = std::min(key.path.find(u'\\', end + 1), key.path.size());
    const TruePlace part{key.hive, key.path.substr(0, end)};
    if (!isLinkToClasses(part) && isLink(part)) {
      return true;
    }
  }
  return false;
}

void RegistryState::noteKeyGone(const TruePlace& key) { goneKeys.insert(identityOf(key)); }

void RegistryState::noteValueGone(const TruePlace& key, const std::u16string& name) {
  goneValues.insert(identityOf(key, name));
}

bool RegistryState::isKeyGone(const TruePlace& key) const {
  if (goneKeys.empty()) {
    return false;
  }
  const std::u16string fullPath = identityOf(key);
  for (std::size_t end = fullPath.size(); end != std::u16string::npos && end > 0;
       end = fullPath.rfind(u'\\', end - 1)) {
    if (goneKeys.contains(fullPath.substr(0, end))) {
      return true;
    }
  }
  return false;
}

bool RegistryState::isValueGone(const TruePlace& key, const std::u16string& name) const {
  return !goneValues.empty() && goneValues.contains(identityOf(key, name));
}

}  // namespace zelvreg
