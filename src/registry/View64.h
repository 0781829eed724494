// Names and texts of the true view, through the registry provider; and the deletes that go with it.
#ifndef ZELVREG_REGISTRY_VIEW64_H
#define ZELVREG_REGISTRY_VIEW64_H

#include <windows.h>

#include <string>
#include <vector>

#include "keys/StdRegProv.h"
#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// Add the names of a key's named values to List1, or to List7; the caller clears. They report
// nothing, also when the key is missing, and callers rely on never seeing their other spelling of a
// key tried.
void fEnumValue(Form42& form, HiveHandle root, const std::string& key);
void fEnumValue4(Form42& form, HiveHandle root, const std::string& key);

// The text of a value; empty when it cannot be read. An empty name reads the default value.
std::string GetKeyValue64(Form42& form, HiveHandle root, const std::string& key,
                          const std::string& valueName);

// The suite's setting of a color, its variables expanded, from the provider's default view.
std::string readSuiteColor(Form42& form);

// Deletes what lies under each subkey of `key`, then asks the provider to delete `key`, which it
// refuses while there are subkeys. They are listed in the provider's default view.
void DeleteSubkeys2(Form42& form, HiveHandle hive, const std::string& key);

// Names through the provider; none when they cannot be read. Subkeys are listed in the provider's
// default view. The queue is served while a key with many values is read.
std::vector<std::string> subkeyNames(Form42& form, HiveHandle root, const std::string& key);
std::vector<std::string> valueNames(Form42& form, ProviderArchitecture view, HiveHandle root,
                                    const std::string& key);

}  // namespace zelvreg

#endif
