// What the tests of the registry search share: keys of their own in both roots, and a form whose
// search is set up.
#ifndef ZELVREG_TESTS_SEARCH_SEARCH_FIXTURE_H
#define ZELVREG_TESTS_SEARCH_SEARCH_FIXTURE_H

#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "search/KeyTreeWalk.h"
#include "search/Search.h"
#include "support/ComputerFixture.h"

namespace zelvreg::searching {

using Texts = std::vector<std::string>;

inline const std::string ownKey = "Software\\SearchTest";
inline const std::string userKey = "HKEY_CURRENT_USER\\" + ownKey;
inline const std::string machineKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\SearchTest";
inline const std::string machineKey32 = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\SearchTest";
inline const std::string settingsKey = std::string("HKEY_CURRENT_USER\\") + searchSettingsKey;
inline const std::string countKey =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\zelvane\\Zelvane Tuner Deluxe\\real";

class SearchFixture : public fixture::ComputerFixture {
 protected:
  explicit SearchFixture(int bits = 64) : ComputerFixture(bits) {
    removeOwnKeys();
    makeKey(userKey);
    makeFile("C:\\SearchTest\\there.exe");
    for (const Category& category : categories()) {
      form.View1.setText(form.View1.add(category.valueName), problemsColumn, "before");
    }
    Command24(form);
    form.ChCase.value = false;
  }
  ~SearchFixture() override { removeOwnKeys(); }

  static void removeOwnKeys() {
    for (const std::string& key : {userKey, machineKey, machineKey32, settingsKey}) {
      removeKey(key);
    }
  }

  // Searches the test's own keys of a root and gives what was listed: location, bad value, kind,
  // root, key, icon.
  std::vector<Texts> found(HiveHandle root = HiveHandle::CurrentUser,
                           const std::string& key = ownKey) {
    SearchState search{.testsKeys = form.ChKeys.value,
                       .testsValues = form.ChValues.value,
                       .testsData = form.ChData.value,
                       .root = root,
                       .category = form.searchCategory,
                       .run = {},
                       .lister = {}};
    form.View2.clear();
    SearchKeyTree(form, search, key);
    return rows();
  }

  std::vector<Texts> rows() {
    std::vector<Texts> all;
    for (std::size_t row = 1; row <= form.View2.count(); ++row) {
      all.push_back(fixture::findingOf(form, row));
    }
    return all;
  }

  Texts locations() {
    Texts all;
    for (const Texts& row : found()) {
      all.push_back(row.front());
    }
    return all;
  }

  // A value that names a file which is gone, and the path that is found of it.
  static void setGone(const std::string& key, const std::string& name) {
    setText(key, name, "C:\\SearchTest\\Gone.exe /x");
  }
  static constexpr const char* gone = "c:\\searchtest\\gone.exe";
};

}  // namespace zelvreg::searching

#endif
