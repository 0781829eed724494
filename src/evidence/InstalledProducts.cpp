#include "evidence/InstalledProducts.h"

#include <algorithm>
#include <array>

#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr const char16_t* installerData =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Installer\\UserData";

struct ProductList {
  HiveHandle root;
  const char16_t* key;
};
constexpr std::array productLists{
    ProductList{HiveHandle::LocalMachine, u"SOFTWARE\\Classes\\Installer\\Products"},
    ProductList{HiveHandle::CurrentUser, u"Software\\Microsoft\\Installer\\Products"},
};

bool isKeyThere(HiveHandle root, const std::u16string& path) {
  return WideKey(root, path, KEY_QUERY_VALUE).presence() != Presence::Absent;
}

// The installer's own form of a code: the digits of each group are reversed, in the last two groups
// those of each pair.
std::u16string packed(std::string_view code) {
  struct Group {
    std::size_t start;
    std::size_t size;
  };
  constexpr std::array<Group, 11> groups{{{1, 8},
                                          {10, 4},
                                          {15, 4},
                                          {20, 2},
                                          {22, 2},
                                          {25, 2},
                                          {27, 2},
                                          {29, 2},
                                          {31, 2},
                                          {33, 2},
                                          {35, 2}}};
  std::u16string result;
  for (const Group& group : groups) {
    const std::string_view digits = code.substr(group.start, group.size);
    result.append(digits.rbegin(), digits.rend());
  }
  return utf16(upperCase(utf8(result)));
}

}  // namespace

bool InstalledProducts::isProduct(std::string_view code) {
  const auto found = products.find(code);
  if (found != products.end()) {
    return found->second;
  }
  const bool isKnown = !code.empty() && seek(packed(code));
  products.emplace(code, isKnown);
  return isKnown;
}

bool InstalledProducts::seek(const std::u16string& packedCode) {
  const auto isListed = [&](const ProductList& list) {
    return isKeyThere(list.root, std::u16string(list.key) + u"\\" + packedCode);
  };
  if (std::ranges::any_of(productLists, isListed)) {
    return true;
  }
  if (!installers) {
    const WideKey key(HiveHandle::LocalMachine, installerData, KEY_ENUMERATE_SUB_KEYS);
    installers = key.isOpen() ? key.subkeys().value_or(std::vector<std::u16string>())
                              : std::vector<std::u16string>();
  }
  return std::ranges::any_of(*installers, [&](const std::u16string& account) {
    return isKeyThere(HiveHandle::LocalMachine,
                      installerData + (u"\\" + account) + u"\\Products\\" + packedCode);
  });
}

const WideKey& InstalledProducts::listOf(const std::u16string& path) {
  const auto known = lists.find(path);
  return known != lists.end()
             ? known->second
             : lists.emplace(path, WideKey(HiveHandle::ClassesRoot, path, KEY_QUERY_VALUE))
                   .first->second;
}

bool InstalledProducts::isRegistered(const std::u16string& list, const std::u16string& name) {
  const auto isIn = [&](const std::u16string& path) {
    return WideKey::openBelow(listOf(path), name, KEY_QUERY_VALUE).presence() != Presence::Absent;
  };
  return isIn(list) || isIn(list.empty() ? u"Wow6432Node" : u"Wow6432Node\\" + list);
}

bool InstalledProducts::isServiceGroup(const std::string& name) {
  constexpr std::array groupLists{
      u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Svchost",
      u"SOFTWARE\\Wow6432Node\\Microsoft\\Windows NT\\CurrentVersion\\Svchost"};
  return std::ranges::any_of(groupLists, [&](const char16_t* list) {
    const WideKey key(HiveHandle::LocalMachine, list, KEY_QUERY_VALUE);
    return key.presenceOf(utf16(name)) != Presence::Absent;
  });
}

bool InstalledProducts::isApplication(std::string_view code) {
  constexpr std::array lists{u"AppID\\", u"CLSID\\", u"Wow6432Node\\AppID\\",
                             u"Wow6432Node\\CLSID\\"};
  constexpr std::array roots{HiveHandle::LocalMachine, HiveHandle::CurrentUser};
  const std::u16string name = utf16(code);
  return std::ranges::any_of(lists, [&](const char16_t* list) {
    return std::ranges::any_of(roots, [&](HiveHandle root) {
      return isKeyThere(root, u"Software\\Classes\\" + (list + name));
    });
  });
}

}  // namespace zelvreg
