#include "evidence/FindingOwner.h"

#include <algorithm>
#include <map>
#include <set>

#include "evidence/Entry.h"
#include "evidence/KindLooks.h"
#include "evidence/NamedPlaces.h"
#include "form/Form42.h"
#include "scan/Findings.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

class Owners {
 public:
  Owners(const Form42& formInUse, const std::string& current,
         const std::vector<std::string>& others)
      : form(formInUse), currentUser(current), otherUsers(others) {}

  // The user's key; empty for the computer.
  std::string of(std::size_t row) {
    const TruePlace place = placeOf(row);
    if (place.hive != HiveHandle::Users) {
      return place.hive == HiveHandle::CurrentUser ? currentUser : std::string();
    }
    if (isOf(currentUser, place.path)) {
      return currentUser;
    }
    const auto other = std::ranges::find_if(
        otherUsers, [&](const std::string& user) { return isOf(user, place.path); });
    return other == otherUsers.end() ? std::string() : *other;
  }

 private:
  TruePlace placeOf(std::size_t row) {
    const HiveHandle root = rootOfRow(form, row);
    const KindRule* rule = kindRule(form, row);
    if (rule != nullptr) {
      const Entry entry = entries.entryOf(form, row, rule->code);
      // Of what is gone from the merged classes only the first place is told, which is the user's.
      if (entry.state != EntryIs::Gone || root != HiveHandle::ClassesRoot) {
        return entry.key;
      }
    }
    return {root, utf16UntilNul(form.View2.text(row, subKeyColumn))};
  }

  static bool isOf(const std::string& user, const std::u16string& path) {
    return isSameName(userOf(path), utf16(user));
  }

  const Form42& form;
  const std::string& currentUser;
  const std::vector<std::string>& otherUsers;
  EntryReader entries;
};

}  // namespace

std::vector<std::string> ownersOfRows(const Form42& form, const std::string& currentUser,
                                      const std::vector<std::string>& otherUsers) {
  Owners owners(form, currentUser, otherUsers);
  std::vector<std::string> keys;
  for (std::size_t row = 1; row <= form.View2.count(); ++row) {
    keys.push_back(owners.of(row));
  }
  return keys;
}

std::vector<bool> keepRowsOfScope(Form42& form) {
  const UserScope& scope = *form.userScope;
  Owners owners(form, scope.currentUser, scope.otherUsers);
  std::vector<bool> isUsers;
  // Of the categories that lose rows, and of all.
  std::set<std::size_t> losing;
  std::map<std::size_t, std::int64_t> kept;
  form.View2.removeWhere([&](std::size_t row) {
    const std::string owner = owners.of(row);
    const bool isCurrentUsers = owner == scope.currentUser;
    const bool isKept = isCurrentUsers || (owner.empty() && scope.listsComputers);
    const KindRule* rule = kindRule(form, row);
    const std::size_t category = rule == nullptr ? 0 : rule->category;
    if (isKept) {
      isUsers.push_back(isCurrentUsers);
      ++kept[category];
    } else if (category != 0) {
      losing.insert(category);
    }
    return !isKept;
  });
  for (const std::size_t category : losing) {
    showProblems(form, category, kept[category]);
  }
  return isUsers;
}

}  // namespace zelvreg
