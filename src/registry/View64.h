// Names and texts of the true view, through the registry provider; and the deletes that go with it.
#ifndef ZELVREG_REGISTRY_VIEW64_H
#define ZELVREG_REGISTRY_VIEW64_H

#include <windows.h>

#include <string>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// Add the names of a key's named values to List1, or to List7; the caller clears. They report
// nothing: `rc` stays as it was also when the key is missing, and callers rely on never seeing
// their other spelling of a key tried.
void fEnumValue(Form42& form, const std::string& hive, const std::string& key, std::string& values,
                LONG& rc);
void fEnumValue4(Form42& form, const std::string& hive, const std::string& key, std::string& values,
                 LONG& rc);

// The text of a value; empty when it cannot be read. An empty name reads the default value.
std::string GetKeyValue64(Form42& form, const std::string& hive, const std::string& key,
                          const std::string& valueName);

// The suite's setting of a color, its variables expanded, from the provider's default view.
std::string readSuiteColor(Form42& form);

// Deletes what lies under each subkey of `key`, then asks the provider to delete `key`, which it
// refuses while the subkeys stand. The subkeys are listed in the provider's default view.
void DeleteSubkeys2(Form42& form, HiveHandle hive, const std::string& key);

// Walks all keys below one and does nothing with them.
void EnumerateKeys(Form42& form, HiveHandle hive, const std::string& key);
// Reads the names of a key's values in the 64-bit view and drops them; `rc` stays.
void test(Form42& form, const std::string& hive, const std::string& key, LONG& rc);

}  // namespace zelvreg

#endif
