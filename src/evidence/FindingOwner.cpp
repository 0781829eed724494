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

enum class Owner : std::uint8_t { Computer, CurrentUser, OtherUser };

class Owners {
 public:
  explicit Owners(const Form42& formInUse) : form(formInUse), scope(*formInUse.userScope) {}

  Owner of(std::size_t row) {
    const TruePlace place = placeOf(row);
    if (place.hive != HiveHandle::Users) {
      return place.hive == HiveHandle::CurrentUser ? Owner::CurrentUser : Owner::Computer;
    }
    const auto isBelow = [&](const std::string& user) { return isOf(user, place.path); };
    if (isBelow(scope.currentUser)) {
      return Owner::CurrentUser;
    }
    return std::ranges::any_of(scope.otherUsers, isBelow) ? Owner::OtherUser : Owner::Computer;
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
  const UserScope& scope;
  EntryReader entries;
};

}  // namespace

std::vector<bool> keepRowsOfScope(Form42& form) {
  Owners owners(form);
  std::vector<bool> isUsers;
  // Of the categories that lose rows, and of all.
  std::set<std::size_t> losing;
  std::map<std::size_t, std::int64_t> kept;
  form.View2.removeWhere([&](std::size_t row) {
    const Owner owner = owners.of(row);
    const bool isKept =
        owner == Owner::CurrentUser || (owner == Owner::Computer && form.userScope->listsComputers);
    const KindRule* rule = kindRule(form, row);
    const std::size_t category = rule == nullptr ? 0 : rule->category;
    if (isKept) {
      isUsers.push_back(owner == Owner::CurrentUser);
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
